#pragma once
#include <QString>
#include <QVariantList>

// The names of the suite (customers and the like), as the names lookup reads them. This
// program writes none; it registers the table, under the number the lookup gives it, so that
// the keyed operations reach it as they reach any other.
namespace qln {

class RowSink;

constexpr int kNamesTable = 99;

// The fields' numbers in the suite's name record, as the lookup's columns give them. The
// table holds only these, each at its number but the phone, which the suite keeps far behind.
enum NameField : int {
    kNameARCode = 1, kNameBusiness = 2, kNameLastName = 3, kNameZip = 4, kNameMail = 5, kNameFirstName = 6,
    kNameAddress = 7, kNameCity = 8, kNameState = 9, kNamePhone = 51,
};

// A fresh record is the blank buffer: every text blank padded to its width.
struct NameRecord {
    static QString blank(int width) { return QString(width, QLatin1Char(' ')); }

    QString DeleteFlag = blank(1); // "D": deleted, never listed
    QString ARCode = blank(15);
    QString Business = blank(40);
    QString LastName = blank(25);
    QString Zip = blank(10);
    QString Mail = blank(4);
    QString FirstName = blank(20);
    QString Address = blank(40);
    QString City = blank(25);
    QString STATE = blank(2);
    QString PhoneIndex = blank(15);
};

inline NameRecord gName;

// Registers the table at iTable (the registry grows to hold it), installs its routines, and
// creates it when missing.
void gpNames_Open(int iTable, const QString &sPath);
// Keys, each closed by the A/R code so that a walk is unique: 1 ARCode; 2 LastName,
// FirstName; 3 Zip; 4 Mail; 5 Business; 7 FirstName; 9 PhoneIndex.
void gpNames_key(int iTable, int iKey);
void gpNames_read(int iTable);
void gpNames_write(int iTable);
QString gfsNames_values();
void gpNames_row_put(RowSink &sink);

// The buffer's values at their field numbers (blank where the record has none).
QVariantList gfaNames_image();
// The table's column of a field number; -1 for one the table lacks.
int gfiNames_column(int iField);
// A text as a field of the buffer holds it: cut or blank padded to the field's width.
QString gfsNames_fitted(QString NameRecord::*field, const QString &text);

} // namespace qln
