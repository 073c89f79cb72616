// Matrix promos without a window: the lists of matrices, the walk of a matrix's items, the
// expansion into one row per item, and the change and removal of a promo's rows.
#include "promo/MatrixPromos.h"

#include "DemoData.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "promo/PromoList.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/Inventory.h"
#include "store/MatrixGroups.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2025, 5, 14);

class MatrixPromos : public ::testing::Test {
protected:
    void SetUp() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime(kToday, QTime(10, 30)));
        gsAppPath = program.path();
        demo::DemoOptions o = demo::gfDemo_options(db.info(), db.dataPath(), 300); // three matrices of 12
        o.promos = 0;
        demo::DemoReport report;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(o, report, error)) << error.toStdString();
        ASSERT_EQ(report.matrices, 3);
        gpProcess_reset();
        ASSERT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db.dataPath()));
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
        gCommon.MultiStore = QStringLiteral(" ");
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    static void addMatrix(qint32 uid, const QString &name, qint16 exists, qint16 built)
    {
        gMatrixGroups = MatrixGroupRecord();
        gMatrixGroups.GroupUID = uid, gMatrixGroups.GroupName = name.leftJustified(32);
        gMatrixGroups.InvUID = 5000 + uid, gMatrixGroups.ItemID = QStringLiteral("MTX%1").arg(uid).leftJustified(15);
        gMatrixGroups.MatrixExists = exists, gMatrixGroups.MatrixBuilt = built;
        ASSERT_TRUE(gfbDB_RecordOp(kMatrixGroupsTable, kOpInsert));
    }
    static void addMember(qint32 invuid, qint32 uid, int pos)
    {
        gMtxItem = MtxItemRecord();
        gMtxItem.InvUID = invuid, gMtxItem.MatrixGroupUID = uid;
        gMtxItem.xAxisValue = QStringLiteral("V%1").arg(pos), gMtxItem.xpos = qint16(pos);
        ASSERT_TRUE(gfbDB_RecordOp(kMtxItemTable, kOpInsert));
    }
    static void addPromo(qint32 groupID, const QString &sl, qint32 invuid, QDate start, QDate end, qint32 uniqueID)
    {
        gpPromo_clear();
        gPromo.GroupID = groupID, gPromo.SL = sl, gPromo.Invuid = invuid, gPromo.UniqueID = uniqueID;
        gPromo.StartDate = QDateTime(start, QTime(0, 0)), gPromo.EndDate = QDateTime(end, QTime(0, 0));
        gPromo.ChangeType = kChangeBy, gPromo.PriceChange = Money::fromWhole(3);
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    }
    static QList<PromoPriceRecord> rows(const QString &where)
    {
        QList<PromoPriceRecord> found;
        EXPECT_TRUE(gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices WHERE ") + where + QStringLiteral(" ORDER BY Invuid"), found));
        return found;
    }
    static QList<qint32> members(qint32 uid)
    {
        QList<MtxItemRecord> walk;
        int all = 0;
        EXPECT_TRUE(gfbMatrix_items_walk(uid, walk, all));
        QList<qint32> numbers;
        for (const MtxItemRecord &m : walk)
            numbers << m.InvUID;
        return numbers;
    }
    // The promo's shared values, as the editor leaves them.
    static PromoPriceRecord shared(qint32 groupID, int type, Money amount, QDate start, QDate end)
    {
        gpPromo_clear();
        gGroupPromo = gPromo;
        gGroupPromo.GroupID = groupID, gGroupPromo.ChangeType = qint16(type), gGroupPromo.PriceChange = amount;
        gGroupPromo.StartDate = QDateTime(start, QTime(0, 0)), gGroupPromo.EndDate = QDateTime(end, QTime(0, 0));
        return gGroupPromo;
    }
    static MatrixExpansion expand(qint32 groupID, int type, Money amount, QDate start, QDate end)
    {
        shared(groupID, type, amount, start, end);
        return gfMatrixPromo_expand();
    }
    static QString slOf(qint32 recordNum)
    {
        EXPECT_TRUE(gfbInventory_ByRecordNum(recordNum));
        return gInventory.SL;
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
};

QStringList trimmedSorted(QStringList entries)
{
    for (QString &e : entries)
        while (e.endsWith(QLatin1Char(' ')))
            e.chop(1);
    entries.sort();
    return entries;
}

} // namespace

TEST_F(MatrixPromos, ThePickerOffersBuiltMatricesWithoutAPromoAndTheSelectorThoseWithOne)
{
    EXPECT_EQ(gfMatrixPromo_choices(), QStringList{QStringLiteral("None existing ")});
    addPromo(7, QStringLiteral("1"), 12, kToday, kToday.addDays(3), 1);
    EXPECT_EQ(gfMatrixPromo_choices(), QStringList{QStringLiteral("None existing ")}) << "a group promo is no matrix promo";

    addMatrix(4, QStringLiteral("Not Built"), -1, 0);
    addMatrix(5, QStringLiteral("Flags Apart"), 1, 2); // both set, but their bitwise and is 0
    addMatrix(6, QStringLiteral("Men's Tee"), -1, -1);
    addPromo(1002, QStringLiteral("2"), 27, QDate(2008, 12, 31), kToday.addDays(3), 2);
    EXPECT_EQ(trimmedSorted(gfMatrixList_entries()),
              trimmedSorted({QStringLiteral("1001\tCrew Tee #1"), QStringLiteral("1002\tCrew Tee #2"), QStringLiteral("1003\tCrew Tee #3"),
                             QStringLiteral("1006\tMen's Tee")}))
        << "a promo that started before 2009 is not seen";

    addPromo(1002, QStringLiteral("3"), 28, kToday, kToday.addDays(3), 3);
    addPromo(1002, QStringLiteral("4"), 29, kToday, kToday.addDays(3), 4);
    addPromo(1006, QStringLiteral("5"), 30, kToday.addDays(1), kToday.addDays(3), 5);
    EXPECT_EQ(trimmedSorted(gfMatrixList_entries()), trimmedSorted({QStringLiteral("1001  Crew Tee #1"), QStringLiteral("1003  Crew Tee #3")}))
        << "two blanks when a promo row lies beyond the matrix's number";
    const QStringList choices = gfMatrixPromo_choices();
    ASSERT_EQ(choices.size(), 3);
    EXPECT_EQ(choices[0], QStringLiteral("Select Group"));
    EXPECT_EQ(choices[1], QStringLiteral("1002  Crew Tee #2").leftJustified(6 + 32));
    EXPECT_EQ(choices[2].trimmed(), QStringLiteral("1006  Men's Tee"));
    EXPECT_EQ(gfiMatrix_entry_number(choices[2], 4), 1006);
    EXPECT_EQ(gfiMatrix_entry_number(choices[2], 3), 100);
}

TEST_F(MatrixPromos, TheWalkOfAMatrixGivesWhatTheKeyedWalkGives)
{
    QRandomGenerator random(20251114);
    for (int round = 0; round < 6; ++round) {
        gfiDB_Execute(QStringLiteral("DELETE FROM MtxItem"));
        QSet<QPair<qint32, qint32>> used;
        for (int i = 0; i < 40; ++i) {
            const qint32 uid = 1 + qint32(random.bounded(5)), invuid = 1 + qint32(random.bounded(30));
            if (!used.contains({invuid, uid})) {
                used.insert({invuid, uid});
                addMember(invuid, uid, i);
            }
        }
        for (qint32 uid = 0; uid <= 6; ++uid) {
            QList<qint32> keyed;
            gMtxItem = MtxItemRecord();
            gMtxItem.MatrixGroupUID = uid;
            for (bool found = gfbDB_RecordOp(kMtxItemTable, kOpGreaterEqual, 0); found && gMtxItem.MatrixGroupUID == uid;
                 found = gfbDB_RecordOp(kMtxItemTable, kOpGetNext, 0))
                keyed << gMtxItem.InvUID;
            EXPECT_EQ(members(uid), keyed) << "round " << round << ", matrix " << uid;
        }
    }
}

TEST_F(MatrixPromos, AnExpansionWritesOneRowForEachItemAndTellsWhatItCouldNotCover)
{
    // Matrix 1: items 12 to 23. One has left the item file; one has the promo already.
    const QList<qint32> items = members(1);
    ASSERT_EQ(items.size(), 12);
    const QString gone = slOf(items[2]);
    gfiDB_Execute(QStringLiteral("DELETE FROM ") + dbuaTable[kInventoryTable].sSqlFile + QStringLiteral(" WHERE RecordNum = ") +
                  QString::number(items[2]));
    addPromo(1001, slOf(items[4]), items[4], kToday, kToday.addDays(9), 40);
    gsStore = QStringLiteral("7");

    const MatrixExpansion done = expand(1001, kChangeByPercent, Money::fromWhole(15), kToday, kToday.addDays(9));
    EXPECT_TRUE(done.walked);
    EXPECT_EQ(done.failed, 0);
    EXPECT_EQ(done.notReached, 0);
    EXPECT_EQ(done.missing, QList<qint32>{items[2]});
    ASSERT_EQ(done.rows.size(), 11) << "one entry for each item met, the one there before too";
    const QList<PromoPriceRecord> written = rows(QStringLiteral("GroupID = 1001"));
    ASSERT_EQ(written.size(), 11);
    QSet<qint32> ids;
    for (const PromoPriceRecord &row : written) {
        EXPECT_NE(row.Invuid, items[2]);
        EXPECT_EQ(row.SL, slOf(row.Invuid));
        ids.insert(row.UniqueID);
        if (row.Invuid == items[4]) {
            EXPECT_EQ(row.PriceChange, Money::fromWhole(3)) << "the row there before is left as it was";
            continue;
        }
        EXPECT_EQ(row.Store, 7);
        EXPECT_EQ(row.ChangeType, kChangeByPercent);
        EXPECT_EQ(row.PriceChange, Money::fromWhole(15));
        EXPECT_EQ(row.EndDate.date(), kToday.addDays(9));
        EXPECT_EQ(row.ChangeDate.date(), kToday);
        EXPECT_EQ(row.Poll.trimmed(), QString());
        EXPECT_EQ(row.Dept.trimmed(), QString());
    }
    EXPECT_EQ(ids.size(), 11) << "every row its own number";
    EXPECT_NE(gone, QString());

    // Again with the same ending date: nothing new.
    EXPECT_EQ(expand(1001, kChangeTo, Money::fromWhole(1), kToday, kToday.addDays(9)).rows.size(), 11);
    EXPECT_EQ(rows(QStringLiteral("GroupID = 1001")).size(), 11);
}

TEST_F(MatrixPromos, AnEmptyMatrixAndItemsBehindAnotherMatrixAreReported)
{
    addMatrix(8, QStringLiteral("Empty"), -1, -1);
    MatrixExpansion done = expand(1008, kChangeBy, Money::fromWhole(1), kToday, kToday);
    EXPECT_FALSE(done.walked);
    EXPECT_EQ(done.notReached, 0);
    EXPECT_TRUE(done.rows.isEmpty());

    // Matrix 1 gains an item numbered above matrix 3's: the walk meets matrix 2 before it.
    addMember(290, 1, 99);
    done = expand(1001, kChangeBy, Money::fromWhole(1), kToday, kToday);
    EXPECT_EQ(done.rows.size(), 12);
    EXPECT_EQ(done.notReached, 1);
    EXPECT_TRUE(rows(QStringLiteral("GroupID = 1001 AND Invuid = 290")).isEmpty());
    // Matrix 2 gains one numbered below all others: its walk meets matrix 1 at once.
    addMember(11, 2, 99);
    done = expand(1002, kChangeBy, Money::fromWhole(1), kToday, kToday);
    EXPECT_TRUE(done.walked);
    EXPECT_EQ(done.rows.size(), 1);
    EXPECT_EQ(done.notReached, 12);
    EXPECT_EQ(rows(QStringLiteral("GroupID = 1002")).size(), 1);
}

TEST_F(MatrixPromos, ChangeAndDeleteReachEveryRowOfThePromoInBothModes)
{
    const PromoPriceRecord first = shared(1003, kChangeBy, Money::fromWhole(2), kToday, kToday.addDays(5));
    MatrixExpansion done = gfMatrixPromo_expand();
    ASSERT_EQ(done.rows.size(), 12);
    addPromo(1001, QStringLiteral("9"), 12, kToday, kToday.addDays(5), 500);

    Clock::setFixed(QDateTime(kToday.addDays(1), QTime(9, 0)));
    const PromoPriceRecord later = shared(1003, kChangeByPercent, Money::fromWhole(30), kToday.addDays(2), kToday.addDays(20));
    gpMatrixPromo_change(done.rows);
    EXPECT_TRUE(boxes.shown().isEmpty());
    const QList<PromoPriceRecord> changed = rows(QStringLiteral("GroupID = 1003"));
    ASSERT_EQ(changed.size(), 12);
    for (const PromoPriceRecord &row : changed) {
        EXPECT_EQ(row.ChangeType, kChangeByPercent);
        EXPECT_EQ(row.PriceChange, Money::fromWhole(30));
        EXPECT_EQ(row.StartDate.date(), kToday.addDays(2));
        EXPECT_EQ(row.EndDate.date(), kToday.addDays(20));
        EXPECT_EQ(row.ChangeDate.date(), kToday.addDays(1));
    }

    gCommon.MultiStore = QStringLiteral("H");
    gGroupPromo = first;
    EXPECT_EQ(gfiMatrixPromo_delete(), 0) << "the start date the promo had before its change finds nothing";
    gGroupPromo = later;
    EXPECT_EQ(gfiMatrixPromo_delete(), 12);
    EXPECT_EQ(rows(QStringLiteral("GroupID = 1003")).size(), 0) << "no tombstone at a head office either";
    EXPECT_EQ(rows(QStringLiteral("GroupID = 1001")).size(), 1) << "another matrix's promo stays";
}
