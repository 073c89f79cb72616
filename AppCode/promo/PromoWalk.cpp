#include "promo/PromoWalk.h"

#include "platform/Recordset.h"
#include "promo/PromoPricing.h"
#include "store/Database.h"
#include "store/FieldCodec.h"
#include "store/RecordOps.h"
#include "store/RowsDecode.h"

#include <QHash>
#include <vector>

namespace qln {

namespace {

bool &listSets()
{
    static bool on = true;
    return on;
}

// A row's key as the engine sorts and compares it; null parts compare with nothing.
struct WalkKey {
    bool numberNull = false, dateNull = false;
    qint32 number = 0;
    QDateTime date;
    bool sameAs(const WalkKey &o) const
    {
        return numberNull == o.numberNull && dateNull == o.dateNull && number == o.number && (dateNull || date == o.date);
    }
};

WalkKey keyOf(const Recordset &rows, int numberColumn, int dateColumn)
{
    WalkKey key;
    key.numberNull = rows.value(numberColumn).isNull();
    key.number = rows.readInteger(numberColumn);
    key.dateNull = rows.value(dateColumn).isNull();
    key.date = rows.readDate(dateColumn);
    return key;
}

} // namespace

void gpListSets_set(bool bOn) { listSets() = bOn; }
bool gfbListSets() { return listSets(); }

PromoWalk::PromoWalk(int iKey, WalkTies ties) : m_key(iKey), m_ties(ties) {}

PromoWalk::~PromoWalk() = default;

bool PromoWalk::begin(int iOperation)
{
    m_rows.reset();
    m_reached.clear();
    m_next = 0;
    m_position = 0;
    m_steps = true;
    if (!gfbDB_RecordOp(kPromoTable, iOperation, m_key))
        return false;
    mpSet_read();
    return true;
}

// Reads every row the walk can reach (a step never goes below the key's first part) and
// plays the steps over them. A refused read is not logged: the steps stand in for it and
// log their own.
void PromoWalk::mpSet_read()
{
    gpDB_table_key_set(kPromoTable, m_key);
    if (!gfbListSets() || dbuaTable[kPromoTable].iKeySegments != 2)
        return;
    const int numberOrdinal = gfiDB_KeyOrdinal(1), dateOrdinal = gfiDB_KeyOrdinal(2);
    const QString number = gfsDB_FieldName(kPromoTable, numberOrdinal), date = gfsDB_FieldName(kPromoTable, dateOrdinal);
    const auto field = [](const QString &name, const char *column) { return name.compare(QLatin1String(column), Qt::CaseInsensitive) == 0; };
    m_number = field(number, "GroupID") ? &PromoPriceRecord::GroupID : field(number, "Invuid") ? &PromoPriceRecord::Invuid : nullptr;
    m_date = field(date, "StartDate") ? &PromoPriceRecord::StartDate : field(date, "EndDate") ? &PromoPriceRecord::EndDate : nullptr;
    if (!m_number || !m_date)
        return;
    // The buffer's key, as the step would send it.
    qint32 g = gfiField_number(kPromoTable, numberOrdinal);
    QDateTime d = gfdField_date(kPromoTable, dateOrdinal);
    const QString &table = dbuaTable[kPromoTable].sSqlFile;
    const QString columns = m_ties == WalkTies::KeyOnly ? number + QLatin1Char(',') + date : QStringLiteral("*");
    auto rows = std::make_unique<Recordset>();
    if (!rows->open(dbConnection(), QStringLiteral("SELECT ") + columns + QStringLiteral(" FROM ") + table + QStringLiteral(" WHERE ") +
                                        number + QStringLiteral(" >= ") + QString::number(g) + QStringLiteral(" ORDER BY ") + number +
                                        QLatin1Char(',') + date))
        return;
    if (m_ties == WalkTies::KeyOnly)
        rows->describe(table);
    m_numberColumn = rows->fieldIndex(number);
    m_dateColumn = rows->fieldIndex(date);
    std::vector<WalkKey> keys;
    keys.reserve(size_t(rows->recordCount()));
    QHash<qint32, int> sharing; // rows per value of the key's first part
    for (rows->moveFirst(); !rows->eof(); rows->moveNext()) {
        keys.push_back(keyOf(*rows, m_numberColumn, m_dateColumn));
        const WalkKey &key = keys.back();
        // The step's text carries whole seconds: a finer date would be met again.
        if (!key.dateNull && (!key.date.isValid() || key.date.time().msec() != 0))
            return;
        if (!key.numberNull)
            ++sharing[key.number];
    }
    // The step: the first row, in the key's order, beyond the buffer's key; within the
    // same first part only when more than one row has it.
    const int size = int(keys.size());
    for (int from = 0;;) {
        const bool within = sharing.value(g) > 1;
        int found = from;
        for (; found < size; ++found) {
            const WalkKey &k = keys[size_t(found)];
            if (!k.numberNull && (k.number > g || (within && k.number == g && !k.dateNull && k.date > d)))
                break;
        }
        if (found == size)
            break;
        int end = found + 1;
        while (end < size && keys[size_t(end)].sameAs(keys[size_t(found)]))
            ++end;
        m_reached << Reach{found, end - found};
        g = keys[size_t(found)].number;
        d = keys[size_t(found)].dateNull ? gfdDate_zero() : keys[size_t(found)].date;
        from = end;
    }
    m_rows = std::move(rows);
    m_rows->moveFirst();
    m_steps = false;
}

bool PromoWalk::mfbStep() { return gfbDB_RecordOp(kPromoTable, kOpGetNext, m_key); }

// Whether the step just sent reached the key the set foresaw.
bool PromoWalk::mfbKey_is(const Reach &reach)
{
    for (; m_position < reach.row; ++m_position)
        m_rows->moveNext();
    const WalkKey foreseen = keyOf(*m_rows, m_numberColumn, m_dateColumn);
    const Recordset *current = gfrsDB_Current(kPromoTable);
    return current && keyOf(*current, current->fieldIndex(m_rows->fieldName(m_numberColumn)),
                            current->fieldIndex(m_rows->fieldName(m_dateColumn)))
                          .sameAs(foreseen);
}

bool PromoWalk::next()
{
    if (m_steps || m_next >= m_reached.size())
        return mfbStep();
    const Reach reach = m_reached[m_next++];
    if (m_next == m_reached.size() || (m_ties == WalkTies::WholeRow && reach.rows > 1)) {
        const bool found = mfbStep();
        // Another station changed the table since the set was read: steps from here on.
        if (!found || !mfbKey_is(reach))
            m_steps = true;
        return found;
    }
    for (; m_position < reach.row; ++m_position)
        m_rows->moveNext();
    if (m_ties == WalkTies::WholeRow) {
        gpDB_row_decode(kPromoTable, m_rows);
        return true;
    }
    // The key's fields as a read of the row sets them.
    gPromo.*m_number = m_rows->readInteger(m_numberColumn);
    const QDateTime date = m_rows->readDate(m_dateColumn);
    gPromo.*m_date = date.isValid() ? date : gfdDate_zero();
    return true;
}

} // namespace qln
