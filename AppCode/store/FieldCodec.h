#pragma once
#include "common/Money.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>

// What every table module does to move a record: the decoder's reads from the current row,
// the encoder's writes, and the pieces of an INSERT value list.
namespace qln {

// Day zero of the platform's dates: an empty date field.
QDateTime gfdDate_zero();

// Decoder reads; null reads as blank, 0 or day zero.
QString gfsField_text(int iTable, int iField, int iWidth); // left-aligned, blank padded, cut
void gpField_text_read(int iTable, int iField, int iWidth, QString &into); // the same, into a field
qint32 gfiField_number(int iTable, int iField);
Money gfcField_money(int iTable, int iField);
double gfnField_real(int iTable, int iField);
QDateTime gfdField_date(int iTable, int iField);
bool gfbField_isNull(int iTable, int iField);

// Dates in inserts and keys: "YYYYMMDD HH:MM:SS".
QString gfsDate_keyText(const QDateTime &date);

// Builds "VALUES(...)" text in column order.
class ValueList {
public:
    // A text field goes through the quote escaping, which the buffer keeps.
    ValueList &text(QString &field, int width);
    ValueList &number(qint64 value);
    ValueList &money(Money value, int decimals = 4);
    ValueList &real(double value);
    ValueList &date(const QDateTime &value);
    QString joined() const { return m_items.join(QLatin1Char(',')); }

private:
    QStringList m_items;
};

} // namespace qln
