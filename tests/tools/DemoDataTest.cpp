#include "DemoData.h"

#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "promo/PromoPricing.h"
#include "shell/Tables.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QCryptographicHash>
#include <QDir>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

class DemoData : public ::testing::Test {
protected:
    void SetUp() override { Clock::setFixed(QDateTime(QDate(2026, 11, 22), QTime(9, 0))); }
    void TearDown() override
    {
        dbaRecordset.clear();
        dbConnection().close();
        Clock::setFixed(QDateTime());
    }
    demo::DemoOptions options(int items) const { return demo::gfDemo_options(db.info(), db.dataPath(), items); }
    // One number per question, the way a user of the data set would ask it.
    int count(const QString &where, const QString &table = QStringLiteral("PromoPrices"))
    {
        Recordset rs;
        EXPECT_TRUE(rs.open(dbConnection(), QStringLiteral("SELECT COUNT(*) FROM ") + table + QStringLiteral(" WHERE ") + where))
            << rs.lastError().description.toStdString();
        return rs.recordCount() ? rs.value(0).toInt() : -1;
    }
    QString digest(const QString &sql)
    {
        Recordset rs;
        EXPECT_TRUE(rs.open(dbConnection(), sql));
        QCryptographicHash hash(QCryptographicHash::Sha256);
        for (rs.moveFirst(); !rs.eof(); rs.moveNext())
            for (int i = 0; i < rs.fieldCount(); ++i)
                hash.addData(rs.value(i).toString().toUtf8());
        return QString::fromLatin1(hash.result().toHex());
    }

    TestDatabase db;
    ScriptedMessages boxes;
};

} // namespace

TEST_F(DemoData, HoldsEveryKindOfRowTheProgramMeets)
{
    demo::DemoReport report;
    QString error;
    ASSERT_TRUE(demo::gfbDemo_build(options(700), report, error)) << error.toStdString();
    EXPECT_EQ(report.items, 700);
    EXPECT_EQ(count(QStringLiteral("1=1"), QStringLiteral("invt1")), 700);
    EXPECT_GT(count(QStringLiteral("AllowDiscounts = 'N'"), QStringLiteral("invt1")), 0);
    EXPECT_GT(count(QStringLiteral("Status = 'D'"), QStringLiteral("invt1")), 0);
    EXPECT_EQ(count(QStringLiteral("RecordNum <= 10"), QStringLiteral("invt1")), 0) << "item numbers start above ten";
    EXPECT_GT(count(QStringLiteral("DeptCode LIKE '___.___.00_' AND DeptCode NOT LIKE '%.000'"), QStringLiteral("Departments")), 0);
    EXPECT_GT(count(QStringLiteral("GroupID = 0 AND Invuid > 10"), QStringLiteral("PromoPrices")), 0) << "item promos";
    EXPECT_GT(count(QStringLiteral("Invuid = 0 AND Dept > ' '")), 0) << "department promos";
    EXPECT_GT(count(QStringLiteral("GroupID BETWEEN 1 AND 999")), 0) << "group promos";
    EXPECT_GT(count(QStringLiteral("GroupID > 1000")), 0) << "matrix promos";
    EXPECT_GT(count(QStringLiteral("GroupID < 0 AND SL = ' '")), 0) << "daily promos";
    EXPECT_GT(count(QStringLiteral("ChangeType = 99")), 0) << "tombstones";
    EXPECT_GT(count(QStringLiteral("EndDate < '2026-11-22 00:00:00'")), 0) << "expired rows";
    EXPECT_EQ(count(QStringLiteral("1=1"), QStringLiteral("MtxItem")), report.matrices * 12);
    EXPECT_TRUE(QFile::exists(QDir(db.dataPath()).filePath(QStringLiteral("Groups.QLN"))));
    EXPECT_TRUE(QFile::exists(QDir(db.dataPath()).filePath(QStringLiteral("Country.set"))));
    EXPECT_FALSE(QFile::exists(QDir(db.dataPath()).filePath(QStringLiteral("PVSW.log")))) << "nothing was refused";

    // The program opens it as it is, all eight tables in order.
    gsDataPath = db.dataPath();
    dbConnection().close();
    ASSERT_TRUE(gfbTables_open());
    EXPECT_EQ(giStore, 1);
    EXPECT_TRUE(gfbTables_recordsets_open(0));
    for (int t = 0; t < 8; ++t)
        EXPECT_TRUE(dbuaTable[t].bOpen) << t;
    EXPECT_EQ(dbuaTable[1].sSqlFile, QStringLiteral("invt1"));
    EXPECT_TRUE(boxes.shown().isEmpty());
}

TEST_F(DemoData, TheSameSeedGivesTheSameDataSet)
{
    demo::DemoReport report;
    QString error;
    const QString items = QStringLiteral("SELECT * FROM invt1 ORDER BY RecordNum");
    const QString promos = QStringLiteral("SELECT * FROM PromoPrices ORDER BY UniqueID");
    ASSERT_TRUE(demo::gfbDemo_build(options(150), report, error)) << error.toStdString();
    const QString first = digest(items) + digest(promos);
    dbConnection().close();
    ASSERT_TRUE(demo::gfbDemo_build(options(150), report, error)) << error.toStdString();
    EXPECT_EQ(digest(items) + digest(promos), first);
}

TEST_F(DemoData, ACompanyTableWithoutItsRowStopsTheOpen)
{
    demo::DemoReport report;
    QString error;
    ASSERT_TRUE(demo::gfbDemo_build(options(20), report, error)) << error.toStdString();
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("DELETE FROM COMMON")));
    gsDataPath = db.dataPath();
    dbConnection().close();
    EXPECT_FALSE(gfbTables_open());
    for (int t = 1; t < 8; ++t)
        EXPECT_TRUE(dbuaTable[t].sSqlFile.isEmpty()) << "table " << t << " stays unregistered";
}
