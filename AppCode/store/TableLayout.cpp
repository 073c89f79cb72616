#include "store/TableLayout.h"

#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableCreate.h"

#include <QRegularExpression>

namespace qln {

int gfiColumn_width(const char *type)
{
    static const QRegularExpression charType(QStringLiteral("^CHAR\\s*\\(\\s*(\\d+)\\s*\\)"),
                                             QRegularExpression::CaseInsensitiveOption);
    const auto m = charType.match(QLatin1String(type));
    return m.hasMatch() ? m.captured(1).toInt() : 0;
}

QString gfsColumn_definition(const char *name, const char *type)
{
    const QString definition = QLatin1String(name) + QLatin1Char(' ') + QLatin1String(type);
    const bool mayBeNull = !definition.contains(QLatin1String("NOT NULL"), Qt::CaseInsensitive);
    return gfiColumn_width(type) > 0 && mayBeNull ? definition + QStringLiteral(" DEFAULT  ' '") : definition;
}

bool gfbDB_TableCreate_missing(int iTable, const QString &sCreateSql, const QString &sIndexSql)
{
    DbTable &table = dbuaTable[iTable];
    if (gfbDB_TableExists(table.sSqlFile))
        return false;
    table.sCreateSql = sCreateSql;
    table.sIndexSql = sIndexSql;
    gfbDB_TableCreate(iTable);
    return true;
}

QString gfsIndex_statement(const char *head, const QString &sTable, const char *columns)
{
    return QLatin1String(head) + QStringLiteral(" On ") + sTable + QStringLiteral(" (") + QLatin1String(columns) +
           QStringLiteral(");");
}

void gpColumn_get(int iTable, int iField, QString &field, int width) { gpField_text_read(iTable, iField, width, field); }
void gpColumn_get(int iTable, int iField, qint16 &field, int) { field = qint16(gfiField_number(iTable, iField)); }
void gpColumn_get(int iTable, int iField, qint32 &field, int) { field = gfiField_number(iTable, iField); }
void gpColumn_get(int iTable, int iField, float &field, int) { field = float(gfnField_real(iTable, iField)); }
void gpColumn_get(int iTable, int iField, Money &field, int) { field = gfcField_money(iTable, iField); }
void gpColumn_get(int iTable, int iField, QDateTime &field, int) { field = gfdField_date(iTable, iField); }

void gpColumn_set(int iTable, int iField, const QString &field) { gpDB_FieldSet(iTable, iField, field); }
void gpColumn_set(int iTable, int iField, qint16 field) { gpDB_FieldSet(iTable, iField, int(field)); }
void gpColumn_set(int iTable, int iField, qint32 field) { gpDB_FieldSet(iTable, iField, field); }
void gpColumn_set(int iTable, int iField, float field) { gpDB_FieldSet(iTable, iField, double(field)); }
void gpColumn_set(int iTable, int iField, Money field) { gpDB_FieldSet(iTable, iField, field.toPlainText()); }
void gpColumn_set(int iTable, int iField, const QDateTime &field) { gpDB_FieldSet(iTable, iField, field); }

void gpColumn_value(ValueList &values, QString &field, int width, QuoteRule rule)
{
    if (rule == QuoteRule::Blank) // no apostrophe is left for the doubling to find
        field = gfsDB_Quote(field, false, width);
    values.text(field, width);
}
void gpColumn_value(ValueList &values, qint16 field, int, QuoteRule) { values.number(field); }
void gpColumn_value(ValueList &values, qint32 field, int, QuoteRule) { values.number(field); }
void gpColumn_value(ValueList &values, float field, int, QuoteRule) { values.real(field); }
void gpColumn_value(ValueList &values, Money field, int, QuoteRule) { values.money(field); }
void gpColumn_value(ValueList &values, const QDateTime &field, int, QuoteRule) { values.date(field); }

} // namespace qln
