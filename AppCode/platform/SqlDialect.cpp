#include "platform/SqlDialect.h"

#include <QDate>
#include <QRegularExpression>

namespace qln {

Provider providerFromName(const QString &name)
{
    const QString n = name.trimmed().toLower();
    if (n == QLatin1String("postgres") || n == QLatin1String("postgresql"))
        return Provider::Postgres;
    if (n == QLatin1String("sqlserver"))
        return Provider::SqlServer;
    return Provider::SQLite;
}

QString providerName(Provider provider)
{
    switch (provider) {
    case Provider::Postgres: return QStringLiteral("postgres");
    case Provider::SqlServer: return QStringLiteral("sqlserver");
    case Provider::SQLite: break;
    }
    return QStringLiteral("sqlite");
}

// ---------------------------------------------------------------- masking

QString MaskedSql::marker(int index)
{
    char digits[16];
    int at = int(sizeof digits);
    digits[--at] = '\x01';
    do
        digits[--at] = char('0' + index % 10);
    while ((index /= 10) > 0);
    digits[--at] = '\x01';
    return QString::fromLatin1(digits + at, qsizetype(sizeof digits) - at);
}

MaskedSql::MaskedSql(const QString &sql)
{
    text.reserve(sql.size());
    int i = 0;
    while (i < sql.size()) {
        const int quote = sql.indexOf(QLatin1Char('\''), i);
        if (quote < 0) {
            text += QStringView(sql).mid(i);
            break;
        }
        text += QStringView(sql).mid(i, quote - i);
        int j = quote + 1;
        // '' inside a literal is a quote of its own
        while (j < sql.size() && (sql[j] != QLatin1Char('\'') || (j + 1 < sql.size() && sql[j + 1] == QLatin1Char('\''))))
            j += sql[j] == QLatin1Char('\'') ? 2 : 1;
        const int end = qMin(j, int(sql.size()) - 1);
        literals << sql.mid(quote, end - quote + 1);
        text += marker(int(literals.size()) - 1);
        i = end + 1;
    }
}

QString MaskedSql::unmask(const QString &masked) const
{
    QString out;
    out.reserve(masked.size() + 64);
    forEachMarker(masked, [&](QStringView text, int literal) {
        out += text;
        if (literal >= 0)
            out += literals.value(literal);
    });
    return out;
}

void MaskedSql::forEachMarker(const QString &masked, const std::function<void(QStringView, int)> &visit)
{
    int last = 0;
    for (int i = 0; i < masked.size(); ++i) {
        if (masked[i] != QChar(1))
            continue;
        const int end = masked.indexOf(QChar(1), i + 1);
        if (end < 0)
            break;
        visit(QStringView(masked).mid(last, i - last), QStringView(masked).mid(i + 1, end - i - 1).toInt());
        last = end + 1;
        i = end;
    }
    visit(QStringView(masked).mid(last), -1);
}

namespace {

const QRegularExpression::PatternOption CI = QRegularExpression::CaseInsensitiveOption;

QString ident(const QString &s) { return s.trimmed(); }

// 'M/D/YYYY' compared with a date column (a name ending in "date") is a date to the suite's
// server, read month first; both engines want ISO.
void slashDates(MaskedSql &sql)
{
    static const QRegularExpression compared(QStringLiteral("date\\s*(?:=|<>|<=|>=|<|>)\\s*\\x01(\\d+)\\x01"), CI);
    static const QRegularExpression slash(QStringLiteral("^'(\\d{1,2})/(\\d{1,2})/(\\d{4})'$"));
    for (auto it = compared.globalMatch(sql.text); it.hasNext();) {
        QString &lit = sql.literals[it.next().captured(1).toInt()];
        const auto m = slash.match(lit);
        const QDate date = m.hasMatch() ? QDate(m.captured(3).toInt(), m.captured(1).toInt(), m.captured(2).toInt()) : QDate();
        if (date.isValid())
            lit = QLatin1Char('\'') + date.toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" 00:00:00'");
    }
}

} // namespace

// 'YYYYMMDD HH:MM:SS' is the suite's date form; both engines want ISO.
void MaskedSql::isoDates()
{
    static const QRegularExpression re(QStringLiteral("^'(\\d{4})(\\d{2})(\\d{2}) (\\d{2}:\\d{2}:\\d{2})'$"));
    for (QString &lit : literals) {
        if (lit.size() != 19 || lit[9] != QLatin1Char(' '))
            continue; // most literals are not dates: skip the pattern
        const auto m = re.match(lit);
        if (m.hasMatch())
            lit = QStringLiteral("'%1-%2-%3 %4'").arg(m.captured(1), m.captured(2), m.captured(3), m.captured(4));
    }
}

// A whole number right after "=", "<" or ">" (blanks between allowed) and followed by the end,
// a blank, ")", "," or ";". "1234AND" stays as it is: the dialect unglues it.
void MaskedSql::comparedNumbers()
{
    QString out;
    qsizetype done = 0;
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        const QChar c = text[i];
        if (c != QLatin1Char('=') && c != QLatin1Char('<') && c != QLatin1Char('>'))
            continue;
        qsizetype from = i + 1;
        while (from < size && text[from].isSpace())
            ++from;
        qsizetype end = from < size && text[from] == QLatin1Char('-') ? from + 1 : from;
        const qsizetype digits = end;
        while (end < size && text[end].isDigit())
            ++end;
        if (end == digits)
            continue;
        if (end < size && !text[end].isSpace() && text[end] != QLatin1Char(')') && text[end] != QLatin1Char(',') &&
            text[end] != QLatin1Char(';'))
            continue;
        out += QStringView(text).mid(done, from - done);
        literals << text.mid(from, end - from);
        out += marker(int(literals.size()) - 1);
        done = end;
        i = end - 1;
    }
    if (done == 0)
        return;
    out += QStringView(text).mid(done);
    text = out;
}

namespace {

// The suite's server reads "1234AND" as a number and a keyword; the others refuse it.
QString unglueNumbers(const QString &text)
{
    static const QRegularExpression re(
        QStringLiteral("(?<![\\w.])(\\d+(?:\\.\\d+)?)(AND|OR|ORDER|DESC|ASC|GROUP)\\b"), CI);
    QString out = text;
    out.replace(re, QStringLiteral("\\1 \\2"));
    return out;
}

// LEFT(x, n) as SUBSTR(x, 1, n): SQLite takes LEFT for the join word alone.
QString leftAsSubstr(const QString &text)
{
    static const QRegularExpression left(QStringLiteral("\\bLEFT\\s*\\("), CI);
    QString out = text;
    for (auto m = left.match(out); m.hasMatch(); m = left.match(out, m.capturedStart())) {
        qsizetype depth = 0, i = m.capturedEnd();
        for (; i < out.size() && !(depth == 0 && (out[i] == QLatin1Char(',') || out[i] == QLatin1Char(')'))); ++i)
            depth += out[i] == QLatin1Char('(') ? 1 : out[i] == QLatin1Char(')') ? -1 : 0;
        if (i >= out.size() || out[i] != QLatin1Char(','))
            break; // not the two-argument function
        out.insert(i + 1, QStringLiteral("1,"));
        out.replace(m.capturedStart(), m.capturedLength(), QStringLiteral("SUBSTR("));
    }
    return out;
}

QString serverFunctions(const QString &text)
{
    QString out = leftAsSubstr(text);
    static const QRegularExpression isnull(QStringLiteral("\\bISNULL\\s*\\("), CI);
    static const QRegularExpression getdate(QStringLiteral("\\bGETDATE\\s*\\(\\s*\\)"), CI);
    static const QRegularExpression len(QStringLiteral("\\bLEN\\s*\\("), CI);
    out.replace(isnull, QStringLiteral("COALESCE("));
    out.replace(getdate, QStringLiteral("CURRENT_TIMESTAMP"));
    out.replace(len, QStringLiteral("LENGTH("));
    return out;
}

// "SELECT TOP n ..." -> "SELECT ... LIMIT n" for the outer statement.
QString topToLimit(const QString &text)
{
    static const QRegularExpression re(QStringLiteral("^\\s*SELECT\\s+(DISTINCT\\s+)?TOP\\s+(\\d+)\\s+"), CI);
    const auto m = re.match(text);
    if (!m.hasMatch())
        return text;
    QString rest = text.mid(m.capturedEnd());
    while (rest.endsWith(QLatin1Char(';')) || rest.endsWith(QLatin1Char(' ')))
        rest.chop(1);
    return QStringLiteral("SELECT ") + m.captured(1) + rest + QStringLiteral(" LIMIT ") + m.captured(2);
}


// ---------------------------------------------------------------- keyed walk

struct Comparison {
    QString column, op, literal;
};

bool parseConjunction(const QString &group, QList<Comparison> &out)
{
    static const QRegularExpression cmp(QStringLiteral("^\\s*(\\S+?)\\s*(>=|<=|=|>|<)\\s*(\\x01\\d+\\x01)\\s*$"));
    for (const QString &term : group.split(QStringLiteral(" AND "))) {
        const auto m = cmp.match(term);
        if (!m.hasMatch())
            return false;
        out << Comparison{m.captured(1), m.captured(2), m.captured(3)};
    }
    return true;
}

QString conjunction(const QList<Comparison> &terms)
{
    QStringList parts;
    for (const Comparison &c : terms)
        parts << c.column + c.op + c.literal;
    return parts.join(QStringLiteral(" AND "));
}

using FirstRowForm = std::function<QString(const QString &table, const QString &condition, const QString &order, int rows)>;
// A window of the keyed walk: the first `rows` rows of `table` beyond the key's `values` in
// the order of its `columns` (op ">" or "<"); a row that shares every segment but the last
// with the key passes only where `guard` holds (none: always).
struct WalkWindowKey {
    QString table;
    QStringList columns, values; // the values as masked literals
    QString op, guard, order;
    int rows = 0;
};
// The window as one statement of the engine's own; empty: the union of branch seeks.
using WindowForm = std::function<QString(const WalkWindowKey &window)>;

// The walk's own branches: for a key of n segments, branch j holds the first n - j - 1
// segments equal to the key and the next one beyond it, in the order the statement sorts.
// Each segment's value is taken from the branch where it stands beyond the key; the walk
// writes the same value in every branch.
bool walkKeyOf(const QStringList &groups, const QString &order, WalkWindowKey &window)
{
    const int n = int(groups.size());
    QList<Comparison> first;
    if (n < 2 || !parseConjunction(groups[0], first) || first.size() != n)
        return false;
    const QString op = first.last().op;
    if (op != QLatin1String(">") && op != QLatin1String("<"))
        return false;
    window.values = QStringList(n, QString());
    for (int j = 0; j < n; ++j) {
        QList<Comparison> terms;
        if (!parseConjunction(groups[j], terms) || terms.size() != n - j)
            return false;
        for (int t = 0; t < terms.size(); ++t) {
            const bool beyond = t == terms.size() - 1;
            if (terms[t].column != first[t].column || terms[t].op != (beyond ? op : QStringLiteral("=")))
                return false;
        }
        window.values[n - j - 1] = terms.last().literal;
    }
    QStringList sorted;
    for (const Comparison &c : first) {
        window.columns << c.column;
        sorted << (op == QLatin1String("<") ? c.column + QStringLiteral(" DESC") : c.column);
    }
    QStringList given = order.split(QLatin1Char(','));
    for (QString &item : given)
        item = item.trimmed();
    window.op = op;
    window.order = order;
    return given == sorted;
}

// The statement of the next/previous walk, as a union of one index seek per OR branch.
// Each branch is ordered and limited alike. The walk lists its branches from the longest
// equal key prefix to the shortest, and every row of a branch comes before every row of the
// next in the walk's order: the first branch that gives a row gives the row the literal
// text returns, and UNION ALL under LIMIT stops there without sorting the winners. The
// COUNT guard keeps its meaning, read over two rows at most.
// "TOP n" reads a window of the walk: the branches' first n rows, sorted again as a whole
// (at most n per branch), so that the order never rests on how the engine joins the arms;
// an engine with a single seek for the walk's own branches reads that instead.
QString indexFriendlyWalkText(const QString &masked, const FirstRowForm &firstRow, const WindowForm &windowSeek)
{
    static const QRegularExpression shape(
        QStringLiteral("^SELECT\\s+TOP (\\d+) \\* FROM (\\w+) WHERE (.*) ORDER BY ([\\w, ]+)$"));
    const auto m = shape.match(masked);
    if (!m.hasMatch())
        return QString();
    const int rows = m.captured(1).toInt();
    const QString table = m.captured(2);
    QString where = m.captured(3);
    const QString order = m.captured(4);
    if (rows < 1)
        return QString();

    static const QRegularExpression guardRe(
        QStringLiteral("^\\(SELECT COUNT\\(\\*\\) FROM (\\w+) WHERE (\\S+)=(\\x01\\d+\\x01)\\) > (?:1|\\x01\\d+\\x01) AND "));
    QString guard;
    const auto g = guardRe.match(where);
    if (g.hasMatch()) {
        guard = QStringLiteral("(SELECT COUNT(*) FROM (SELECT 1 FROM %1 WHERE %2=%3 LIMIT 2) qln_g) > 1")
                    .arg(g.captured(1), g.captured(2), g.captured(3));
        where = where.mid(g.capturedEnd());
    }
    const QStringList groups = where.split(QStringLiteral(" OR "));
    if (groups.size() < 2 && guard.isEmpty())
        return QString(); // a single seek already
    if (rows > 1) {
        WalkWindowKey window;
        if (walkKeyOf(groups, order, window)) {
            window.table = table;
            window.guard = guard;
            window.rows = rows;
            const QString seek = windowSeek ? windowSeek(window) : QString();
            if (!seek.isEmpty())
                return seek;
        }
    }
    QStringList branches;
    for (int i = 0; i < groups.size(); ++i) {
        QList<Comparison> terms;
        if (!parseConjunction(groups[i], terms))
            return QString();
        QString condition = conjunction(terms);
        if (i == 0 && !guard.isEmpty())
            condition = guard + QStringLiteral(" AND ") + condition;
        branches << firstRow(table, condition, order, rows);
    }
    const QString limit = QStringLiteral(" LIMIT ") + QString::number(rows);
    if (rows == 1)
        return branches.join(QStringLiteral(" UNION ALL ")) + limit;
    return QStringLiteral("SELECT * FROM (") + branches.join(QStringLiteral(" UNION ALL ")) + QStringLiteral(") qln_w ORDER BY ") +
           order + limit;
}


// On the server, one index scan from the key's row of values: a union of branch seeks
// under an outer sort makes it plan three reads of the table (again for every value while
// its plan is not reused) and compare every row once more under the case-blind collation.
// A row that shares every segment but the last with the key passes only under the guard.
QString oneSeekWindow(const WalkWindowKey &w)
{
    QString condition = QStringLiteral("(%1)%2(%3)").arg(w.columns.join(QLatin1Char(',')), w.op, w.values.join(QLatin1Char(',')));
    if (!w.guard.isEmpty()) {
        QStringList beyond;
        for (int i = 0; i + 1 < w.columns.size(); ++i)
            beyond << w.columns[i] + w.op + w.values[i];
        condition += QStringLiteral(" AND (") + beyond.join(QStringLiteral(" OR ")) + QStringLiteral(" OR ") + w.guard + QLatin1Char(')');
    }
    return QStringLiteral("SELECT * FROM %1 WHERE %2 ORDER BY %3 LIMIT %4").arg(w.table, condition, w.order, QString::number(w.rows));
}

// The suite's server sorts NULL below every value; PostgreSQL above. Each ORDER BY item and
// each index column says where NULLs go, so that the indexes still serve the orderings.
QString nullsLikeTheServer(const QString &text)
{
    static const QRegularExpression orderBy(QStringLiteral("\\bORDER\\s+BY\\s+"), CI);
    QString out;
    int last = 0;
    auto it = orderBy.globalMatch(text);
    while (it.hasNext()) {
        const auto m = it.next();
        if (m.capturedStart() < last)
            continue;
        out += text.mid(last, m.capturedEnd() - last);
        int i = m.capturedEnd(), depth = 0, start = i;
        QStringList items;
        for (;; ++i) {
            const bool atEnd = i >= text.size();
            const QChar c = atEnd ? QChar() : text[i];
            if (!atEnd && c == QLatin1Char('(')) {
                ++depth;
                continue;
            }
            if (!atEnd && c == QLatin1Char(')') && depth > 0) {
                --depth;
                continue;
            }
            const bool limit = !atEnd && depth == 0 && text.mid(i).startsWith(QLatin1String(" LIMIT "), Qt::CaseInsensitive);
            if (atEnd || limit || (c == QLatin1Char(')') && depth == 0) || (c == QLatin1Char(',') && depth == 0)) {
                items << text.mid(start, i - start);
                start = i + 1;
                if (atEnd || limit || c == QLatin1Char(')'))
                    break;
            }
        }
        QStringList ordered;
        static const QRegularExpression desc(QStringLiteral("\\s+DESC\\s*$"), CI);
        for (const QString &item : items) {
            const QString t = item.trimmed();
            if (t.isEmpty() || t.contains(QLatin1String("NULLS"), Qt::CaseInsensitive))
                ordered << t;
            else
                ordered << t + (desc.match(t).hasMatch() ? QStringLiteral(" NULLS LAST") : QStringLiteral(" NULLS FIRST"));
        }
        out += ordered.join(QLatin1Char(','));
        last = i;
    }
    out += text.mid(last);
    return out;
}

// A keyed ">=" or "<=" over several segments orders by the first segment alone, so any row
// whose first segment equals the key's is an answer when one exists: seek that first, and
// only then read on. UNION ALL under LIMIT stops at the first branch that gives a row.
QString indexFriendlyKeyedReadText(const QString &masked, const FirstRowForm &firstRow)
{
    static const QRegularExpression shape(
        QStringLiteral("^SELECT TOP 1 \\* FROM (\\w+) WHERE (.*) ORDER BY (\\S+)( DESC)?$"));
    const auto m = shape.match(masked);
    if (!m.hasMatch())
        return QString();
    QList<Comparison> terms;
    if (!parseConjunction(m.captured(2), terms) || terms.size() < 2 || terms[0].column != m.captured(3))
        return QString();
    const QString op = terms[0].op;
    if (op != QLatin1String(">=") && op != QLatin1String("<="))
        return QString();
    for (const Comparison &t : terms)
        if (t.op != op)
            return QString();
    const bool descending = !m.captured(4).isEmpty();
    if (descending != (op == QLatin1String("<=")))
        return QString();
    const QString dir = descending ? QStringLiteral(" DESC") : QString();
    QList<Comparison> equal = terms, beyond = terms;
    equal[0].op = QStringLiteral("=");
    beyond[0].op = op.left(1);
    QStringList order;
    for (const Comparison &t : terms)
        order << t.column + dir;
    return firstRow(m.captured(1), conjunction(equal), order.join(QLatin1Char(',')), 1) + QStringLiteral(" UNION ALL ") +
           firstRow(m.captured(1), conjunction(beyond), terms[0].column + dir, 1) + QStringLiteral(" LIMIT 1");
}

} // namespace

// ---------------------------------------------------------------- DDL

QStringList splitTopLevel(const QString &text, QChar separator)
{
    QStringList parts;
    int depth = 0, start = 0;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')'))
            --depth;
        else if (c == separator && depth == 0) {
            parts << text.mid(start, i - start);
            start = i + 1;
        }
    }
    parts << text.mid(start);
    return parts;
}


QString SqlDialect::qualifiedIndexName(const QString &table, const QString &index)
{
    return table.trimmed() + QStringLiteral("_") + index.trimmed();
}

QString SqlDialect::columnDefinition(const QString &definition) const
{
    static const QRegularExpression re(
        QStringLiteral("^\\s*(\\w+)\\s+(\\w+)(\\s*\\(\\s*[\\d\\s,]+\\))?(.*)$"), QRegularExpression::DotMatchesEverythingOption);
    const auto m = re.match(definition);
    if (!m.hasMatch())
        return definition;
    const QString type = m.captured(2).toUpper();
    QString size = m.captured(3);
    size.remove(QLatin1Char(' '));
    // The suite's server reads a bare DECIMAL as DECIMAL(18,0).
    if (size.isEmpty() && (type == QLatin1String("DECIMAL") || type == QLatin1String("NUMERIC")))
        size = QStringLiteral("(18,0)");
    QString out = m.captured(1) + QLatin1Char(' ') + mapType(type) + size;
    static const QStringList textTypes = {QStringLiteral("CHAR"), QStringLiteral("VARCHAR"),
                                          QStringLiteral("NCHAR"), QStringLiteral("NVARCHAR"),
                                          QStringLiteral("TEXT"), QStringLiteral("NTEXT")};
    if (textTypes.contains(type))
        out += QStringLiteral(" COLLATE ") + textCollation();
    return out + m.captured(4);
}

QString SqlDialect::likeRewrite(const QString &masked) const { return masked; }
QString SqlDialect::orderings(const QString &masked) const { return masked; }
QString SqlDialect::indexColumns(const QString &columns) const { return columns; }

QString SqlDialect::rewrite(const QString &tsql) const
{
    if (provider() == Provider::SqlServer)
        return tsql;
    // A time alone as a date's default is the server's day zero at midnight.
    static const QRegularExpression timeDefault(QStringLiteral("\\b(DATE(?:TIME)?\\s+DEFAULT\\s+)'12:00:00 AM'"),
                                                QRegularExpression::CaseInsensitiveOption);
    MaskedSql sql(QString(tsql).replace(timeDefault, QStringLiteral("\\1'1900-01-01'")));
    sql.isoDates();
    slashDates(sql);
    QString t = sql.text.trimmed();
    while (t.endsWith(QLatin1Char(';')))
        t.chop(1);

    static const QRegularExpression createTable(
        QStringLiteral("^Create\\s+Table\\s+(\\w+)\\s*\\((.*)\\)\\s*$"), CI | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression createIndex(
        QStringLiteral("^Create\\s+(UNIQUE\\s+)?(?:(?:NON)?CLUSTERED\\s+)?Index\\s+(\\w+)\\s+On\\s+(\\w+)\\s*\\((.*)\\)\\s*$"), CI);
    static const QRegularExpression dropIndex(QStringLiteral("^Drop\\s+index\\s+(\\w+)\\.(\\w+)\\s*$"), CI);
    static const QRegularExpression addColumn(QStringLiteral("^ALTER\\s+TABLE\\s+(\\w+)\\s+ADD\\s+(.*)$"), CI);
    static const QRegularExpression alterColumnRe(
        QStringLiteral("^ALTER\\s+TABLE\\s+(\\w+)\\s+ALTER\\s+COLUMN\\s+(\\w+)\\s+(.*)$"), CI);
    static const QRegularExpression rename(
        QStringLiteral("^sp_RENAME\\s+(\\x01\\d+\\x01)\\s*,\\s*(\\x01\\d+\\x01)\\s*,\\s*(\\x01\\d+\\x01)\\s*$"), CI);

    if (auto m = createTable.match(t); m.hasMatch()) {
        QStringList columns;
        for (const QString &c : splitTopLevel(m.captured(2), QLatin1Char(',')))
            columns << columnDefinition(c);
        return sql.unmask(QStringLiteral("CREATE TABLE %1 (%2)").arg(m.captured(1), columns.join(QStringLiteral(", "))));
    }
    if (auto m = createIndex.match(t); m.hasMatch()) {
        return sql.unmask(QStringLiteral("CREATE %1INDEX %2 ON %3 (%4)")
                              .arg(m.captured(1).isEmpty() ? QString() : QStringLiteral("UNIQUE "),
                                   qualifiedIndexName(m.captured(3), m.captured(2)), m.captured(3),
                                   indexColumns(m.captured(4).trimmed())));
    }
    if (auto m = dropIndex.match(t); m.hasMatch())
        return QStringLiteral("DROP INDEX ") + qualifiedIndexName(m.captured(1), m.captured(2));
    if (auto m = alterColumnRe.match(t); m.hasMatch())
        return alterColumn(ident(m.captured(1)), ident(m.captured(2)), sql.unmask(m.captured(3)).trimmed());
    if (auto m = addColumn.match(t); m.hasMatch())
        return sql.unmask(QStringLiteral("ALTER TABLE %1 ADD %2").arg(m.captured(1), columnDefinition(m.captured(2))));
    if (auto m = rename.match(t); m.hasMatch()) {
        auto unquote = [&](int i) {
            QString s = sql.unmask(m.captured(i));
            return s.mid(1, s.size() - 2).replace(QStringLiteral("''"), QStringLiteral("'")).trimmed();
        };
        const QString object = unquote(1);
        const int dot = object.indexOf(QLatin1Char('.'));
        if (dot > 0 && unquote(3).compare(QLatin1String("COLUMN"), Qt::CaseInsensitive) == 0)
            return QStringLiteral("ALTER TABLE %1 RENAME COLUMN %2 TO %3")
                .arg(object.left(dot), object.mid(dot + 1), unquote(2));
    }

    return sql.unmask(rewriteQuery(t));
}

QString SqlDialect::firstRowBranch(const QString &table, const QString &condition, const QString &order, int rows) const
{
    return QStringLiteral("SELECT * FROM (SELECT * FROM %1 WHERE %2 ORDER BY %3 LIMIT %4) qln_b")
        .arg(table, condition, order, QString::number(rows));
}

QString SqlDialect::rewriteQuery(const QString &masked) const
{
    if (provider() == Provider::SqlServer)
        return masked;
    QString t = masked.trimmed();
    while (t.endsWith(QLatin1Char(';')))
        t.chop(1);
    if (m_indexFriendlyWalk) {
        const FirstRowForm firstRow = [this](const QString &table, const QString &condition, const QString &order, int rows) {
            return firstRowBranch(table, condition, order, rows);
        };
        const QString seek = indexFriendlyWalkText(t, firstRow, provider() == Provider::Postgres ? WindowForm(oneSeekWindow) : WindowForm());
        if (!seek.isEmpty())
            return orderings(trimmedColumns(serverFunctions(seek)));
        const QString read = indexFriendlyKeyedReadText(t, firstRow);
        if (!read.isEmpty())
            t = read;
    }
    t = unglueNumbers(t);
    t = serverFunctions(t);
    t = trimmedColumns(t);
    t = likeRewrite(t);
    t = topToLimit(t);
    return orderings(t);
}

// A trimmed column keeps the server's comparison: case and trailing blanks do not count.
// Under LIKE the engine's own pattern rules apply instead.
QString SqlDialect::trimmedColumns(const QString &masked) const
{
    static const QRegularExpression re(QStringLiteral("\\b(ltrim\\(\\s*[\\w.]+\\s*\\))(?!\\s*(?:NOT\\s+)?LIKE\\b)"), CI);
    QString out = masked;
    out.replace(re, trimmedColumnForm());
    return out;
}

// ---------------------------------------------------------------- engines

namespace {

class SqliteDialect final : public SqlDialect {
public:
    Provider provider() const override { return Provider::SQLite; }

protected:
    QString textCollation() const override { return QStringLiteral("QLN_CI"); }
    QString trimmedColumnForm() const override { return QStringLiteral("\\1 COLLATE QLN_CI"); }
    // The row fetched by its rowid from the index seek: an arm that reads a subquery's rows
    // copies every column of them once more.
    QString firstRowBranch(const QString &table, const QString &condition, const QString &order, int rows) const override
    {
        if (rows == 1)
            return QStringLiteral("SELECT * FROM %1 WHERE rowid = (SELECT rowid FROM %1 WHERE %2 ORDER BY %3 LIMIT 1)")
                .arg(table, condition, order);
        return QStringLiteral("SELECT * FROM %1 WHERE rowid IN (SELECT rowid FROM %1 WHERE %2 ORDER BY %3 LIMIT %4)")
            .arg(table, condition, order, QString::number(rows));
    }
    QString mapType(const QString &type) const override { return type; }
    // SQLite keeps declared types only as text; the connection rewrites the declaration.
    QString alterColumn(const QString &table, const QString &column, const QString &type) const override
    {
        return QStringLiteral("QLN ALTER COLUMN %1 %2 %3").arg(table, column, columnDefinition(column + QLatin1Char(' ') + type));
    }
};

class PostgresDialect final : public SqlDialect {
public:
    Provider provider() const override { return Provider::Postgres; }

protected:
    QString textCollation() const override { return QStringLiteral("qln_ci"); }
    QString trimmedColumnForm() const override { return QStringLiteral("CAST(\\1 AS bpchar) COLLATE qln_ci"); }
    QString mapType(const QString &type) const override
    {
        if (type == QLatin1String("DATETIME") || type == QLatin1String("SMALLDATETIME"))
            return QStringLiteral("TIMESTAMP");
        if (type == QLatin1String("BIT") || type == QLatin1String("TINYINT"))
            return QStringLiteral("SMALLINT");
        if (type == QLatin1String("MONEY"))
            return QStringLiteral("NUMERIC(19,4)");
        if (type == QLatin1String("IMAGE"))
            return QStringLiteral("BYTEA");
        if (type == QLatin1String("NTEXT"))
            return QStringLiteral("TEXT");
        if (type == QLatin1String("FLOAT"))
            return QStringLiteral("DOUBLE PRECISION");
        return type;
    }
    // A case-blind collation refuses LIKE; ILIKE under "C" gives the suite's answer.
    QString likeRewrite(const QString &masked) const override
    {
        static const QRegularExpression re(QStringLiteral("\\bLIKE\\s+(\\x01\\d+\\x01)"), QRegularExpression::CaseInsensitiveOption);
        QString out = masked;
        out.replace(re, QStringLiteral("ILIKE \\1 COLLATE \"C\""));
        return out;
    }
    QString orderings(const QString &masked) const override { return nullsLikeTheServer(masked); }
    QString indexColumns(const QString &columns) const override
    {
        QStringList out;
        for (const QString &c : columns.split(QLatin1Char(',')))
            out << c.trimmed() + QStringLiteral(" NULLS FIRST");
        return out.join(QStringLiteral(", "));
    }
    QString alterColumn(const QString &table, const QString &column, const QString &type) const override
    {
        QString definition = columnDefinition(column + QLatin1Char(' ') + type);
        definition = definition.mid(column.size() + 1);
        return QStringLiteral("ALTER TABLE %1 ALTER COLUMN %2 TYPE %3").arg(table, column, definition);
    }
};

class SqlServerDialect final : public SqlDialect {
public:
    Provider provider() const override { return Provider::SqlServer; }

protected:
    QString textCollation() const override { return QStringLiteral("DATABASE_DEFAULT"); }
    QString trimmedColumnForm() const override { return QStringLiteral("\\1"); }
    QString mapType(const QString &type) const override { return type; }
    QString alterColumn(const QString &table, const QString &column, const QString &type) const override
    {
        return QStringLiteral("ALTER TABLE %1 ALTER COLUMN %2 %3").arg(table, column, type);
    }
};

} // namespace

std::unique_ptr<SqlDialect> SqlDialect::create(Provider provider)
{
    switch (provider) {
    case Provider::Postgres: return std::make_unique<PostgresDialect>();
    case Provider::SqlServer: return std::make_unique<SqlServerDialect>();
    case Provider::SQLite: break;
    }
    return std::make_unique<SqliteDialect>();
}

} // namespace qln
