#include "store/FieldCodec.h"

#include "platform/Recordset.h"
#include "store/RecordOps.h"

namespace qln {

QDateTime gfdDate_zero() { return QDateTime(QDate(1899, 12, 30), QTime(0, 0)); }

void gpField_text_read(int iTable, int iField, int iWidth, QString &into)
{
    if (const Recordset *rs = gfrsDB_Current(iTable))
        rs->readText(iField, iWidth, into);
    else
        into = QString().leftJustified(iWidth, QLatin1Char(' '), true);
}

QString gfsField_text(int iTable, int iField, int iWidth)
{
    QString text;
    gpField_text_read(iTable, iField, iWidth, text);
    return text;
}

qint32 gfiField_number(int iTable, int iField)
{
    const Recordset *rs = gfrsDB_Current(iTable);
    return rs ? rs->readInteger(iField) : 0;
}

Money gfcField_money(int iTable, int iField)
{
    const Recordset *rs = gfrsDB_Current(iTable);
    return rs ? rs->readMoney(iField) : Money();
}

double gfnField_real(int iTable, int iField)
{
    const Recordset *rs = gfrsDB_Current(iTable);
    return rs ? rs->readReal(iField) : 0;
}

QDateTime gfdField_date(int iTable, int iField)
{
    const Recordset *rs = gfrsDB_Current(iTable);
    const QDateTime value = rs ? rs->readDate(iField) : QDateTime();
    return value.isValid() ? value : gfdDate_zero();
}

bool gfbField_isNull(int iTable, int iField) { return gfvDB_FieldGet(iTable, iField).isNull(); }

QString gfsDate_keyText(const QDateTime &date)
{
    return (date.isValid() ? date : gfdDate_zero()).toString(QStringLiteral("yyyyMMdd HH:mm:ss"));
}

ValueList &ValueList::text(QString &field, int width)
{
    field = gfsDB_Quote(field, true, width);
    m_items << QLatin1Char('\'') + field + QLatin1Char('\'');
    return *this;
}

ValueList &ValueList::number(qint64 value)
{
    m_items << QString::number(value);
    return *this;
}

ValueList &ValueList::money(Money value, int decimals)
{
    m_items << value.toPlainText(decimals);
    return *this;
}

ValueList &ValueList::real(double value)
{
    m_items << QString::number(value, 'g', 15);
    return *this;
}

ValueList &ValueList::date(const QDateTime &value)
{
    m_items << QLatin1Char('\'') + gfsDate_keyText(value) + QLatin1Char('\'');
    return *this;
}

} // namespace qln
