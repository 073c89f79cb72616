#include "lookup/WalkWindow.h"

#include "platform/Recordset.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/RowsDecode.h"
#include "store/ServerCheck.h"

#include <memory>
#include <vector>

namespace qln {

namespace {

constexpr int kDefaultWindow = 64;
// Rows read past the ones wanted, for records the judge refuses and to see the next key.
constexpr int kSpare = 4;

int &windowRows()
{
    static int rows = kDefaultWindow;
    return rows;
}

QString rightTrimmed(QString text)
{
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text;
}

// A text as loose as any engine's text order could make it: where two keys give the same
// form, an engine may hold them equal. Case, accents, invisible marks and trailing blanks go.
QString looseForm(const QString &text)
{
    QString out;
    for (const QChar c : rightTrimmed(text).normalized(QString::NormalizationForm_KD)) {
        const auto category = c.category();
        if (category != QChar::Mark_NonSpacing && category != QChar::Other_Control && category != QChar::Other_Format)
            out += c;
    }
    return out.toCaseFolded().replace(QStringLiteral("\u00DF"), QStringLiteral("ss"));
}

// One statement's rows in the walk's order from the position it was sent from.
class Window {
public:
    Window(int iTable, int segments) : m_table(iTable), m_segments(segments)
    {
        for (int s = 1; s <= segments; ++s)
            m_ordinals.push_back(gfiDB_KeyOrdinal(s));
    }

    bool read(const QString &sql, int rows)
    {
        m_limit = rows;
        m_rows = std::make_unique<Recordset>();
        // A refused window is not logged: its text is none of the program's, and the steps
        // that stand in for it report as they always did.
        if (!m_rows->open(dbConnection(), sql))
            return false;
        m_count = m_rows->recordCount();
        return true;
    }
    bool complete() const { return m_count < m_limit; } // nothing lies beyond the last row

    std::vector<QVariantList> keys() const
    {
        std::vector<QVariantList> all;
        for (m_rows->moveFirst(); !m_rows->eof(); m_rows->moveNext()) {
            QVariantList key;
            for (int ordinal : m_ordinals)
                key << m_rows->value(ordinal);
            all.push_back(key);
        }
        m_rows->moveFirst();
        return all;
    }

    // The current row into the buffer, as a step would decode it.
    void decode() { gpDB_row_decode(m_table, m_rows); }
    void next() { m_rows->moveNext(); }

    // The step from the buffer's record compares the very values the row holds: a step's
    // key drops or changes what some values carry (apostrophes, a cut, a null).
    bool stepsFromOwnKey(const QVariantList &key) const
    {
        gpDB_table_key_set(m_table, m_key);
        for (int s = 1; s <= m_segments; ++s) {
            const QVariant &value = key[s - 1];
            const QString sent = gfsDB_KeyValue(s);
            if (value.isNull() || sent.contains(QLatin1Char('\'')) || rightTrimmed(sent) != rightTrimmed(value.toString()))
                return false;
        }
        return true;
    }
    void setKey(int iKey) { m_key = iKey; }

    // The row becomes the table's current record, as the step that read it leaves it.
    void makeCurrent()
    {
        dbaRecordset[size_t(m_table)] = std::move(m_rows);
        gpDB_Set_read(m_table);
    }

private:
    int m_table;
    int m_segments;
    int m_key = 0;
    std::vector<int> m_ordinals;
    int m_limit = 0, m_count = 0;
    std::unique_ptr<Recordset> m_rows;
};

bool sameKey(const QVariantList &a, const QVariantList &b)
{
    for (int s = 0; s < a.size(); ++s) {
        if (a[s].isNull() || b[s].isNull())
            return true; // where a null sorts against its ties is the engine's to say
        if (looseForm(a[s].toString()) != looseForm(b[s].toString()))
            return false;
    }
    return true;
}

// One step sent by itself; false where the run ends.
bool stepAlone(int iTable, int iKey, int iOp, const WalkVisit &visit, int &taken)
{
    if (!gfbDB_RecordOp(iTable, iOp, iKey))
        return false;
    switch (visit.judge()) {
    case WalkVerdict::Pass: visit.take(); ++taken; return true;
    case WalkVerdict::End: return false;
    case WalkVerdict::Refuse: return true;
    }
    return true;
}

int stepsAlone(int iTable, int iKey, int iOp, int iWanted, const WalkVisit &visit)
{
    int taken = 0;
    while (taken < iWanted && stepAlone(iTable, iKey, iOp, visit, taken)) {
    }
    return taken;
}

// The walk's statement for one step, reading `rows` rows instead of one.
QString windowSql(int iTable, int iKey, int iOp, int rows)
{
    gpDB_table_key_set(iTable, iKey);
    QString sql = gfsDB_NextSql(iTable, iKey, iOp == kOpGetNext ? QStringLiteral(">") : QStringLiteral("<"));
    const QString one = QStringLiteral("SELECT  TOP 1 ");
    if (!sql.startsWith(one))
        return QString();
    return QStringLiteral("SELECT TOP ") + QString::number(rows) + QLatin1Char(' ') + sql.mid(one.size());
}

} // namespace

void gpWalk_window_set(int iRows) { windowRows() = qMax(iRows, 0); }
int gfiWalk_window() { return windowRows(); }

int gfiWalk_steps(int iTable, int iKey, int iOp, int iWanted, const WalkVisit &visit)
{
    gpDB_Tables_refresh();
    gpDB_table_key_set(iTable, iKey);
    const int segments = dbuaTable[iTable].iKeySegments;
    // Keys of four or five segments step by an approximation whose answer a window of rows
    // in key order does not give.
    if (windowRows() < 2 || segments < 1 || segments > 3 || !gfrsDB_Current(iTable))
        return stepsAlone(iTable, iKey, iOp, iWanted, visit);

    int taken = 0;
    while (taken < iWanted) {
        const int rows = qMin(iWanted - taken + kSpare, windowRows());
        const QString sql = windowSql(iTable, iKey, iOp, rows);
        Window window(iTable, segments);
        window.setKey(iKey);
        if (sql.isEmpty() || !window.read(sql, rows))
            return taken + stepsAlone(iTable, iKey, iOp, iWanted - taken, visit);
        const std::vector<QVariantList> keys = window.keys();
        const int count = int(keys.size());
        // Row i is the step's answer from row i - 1 when no other row shares its key (the
        // engine would pick one of them) and row i - 1 steps from its own values; the first
        // row answers the very statement the step sends.
        int used = 0;
        bool ends = false, positionClean = true;
        for (int i = 0; i < count && taken < iWanted; ++i) {
            const bool tieKnown = i + 1 < count || window.complete();
            if (!positionClean || !tieKnown || (i + 1 < count && sameKey(keys[i], keys[i + 1])))
                break;
            if (i > 0)
                window.next(); // the set stays on the last row a step read
            window.decode();
            ++used;
            const WalkVerdict verdict = visit.judge();
            if (verdict == WalkVerdict::End) {
                ends = true;
                break;
            }
            if (verdict == WalkVerdict::Pass) {
                visit.take();
                ++taken;
            }
            positionClean = window.stepsFromOwnKey(keys[i]);
        }
        if (used > 0)
            window.makeCurrent();
        if (ends || taken == iWanted)
            return taken;
        if (used == count && window.complete() && positionClean) {
            // The step after the last row finds nothing: the table's edge, as a step leaves it.
            dbaRecordset[size_t(iTable)].reset();
            gfbDB_TableOpen(iTable);
            gpDB_Set_unread_mark(iTable);
            return taken;
        }
        if (used == 0 && !stepAlone(iTable, iKey, iOp, visit, taken))
            return taken;
    }
    return taken;
}

} // namespace qln
