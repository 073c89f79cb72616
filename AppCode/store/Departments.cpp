#include "store/Departments.h"

#include "common/Numbers.h"
#include "platform/Recordset.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/RowsDecode.h"
#include "store/TableLayout.h"

#include <functional>

namespace qln {

namespace {

using D = DeptRecord;

const TableLayout<D> &layout()
{
    static const TableLayout<D> columns = {
        {"DeptCode", "CHAR (11) NOT NULL", &D::DeptCode}, {"Department", "CHAR (20)", &D::Department},
        {"TaxCode", "CHAR (1)", &D::TaxCode},             {"Margin", "REAL", &D::Margin},
        {"Discount", "CHAR (3)", &D::Discount},           {"Poll", "CHAR (1)", &D::Poll},
        {"VerifyAge", "CHAR (1)", &D::VerifyAge},         {"Spare1", "CHAR (10)", &D::Spare1},
        {"CheckAge", "CHAR (2)", &D::CheckAge},           {"SaleComm", "CHAR (5)", &D::SaleComm},
        {"Spare2", "CHAR (33)", &D::Spare2},              {"Printer", "SMALLINT DEFAULT -1", &D::Printer},
    };
    return columns;
}

void insertDefaultRow(int iTable)
{
    gDept = DeptRecord();
    gDept.DeptCode = QStringLiteral("001.000.000");
    gDept.Department = QStringLiteral("General");
    gDept.Margin = 10.0f;
    gDept.Poll = QStringLiteral("Y");
    gDept.SaleComm = QStringLiteral(" ");
    gfbDB_RecordOp(iTable, kOpInsert, 1);
}

// Puts a code in the buffer, as wide as the field, and reads it on the code key.
bool findCode(const QString &code)
{
    gDept.DeptCode = layout().fitted(&D::DeptCode, code);
    return gfbDB_RecordOp(kDeptTable, kOpEqual, 1);
}

// A code the table and the engine compare alike: trailing blanks and letter case aside, the
// same characters. The keyed read's text changes an apostrophe and the letters "ItemID".
bool plainCode(const QString &code)
{
    for (const QChar c : code)
        if (c.unicode() < 0x20 || c.unicode() > 0x7E || c == QLatin1Char('\''))
            return false;
    return !code.contains(QLatin1String("ItemID"));
}

QString codeKey(const QString &code)
{
    qsizetype n = code.size();
    while (n > 0 && code.at(n - 1) == QLatin1Char(' '))
        --n;
    return code.left(n).toUpper();
}

// The composed name, each level found by `find`.
QString composeName(const QString &sCode, bool bCodeOnly, bool bShort, const std::function<bool(const QString &)> &find)
{
    const QString code = sCode.trimmed();
    const QString zeros = QStringLiteral("000");
    qsizetype first = code.indexOf(QLatin1Char('.'));
    if (first < 0)
        first = code.size();
    const qsizetype second = code.indexOf(QLatin1Char('.'), first + 1);

    QString name1, name2, name3;
    if (find(code.left(first) + QStringLiteral(".000.000")))
        name1 = gDept.Department.trimmed();
    if (second >= 0 && code.mid(first + 1, 3) != zeros && find(code.left(second) + QStringLiteral(".000")))
        name2 = QStringLiteral(" - ") + gDept.Department.trimmed();
    // With no second point this looks at the first three characters: "002" is tried as a code.
    if (code.mid(second + 1, 3) != zeros && find(code))
        name3 = QStringLiteral(" - ") + gDept.Department.trimmed();

    if (name1.isEmpty())
        return QString();
    const QString shown = gDept.DeptCode.trimmed();
    if (bCodeOnly)
        return shown;
    if (bShort && !name3.isEmpty())
        return name1.left(5) + QStringLiteral(" -") + name2.mid(1, 5) + name3;
    return shown + QLatin1Char(' ') + name1 + name2 + name3;
}

} // namespace

void DeptTable::read()
{
    m_rows.clear();
    m_read = false;
    auto rows = std::make_unique<Recordset>();
    // Not logged when refused: the text is none of the program's, and the keyed reads that
    // stand in for it log their own.
    if (!rows->open(dbConnection(), QStringLiteral("SELECT * FROM ") + dbuaTable[kDeptTable].sSqlFile))
        return;
    const DeptRecord held = gDept;
    bool plain = true;
    gpDB_rows_decode(kDeptTable, rows, [&] {
        plain = plain && plainCode(gDept.DeptCode);
        const QString key = codeKey(gDept.DeptCode);
        if (!m_rows.contains(key))
            m_rows.insert(key, gDept);
    });
    gDept = held;
    m_read = plain;
    if (!plain)
        m_rows.clear();
}

bool DeptTable::find(const QString &sCode) const
{
    const QString code = layout().fitted(&D::DeptCode, sCode);
    if (!m_read || !plainCode(code))
        return findCode(sCode);
    gDept.DeptCode = code;
    const auto row = m_rows.constFind(codeKey(code));
    if (row == m_rows.constEnd())
        return false;
    gDept = *row;
    return true;
}

QString gfsDept_Name(const QString &sCode, const DeptTable &table)
{
    return composeName(sCode, false, false, [&](const QString &code) { return table.find(code); });
}

void gpDept_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("DepartmentNew"), QStringLiteral("Departments"),
                        QStringLiteral("Departments"), QStringLiteral("DEPARMENT"));
    gpDB_table_routines_set(iTable, {gpDept_key, gpDept_read, gpDept_write, gfsDept_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create UNIQUE  CLUSTERED Index idx_1", t, "DeptCode");
    if (gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes) && !gbDBBulkLoad)
        insertDefaultRow(iTable);
}

void gpDept_key(int iTable, int iKey)
{
    const int code = layout().ordinal(&D::DeptCode), name = layout().ordinal(&D::Department);
    switch (iKey) {
    case 0: gpDB_KeySet(iTable, 2, {{code, gDept.DeptCode}, {name, gDept.Department}}); break;
    case 1: gpDB_KeySet(iTable, 1, {{code, gDept.DeptCode}}); break;
    default: break;
    }
}

void gpDept_read(int iTable)
{
    layout().read(iTable, gDept);
    // A printer is a number from 0; null and anything below mean none.
    if (gfbField_isNull(iTable, layout().ordinal(&D::Printer)) || gDept.Printer < 0)
        gDept.Printer = -1;
}

void gpDept_write(int iTable) { layout().write(iTable, gDept); }

// Unlike the other tables, an apostrophe in a name goes in as a blank.
QString gfsDept_values() { return layout().values(gDept, QuoteRule::Blank); }

bool gpDept_Split(const QString &sCode, QString &sLevel1, QString &sLevel2, QString &sLevel3)
{
    const QString code = sCode.trimmed();
    const qsizetype first = code.indexOf(QLatin1Char('.'));
    const qsizetype second = first < 0 ? -1 : code.indexOf(QLatin1Char('.'), first + 1);
    if (second < 0)
        return false;
    sLevel1 = code.left(first);
    sLevel2 = code.mid(first + 1, second - first - 1);
    sLevel3 = code.mid(second + 1);
    return true;
}

int gfiDept_Level(const QString &sCode)
{
    QString level1, level2, level3;
    if (!gpDept_Split(sCode, level1, level2, level3))
        return 0;
    const bool second = gfdNumber_value(level2) != 0, third = gfdNumber_value(level3) != 0;
    return second && third ? 3 : second ? 2 : 1;
}

QString gfsDept_Name(const QString &sCode, bool bCodeOnly, bool bShort)
{
    return composeName(sCode, bCodeOnly, bShort, findCode);
}

} // namespace qln
