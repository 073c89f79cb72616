#pragma once
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace qln {

enum class Provider { SQLite, Postgres, SqlServer };

Provider providerFromName(const QString &name); // "sqlite" (default), "postgres", "sqlserver"
QString providerName(Provider provider);

// The program speaks the suite's Transact-SQL. A dialect turns one such text into what
// its engine runs, keeping the answer the suite's server would give.
class SqlDialect {
public:
    virtual ~SqlDialect() = default;
    static std::unique_ptr<SqlDialect> create(Provider provider);

    virtual Provider provider() const = 0;

    // The text to run for one statement of the suite.
    QString rewrite(const QString &tsql) const;
    // The same for a query or a change of rows, on its text with the literals masked: the
    // answer depends on the statement's shape alone, so it can be prepared once.
    QString rewriteQuery(const QString &masked) const;

    // The next/previous statements of the keyed walk make an engine sort half a table.
    // With this on (the default) they run as a union of index seeks with the same answer.
    void setIndexFriendlyWalk(bool on) { m_indexFriendlyWalk = on; }
    bool indexFriendlyWalk() const { return m_indexFriendlyWalk; }

    // Name an index gets on this engine: index names are per table on the suite's server.
    static QString qualifiedIndexName(const QString &table, const QString &index);

protected:
    virtual QString textCollation() const = 0;                 // for CHAR/VARCHAR/TEXT columns
    virtual QString mapType(const QString &type) const = 0;     // upper-cased type name in
    virtual QString likeRewrite(const QString &masked) const;   // engine's LIKE
    virtual QString orderings(const QString &masked) const;     // where NULLs sort
    virtual QString indexColumns(const QString &columns) const;
    virtual QString trimmedColumnForm() const = 0; // what "ltrim(column)" becomes; \1 is the call
    // A query for the first `rows` rows of `table` under `condition` in `order`, fit to stand
    // as an arm of UNION ALL.
    virtual QString firstRowBranch(const QString &table, const QString &condition, const QString &order, int rows) const;
    QString trimmedColumns(const QString &masked) const;
    virtual QString alterColumn(const QString &table, const QString &column,
                                const QString &type) const = 0;

    QString columnDefinition(const QString &definition) const;

private:
    bool m_indexFriendlyWalk = true;
};

// The pieces of a text between the separators that stand outside parentheses.
QStringList splitTopLevel(const QString &text, QChar separator);

// A text with its quoted literals swapped for markers, so that rewrites never touch values.
struct MaskedSql {
    explicit MaskedSql(const QString &sql);
    QString text;            // literals replaced by \x01<n>\x01
    QStringList literals;    // each with its quotes
    QString unmask(const QString &masked) const;
    void isoDates(); // 'YYYYMMDD HH:MM:SS' literals to ISO
    // Whole numbers compared with something become literals too (unquoted), so that the
    // reads of numeric keys share one statement shape.
    void comparedNumbers();
    static QString marker(int index);
    // Calls visit with each run of text and the literal that follows it (-1 after the last).
    static void forEachMarker(const QString &masked, const std::function<void(QStringView, int)> &visit);
};

} // namespace qln
