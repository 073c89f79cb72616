#pragma once
#include <QDateTime>
#include <QString>

// The log of login tries in the table LogInSec.
namespace qln {

struct LogInSecRecord {
    QDateTime aDate;
    QDateTime aTime;
    QString SalesCode; // 8
    QString Detail;    // 20
    QString Result;    // 1: "F" failed, "I" locked out
    qint32 ID = 0;
    qint16 Station = 0;
    QString Spare;     // 10
};

inline LogInSecRecord gLogInSec;

void gpLogInSec_Open(int iTable, const QString &sPath);
// Keys: 1 ID; 2 aDate, SalesCode, ID; 3 SalesCode, aDate, ID; 4 aDate, aTime, ID.
void gpLogInSec_key(int iTable, int iKey);
void gpLogInSec_read(int iTable);
void gpLogInSec_write(int iTable);
QString gfsLogInSec_values();
// A record with every text at its width.
void gpLogInSec_clear();

} // namespace qln
