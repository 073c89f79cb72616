#pragma once
#include <QHash>
#include <QString>

// The departments of the suite: codes of three levels "DDD.CCC.SSS", "000" for a level not in
// use, and the composed names of their levels.
namespace qln {

constexpr int kDeptTable = 5;

struct DeptRecord {
    QString DeptCode;   // 11
    QString Department; // 20
    QString TaxCode;    // 1
    float Margin = 0;
    QString Discount;  // 3
    QString Poll;      // 1
    QString VerifyAge; // 1
    QString Spare1;    // 10
    QString CheckAge;  // 2
    QString SaleComm;  // 5
    QString Spare2;    // 33
    qint16 Printer = -1;
};

inline DeptRecord gDept;

// Registers the table, installs its routines, and creates it with its one default row when missing.
void gpDept_Open(int iTable, const QString &sPath);
void gpDept_key(int iTable, int iKey);
void gpDept_read(int iTable);
void gpDept_write(int iTable);
QString gfsDept_values();

// The three groups of a code. False for a code without both points, which the suite's
// callers met as a run-time error; the groups are then left as they were.
bool gpDept_Split(const QString &sCode, QString &sLevel1, QString &sLevel2, QString &sLevel3);
// 3, 2 or 1 by the groups in use; 0 for a code that does not split.
int gfiDept_Level(const QString &sCode);
// The code and the names of its levels, each level read from the table; a missing parent is
// left out. bCodeOnly: the code alone. bShort: a narrow form for third-level departments.
// The buffer is left on the code asked for.
QString gfsDept_Name(const QString &sCode, bool bCodeOnly = false, bool bShort = false);

// The department table read by one statement, for a list that composes the names of many
// codes: a code then costs no statement. A code only the server can compare as it does
// (anything but plain ASCII, an apostrophe) goes to the keyed read, and so does every code
// when the table holds such a code or the statement was refused.
class DeptTable {
public:
    void read();
    // As the keyed read of a code: the buffer takes the code, cut or padded to its width,
    // then the row when there is one. True when found.
    bool find(const QString &sCode) const;

private:
    QHash<QString, DeptRecord> m_rows; // by code without its trailing blanks, upper-cased
    bool m_read = false;
};
// The same as above, each level found in `table`; the buffer ends as the keyed reads leave it.
QString gfsDept_Name(const QString &sCode, const DeptTable &table);

} // namespace qln
