#pragma once
#include "common/Money.h"
#include "store/FieldCodec.h"

#include <QString>
#include <QStringList>
#include <initializer_list>
#include <variant>
#include <vector>

// A table's columns, in ordinal order, tied to the fields of its record buffer. The create
// statement and the three routines that move a record all come from this one list, so that
// a column can't stand at one ordinal in the table and at another in the buffer.
namespace qln {

// Receives a record's values in column order, each as its own type: for loading many rows
// at once without going through their text.
class RowSink {
public:
    virtual ~RowSink() = default;
    virtual void text(const QString &value) = 0;
    virtual void integer(qint32 value) = 0;
    virtual void real(double value) = 0;
    virtual void money(Money value) = 0;

    void put(const QString &value) { text(value); }
    void put(qint16 value) { integer(value); }
    void put(qint32 value) { integer(value); }
    void put(float value) { real(double(value)); }
    void put(Money value) { money(value); }
    void put(const QDateTime &value) { text(gfsDate_keyText(value)); }
};

// Width of a "CHAR (n)" type; 0 for any other.
int gfiColumn_width(const char *type);
// A column as it stands in a create statement: text columns that may be null take DEFAULT  ' '.
QString gfsColumn_definition(const char *name, const char *type);

// Fills a registered table's create and index statements and runs them, when the database
// lacks the table; true when it was missing.
bool gfbDB_TableCreate_missing(int iTable, const QString &sCreateSql, const QString &sIndexSql);

// One index statement: head, " On ", the table, " (", the columns and ");".
QString gfsIndex_statement(const char *head, const QString &sTable, const char *columns);

// How the value text treats an apostrophe in a text field: doubled, or made a blank.
enum class QuoteRule { Double, Blank };

// How each kind of buffer field is read from the current row (text left-aligned and blank
// padded to its width), written to it, and listed in an INSERT.
void gpColumn_get(int iTable, int iField, QString &field, int width);
void gpColumn_get(int iTable, int iField, qint16 &field, int width);
void gpColumn_get(int iTable, int iField, qint32 &field, int width);
void gpColumn_get(int iTable, int iField, float &field, int width);
void gpColumn_get(int iTable, int iField, Money &field, int width);
void gpColumn_get(int iTable, int iField, QDateTime &field, int width);
void gpColumn_set(int iTable, int iField, const QString &field);
void gpColumn_set(int iTable, int iField, qint16 field);
void gpColumn_set(int iTable, int iField, qint32 field);
void gpColumn_set(int iTable, int iField, float field);
void gpColumn_set(int iTable, int iField, Money field);
void gpColumn_set(int iTable, int iField, const QDateTime &field);
void gpColumn_value(ValueList &values, QString &field, int width, QuoteRule rule);
void gpColumn_value(ValueList &values, qint16 field, int width, QuoteRule rule);
void gpColumn_value(ValueList &values, qint32 field, int width, QuoteRule rule);
void gpColumn_value(ValueList &values, float field, int width, QuoteRule rule);
void gpColumn_value(ValueList &values, Money field, int width, QuoteRule rule);
void gpColumn_value(ValueList &values, const QDateTime &field, int width, QuoteRule rule);

template <class R>
class TableLayout {
public:
    using Field = std::variant<QString R::*, qint16 R::*, qint32 R::*, float R::*, Money R::*, QDateTime R::*>;
    struct Column {
        const char *name;
        const char *type; // as in the create statement: "CHAR (20)", "SMALLINT DEFAULT -1"
        Field field;
    };

    TableLayout(std::initializer_list<Column> columns) : m_columns(columns)
    {
        for (const Column &c : m_columns)
            m_widths.push_back(gfiColumn_width(c.type));
    }

    // "Create Table T (c1 type, c2 type);"
    QString createSql(const QString &sTable) const
    {
        QStringList columns;
        for (const Column &c : m_columns)
            columns << gfsColumn_definition(c.name, c.type);
        return QStringLiteral("Create Table ") + sTable + QStringLiteral(" (") + columns.join(QStringLiteral(", ")) +
               QStringLiteral(");");
    }

    void read(int iTable, R &record) const
    {
        for (int i = 0; i < count(); ++i)
            std::visit([&](auto member) { gpColumn_get(iTable, i, record.*member, m_widths[i]); }, m_columns[i].field);
    }

    // The fields `fields` (ordinals) from the current row of a statement that selects their
    // columns alone, in that order.
    void readSome(int iTable, R &record, const std::vector<int> &fields) const
    {
        for (int k = 0; k < int(fields.size()); ++k)
            std::visit([&](auto member) { gpColumn_get(iTable, k, record.*member, m_widths[fields[k]]); },
                       m_columns[fields[k]].field);
    }
    const char *name(int iField) const { return m_columns.at(iField).name; }
    int columnCount() const { return count(); }

    void write(int iTable, const R &record) const
    {
        for (int i = 0; i < count(); ++i)
            std::visit([&](auto member) { gpColumn_set(iTable, i, record.*member); }, m_columns[i].field);
    }

    // The text of VALUES(...). The escaped texts stay in the buffer, as the suite's did.
    QString values(R &record, QuoteRule rule = QuoteRule::Double) const
    {
        ValueList list;
        for (int i = 0; i < count(); ++i)
            std::visit([&](auto member) { gpColumn_value(list, record.*member, m_widths[i], rule); }, m_columns[i].field);
        return list.joined();
    }

    // The buffer's values as they are, in column order.
    void put(const R &record, RowSink &sink) const
    {
        for (const Column &c : m_columns)
            std::visit([&](auto member) { sink.put(record.*member); }, c.field);
    }

    // The ordinal of a buffer field, for the key builders.
    template <class T>
    int ordinal(T R::*member) const
    {
        for (int i = 0; i < count(); ++i)
            if (const auto *held = std::get_if<T R::*>(&m_columns[i].field); held && *held == member)
                return i;
        return -1;
    }

    // A text as the fixed-width field holds it: cut or blank padded to the field's width.
    QString fitted(QString R::*field, const QString &text) const
    {
        return text.leftJustified(m_widths.at(ordinal(field)), QLatin1Char(' '), true);
    }
    int width(int iField) const { return m_widths.at(iField); }

private:
    int count() const { return int(m_columns.size()); }

    std::vector<Column> m_columns;
    std::vector<int> m_widths;
};

} // namespace qln
