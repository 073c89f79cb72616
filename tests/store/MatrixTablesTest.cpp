#include "StoreFixture.h"

#include "store/MatrixGroups.h"
#include "store/MtxItem.h"

using namespace qln;
using namespace qln::test;

namespace {

class MatrixTables : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpMatrixGroups_Open(kMatrixGroupsTable, gsDataPath);
        gpMtxItem_Open(kMtxItemTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kMatrixGroupsTable));
        ASSERT_TRUE(gfbDB_TableOpen(kMtxItemTable));
    }
    bool addGroup(qint32 uid, const char *name, qint32 invUid, const char *itemId)
    {
        gMatrixGroups = MatrixGroupRecord();
        gMatrixGroups.GroupUID = uid;
        gMatrixGroups.GroupName = QString::fromUtf8(name);
        gMatrixGroups.xAxisLabel = QStringLiteral("Size");
        gMatrixGroups.InvUID = invUid;
        gMatrixGroups.ItemID = QString::fromUtf8(itemId);
        gMatrixGroups.Price = Money::fromUnits(99900);
        gMatrixGroups.MatrixExists = gMatrixGroups.MatrixBuilt = -1;
        return gfbDB_RecordOp(kMatrixGroupsTable, kOpInsert);
    }
    void addItem(qint32 invUid, qint32 group, const char *x, qint16 xpos)
    {
        gMtxItem = MtxItemRecord();
        gMtxItem.InvUID = invUid;
        gMtxItem.MatrixGroupUID = group;
        gMtxItem.xAxisValue = QString::fromUtf8(x);
        gMtxItem.yAxisValue = QStringLiteral("Red");
        gMtxItem.xpos = xpos;
        ASSERT_TRUE(gfbDB_RecordOp(kMtxItemTable, kOpInsert)) << gsDBLastError.toStdString();
    }
};

} // namespace

TEST_F(MatrixTables, AMatrixIsFoundByItsKeysAndItsUniqueIndexesHold)
{
    EXPECT_EQ(dbuaTable[kMatrixGroupsTable].sSqlFile, QStringLiteral("MTXGRPS"));
    ASSERT_TRUE(addGroup(5, "Tees", 900, "TEE"));
    EXPECT_FALSE(addGroup(6, "Tees", 901, "TEE2")) << "names are unique";
    EXPECT_FALSE(addGroup(5, "Polos", 902, "POLO")) << "numbers are unique";

    gMatrixGroups = MatrixGroupRecord();
    gMatrixGroups.GroupUID = 5;
    ASSERT_TRUE(gfbDB_RecordOp(kMatrixGroupsTable, kOpEqual, 0));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM MTXGRPS WHERE GroupUID='5' ORDER BY GroupUID"));
    EXPECT_EQ(gMatrixGroups.GroupName, QStringLiteral("Tees").leftJustified(32));
    EXPECT_EQ(gMatrixGroups.Price, Money::fromUnits(99900));
    EXPECT_EQ(gMatrixGroups.MatrixExists & gMatrixGroups.MatrixBuilt, -1);

    gMatrixGroups = MatrixGroupRecord();
    gMatrixGroups.InvUID = 900;
    ASSERT_TRUE(gfbDB_RecordOp(kMatrixGroupsTable, kOpEqual, 5));
    EXPECT_EQ(gMatrixGroups.ItemID, QStringLiteral("TEE").leftJustified(15));

    gpMatrixGroups_Open(kMatrixGroupsTable, gsDataPath);
    EXPECT_EQ(gfiDB_RecordCount(kMatrixGroupsTable), 1) << "an existing table is left alone";
}

TEST_F(MatrixTables, TheItemsOfAMatrixAreWalkedFromItsFirst)
{
    addItem(911, 5, "M", 2);
    addItem(910, 5, "S", 1);
    addItem(920, 7, "S", 1);
    addItem(930, 5, "L", 3);

    // The expansion of a matrix promo: from record number 0 of the matrix, on by key 0 while
    // the matrix is the same, so it stops at the first row of another matrix.
    gMtxItem = MtxItemRecord();
    gMtxItem.MatrixGroupUID = 5;
    ASSERT_TRUE(gfbDB_RecordOp(kMtxItemTable, kOpGreaterEqual, 0));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM MtxItem WHERE InvUID>='0' AND MatrixGroupUID>='5' ORDER BY InvUID"));
    QStringList seen;
    while (gMtxItem.MatrixGroupUID == 5) {
        seen << QString::number(gMtxItem.InvUID);
        ASSERT_TRUE(gfbDB_RecordOp(kMtxItemTable, kOpGetNext, 0));
    }
    EXPECT_EQ(seen, strings({"910", "911"}));
    EXPECT_EQ(gMtxItem.InvUID, 920);

    gMtxItem = MtxItemRecord();
    gMtxItem.MatrixGroupUID = 5;
    gMtxItem.xAxisValue = QStringLiteral("M").leftJustified(32);
    gMtxItem.yAxisValue = QStringLiteral("Red").leftJustified(32);
    ASSERT_TRUE(gfbDB_RecordOp(kMtxItemTable, kOpEqual, 2));
    EXPECT_EQ(gMtxItem.InvUID, 911);
    EXPECT_EQ(gMtxItem.xpos, 2);

    gMtxItem.xpos = 1;
    ASSERT_TRUE(gfbDB_RecordOp(kMtxItemTable, kOpEqual, 4));
    EXPECT_EQ(gMtxItem.InvUID, 910);

    gpMtxItem_Open(kMtxItemTable, gsDataPath);
    EXPECT_EQ(gfiDB_RecordCount(kMtxItemTable), 4);
}
