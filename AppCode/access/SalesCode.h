#pragma once
#include <QDateTime>
#include <QString>
#include <QStringList>

// The users of the suite: one row of SalesCode per person and store, with the password,
// the rights, and the log of logins in LogInSec.
namespace qln {

// The two tables take the spare slots at the end of the registry.
constexpr int kSalesCodeTable = 8;
constexpr int kLogInSecTable = 9;

struct SalesCodeRecord {
    qint32 UserID = 0;
    QString SalesCode;   // 8
    qint16 StoreNumber = 0;
    QString ShortCut;    // 8: a second code that stands for SalesCode at login
    QString FullName;    // 30
    QString Password;    // 65: enciphered as hexadecimal text; blank for none
    QString Commission;  // 8
    QString Permissions; // 250: one character a right, "Y" granted
    QString ARCode;      // 15
    QString StaffDept;   // 25
    QString LastPwd, Last2ndPwd, Last3rdPwd, Last4thPwd; // 65 each, enciphered as Password
    QDateTime ResetPwdDate; // the password expires on this day
    QString Status;      // 1: "I" locked
    qint16 ResetQ1 = 0;
    QString QA1;         // 20
    qint16 ResetQ2 = 0;
    QString QA2;
    qint16 ResetQ3 = 0;
    QString QA3;
};

inline SalesCodeRecord gSalesCode;

// Registers the table, creates it when missing, and adds the reset columns to an old one
// once it is open (see gfbAccess_tables_open).
void gpSalesCode_Open(int iTable, const QString &sPath);
// Keys: 0 UserID; 1 SalesCode and StoreNumber; 2 ShortCut and StoreNumber.
void gpSalesCode_key(int iTable, int iKey);
void gpSalesCode_read(int iTable);
void gpSalesCode_write(int iTable);
QString gfsSalesCode_values();
// A blank record: every text at its width.
void gpSalesCode_clear();
// A text as the record's SalesCode column holds it.
QString gfsSalesCode_fitted(const QString &sCode);

// Registers and opens SalesCode and LogInSec when they are not open yet; an old SalesCode
// gets its reset columns. False when either cannot be opened.
bool gfbAccess_tables_open();

// Fetches the code's row of the store on key 1 into the buffer; the rights string is
// kept, or is all "N" when the row can't be read.
void gpSalesCode_Read(const QString &sCode, const QString &sStore);
// True when the code (the current user when empty) has "Y" at position iRight (from 1) of
// its rights in the home store. The row is read afresh each time.
bool gfbSalesCode_Permission(int iRight, const QString &sSalesCode = QString());

// The clear password of the stored field for the row in the buffer, empty when none of
// the row's keys fits. A password found under an older key is enciphered again under the
// current one, in the buffer and in the table.
QString gfsPassword_Decode(const QString &sStored);

// Whether the stored field, right-trimmed, has text at positions 39 to 53: the mark of a
// password written in the longer form (more than one cipher block).
bool gfbPassword_LongForm(const QString &sStored);

// The previous four passwords of the row in the buffer, in clear; empty where none fits.
QStringList gfaPassword_History();

// Longest password the Password column can hold enciphered.
constexpr int kPasswordMaxLength = 14;
// Days a new password lasts before the strong rule asks for another.
constexpr int kPasswordLifeDays = 90;
// Enciphers a new password into the code's row, moves the older ones along the history and
// sets the expiry. False when the row can't be read or written, or the password is longer
// than the column holds.
bool gfbSalesCode_Password_set(const QString &sCode, const QString &sStore, const QString &sClear);

// Locks the code: its Status becomes "I".
void gpSalesCode_lock(const QString &sCode, const QString &sStore);

} // namespace qln
