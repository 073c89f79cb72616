#include "StoreFixture.h"

#include "store/Departments.h"

#include <QFile>
#include <QRandomGenerator>

using namespace qln;
using namespace qln::test;

namespace {

class DepartmentTable : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpDept_Open(kDeptTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kDeptTable));
    }
    void add(const char *code, const char *name)
    {
        gDept = DeptRecord();
        gDept.DeptCode = QString::fromUtf8(code);
        gDept.Department = QString::fromUtf8(name);
        ASSERT_TRUE(gfbDB_RecordOp(kDeptTable, kOpInsert, 1)) << gsDBLastError.toStdString();
    }
    bool find(const char *code)
    {
        gDept = DeptRecord();
        gDept.DeptCode = QString::fromUtf8(code);
        return gfbDB_RecordOp(kDeptTable, kOpEqual, 1);
    }
};

} // namespace

TEST_F(DepartmentTable, IsCreatedWithTheGeneralDepartmentOnlyOnce)
{
    EXPECT_EQ(dbuaTable[kDeptTable].sCreateSql,
              QStringLiteral("Create Table Departments (DeptCode CHAR (11) NOT NULL, Department CHAR (20) DEFAULT  ' ', "
                             "TaxCode CHAR (1) DEFAULT  ' ', Margin REAL, Discount CHAR (3) DEFAULT  ' ', Poll CHAR (1) "
                             "DEFAULT  ' ', VerifyAge CHAR (1) DEFAULT  ' ', Spare1 CHAR (10) DEFAULT  ' ', CheckAge CHAR (2) "
                             "DEFAULT  ' ', SaleComm CHAR (5) DEFAULT  ' ', Spare2 CHAR (33) DEFAULT  ' ', Printer SMALLINT "
                             "DEFAULT -1);"));
    EXPECT_EQ(dbuaTable[kDeptTable].sIndexSql, QStringLiteral("Create UNIQUE  CLUSTERED Index idx_1 On Departments (DeptCode);"));

    ASSERT_TRUE(find("001.000.000"));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM Departments WHERE DeptCode='001.000.000' ORDER BY DeptCode"));
    EXPECT_EQ(gDept.Department, QStringLiteral("General").leftJustified(20));
    EXPECT_EQ(gDept.Margin, 10.0f);
    EXPECT_EQ(gDept.Poll, QStringLiteral("Y"));
    EXPECT_EQ(gDept.TaxCode, QStringLiteral(" "));
    EXPECT_EQ(gDept.Printer, -1);

    gpDept_Open(kDeptTable, gsDataPath);
    EXPECT_EQ(gfiDB_RecordCount(kDeptTable), 1) << "an existing table gets no second default row";
    EXPECT_FALSE(QFile::exists(db.file(QStringLiteral("PVSW.log"))));
}

TEST_F(DepartmentTable, KeysPrinterAndApostrophesOnTheWayIn)
{
    add("002.000.000", "Men's");
    ASSERT_TRUE(find("002.000.000"));
    EXPECT_EQ(gDept.Department.trimmed(), QStringLiteral("Men s")) << "an apostrophe goes in as a blank";

    ASSERT_TRUE(dbConnection().execute(QStringLiteral("UPDATE Departments SET Printer = 3 WHERE DeptCode = '002.000.000'")));
    ASSERT_TRUE(find("002.000.000"));
    EXPECT_EQ(gDept.Printer, 3);
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("UPDATE Departments SET Printer = NULL WHERE DeptCode = '002.000.000'")));
    ASSERT_TRUE(find("002.000.000"));
    EXPECT_EQ(gDept.Printer, -1) << "no printer reads as -1, not 0";

    ASSERT_TRUE(find("001.000.000"));
    ASSERT_TRUE(gfbDB_RecordOp(kDeptTable, kOpGreater, 0));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM Departments WHERE DeptCode>'001.000.000' AND "
                                             "Department>'General             ' ORDER BY DeptCode"));
    EXPECT_EQ(gDept.DeptCode, QStringLiteral("002.000.000"));
    EXPECT_FALSE(gfbDB_RecordOp(kDeptTable, kOpGetNext, 1)) << "002 is the last code";
}

TEST_F(DepartmentTable, NamesComposeFromTheLevelsFound)
{
    add("002.000.000", "Clothing");
    add("002.010.000", "Shoes");
    add("002.010.020", "Boots");
    add("002.030.040", "Socks"); // its parent 002.030.000 is missing

    EXPECT_EQ(gfsDept_Name(QStringLiteral("001.000.000")), QStringLiteral("001.000.000 General"));
    EXPECT_EQ(gfsDept_Name(QStringLiteral(" 002.010.000 ")), QStringLiteral("002.010.000 Clothing - Shoes"));
    EXPECT_EQ(gfsDept_Name(QStringLiteral("002.010.020")), QStringLiteral("002.010.020 Clothing - Shoes - Boots"));
    EXPECT_EQ(gfsDept_Name(QStringLiteral("002.030.040")), QStringLiteral("002.030.040 Clothing - Socks"));
    EXPECT_EQ(gDept.DeptCode, QStringLiteral("002.030.040")) << "the buffer is left on the code asked for";
    EXPECT_EQ(gfsDept_Name(QStringLiteral("002.010.099")), QStringLiteral("002.010.099 Clothing - Shoes"));
    EXPECT_EQ(gfsDept_Name(QStringLiteral("002.010.020"), true), QStringLiteral("002.010.020"));

    EXPECT_EQ(gfsDept_Name(QStringLiteral("002.010.020"), false, true), QStringLiteral("Cloth -- Sho - Boots"));
    EXPECT_EQ(gfsDept_Name(QStringLiteral("002.030.040"), false, true), QStringLiteral("Cloth - - Socks"));
    EXPECT_EQ(gfsDept_Name(QStringLiteral("002.010.000"), false, true), QStringLiteral("002.010.000 Clothing - Shoes"))
        << "the short form is for third levels only";

    EXPECT_EQ(gfsDept_Name(QString()), QString());
    EXPECT_EQ(gfsDept_Name(QStringLiteral("009.010.020")), QString()) << "no first level, no name";
    EXPECT_EQ(gfsDept_Name(QStringLiteral("002")), QStringLiteral("002 Clothing"));
}

TEST(DepartmentCode, SplitsIntoThreeGroupsAndTellsItsLevel)
{
    QString a, b, c;
    ASSERT_TRUE(gpDept_Split(QStringLiteral(" 001.020.300 "), a, b, c));
    EXPECT_EQ(strings({"001", "020", "300"}), QStringList({a, b, c}));
    ASSERT_TRUE(gpDept_Split(QStringLiteral("000.000.000"), a, b, c));
    EXPECT_EQ(strings({"000", "000", "000"}), QStringList({a, b, c}));
    EXPECT_FALSE(gpDept_Split(QStringLiteral("001.002"), a, b, c));

    EXPECT_EQ(gfiDept_Level(QStringLiteral("000.000.000")), 1);
    EXPECT_EQ(gfiDept_Level(QStringLiteral("001.000.000")), 1);
    EXPECT_EQ(gfiDept_Level(QStringLiteral("001.002.000")), 2);
    EXPECT_EQ(gfiDept_Level(QStringLiteral("001.002.003")), 3);
    EXPECT_EQ(gfiDept_Level(QStringLiteral("001.000.003")), 1) << "a third group under no second counts for nothing";
    EXPECT_EQ(gfiDept_Level(QStringLiteral("001")), 0);
}

// Names composed from the table read once must be those of the keyed reads, and leave the
// buffer as they do: codes in other case, with trailing blanks, missing parents, codes with
// no points, an apostrophe; and a table holding a code only the server compares, which sends
// every code to the keyed reads.
TEST_F(DepartmentTable, NamesFromTheTableReadOnceAreTheKeyedReadsNames)
{
    QRandomGenerator random(20261123);
    const QStringList groups = {QStringLiteral("001"), QStringLiteral("000"), QStringLiteral("00a"), QStringLiteral("00A"),
                                QStringLiteral("000"), QStringLiteral("01-"), QStringLiteral("0'1")};
    auto pick = [&](const QStringList &from) { return from[random.bounded(int(from.size()))]; };
    auto code = [&] {
        switch (random.bounded(8)) {
        case 0: return pick(groups);
        case 1: return pick(groups) + QLatin1Char('.') + pick(groups);
        case 2: return QLatin1Char(' ') + pick(groups) + QLatin1Char('.') + pick(groups) + QLatin1Char('.') + pick(groups);
        default: return pick(groups) + QLatin1Char('.') + pick(groups) + QLatin1Char('.') + pick(groups);
        }
    };
    int composed = 0;
    for (int round = 0; round < 8; ++round) {
        ASSERT_TRUE(dbConnection().execute(QStringLiteral("DELETE FROM Departments")));
        const int rows = random.bounded(0, 40);
        QStringList present;
        for (int r = 0; r < rows; ++r) {
            gDept = DeptRecord();
            // Every other row a first level, so that names are found.
            gDept.DeptCode = r % 2 ? code() : pick(groups) + QStringLiteral(".000.000");
            present << gDept.DeptCode;
            if (round == 7 && r == 0)
                gDept.DeptCode = QStringLiteral("001.\u00e9.000");
            gDept.Department = QStringLiteral("Name ") + QString::number(r) + (r % 3 ? QStringLiteral("  ") : QString());
            gfbDB_RecordOp(kDeptTable, kOpInsert, 1); // a code already there under the collation is refused
        }
        DeptTable table;
        table.read();
        for (int probe = 0; probe < 25; ++probe) {
            const QString asked = (present.isEmpty() || random.bounded(2) ? code() : pick(present)) +
                                  (random.bounded(2) ? QStringLiteral(" ") : QString());
            const QString lower = random.bounded(2) ? asked.toLower() : asked;
            gDept = DeptRecord();
            const QString keyed = gfsDept_Name(lower);
            const QString keyedBuffer = gfsDept_values();
            gDept = DeptRecord();
            const QString read = gfsDept_Name(lower, table);
            ASSERT_EQ(read, keyed) << "round " << round << ": " << lower.toStdString();
            ASSERT_EQ(gfsDept_values(), keyedBuffer) << "round " << round << ": " << lower.toStdString();
            composed += !keyed.isEmpty();
        }
    }
    EXPECT_GT(composed, 40) << "the rounds must find names, not only miss";
}
