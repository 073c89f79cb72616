#include "StoreFixture.h"

#include "platform/Clock.h"
#include "store/Upc.h"

#include <QFile>

using namespace qln;
using namespace qln::test;

namespace {

class UpcTable : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        Clock::setFixed(QDateTime(QDate(2026, 11, 22), QTime(14, 5, 9)));
        gpUpc_Open(kUpcTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kUpcTable));
    }
    void TearDown() override
    {
        Clock::setFixed(QDateTime());
        ConnectedStore::TearDown();
    }
    bool add(const char *sl, const char *upc, qint32 invUid)
    {
        gUpc = UpcRecord();
        gUpc.SL = QString::fromUtf8(sl);
        gUpc.UPC = QString::fromUtf8(upc);
        gUpc.POLL = QStringLiteral("Y");
        gUpc.InvUID = invUid;
        return gfbDB_RecordOp(kUpcTable, kOpInsert);
    }
};

} // namespace

TEST_F(UpcTable, CodesAreFoundByCodeAndWalkInCodeOrder)
{
    ASSERT_TRUE(add("1001", "012345678905", 11));
    ASSERT_TRUE(add("1001", "D12345678905", 11));
    ASSERT_TRUE(add("2002", "099999999990", 12));

    gUpc = UpcRecord();
    gUpc.UPC = QStringLiteral("099999999990").leftJustified(15);
    ASSERT_TRUE(gfbDB_RecordOp(kUpcTable, kOpEqual, 2));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM UPC WHERE UPC='099999999990   ' ORDER BY UPC"));
    EXPECT_EQ(gUpc.SL, QStringLiteral("2002    "));
    EXPECT_EQ(gUpc.InvUID, 12);

    gUpc.SL = QStringLiteral("1001").leftJustified(8);
    gUpc.UPC = QStringLiteral("012345678905").leftJustified(15);
    ASSERT_TRUE(gfbDB_RecordOp(kUpcTable, kOpGetNext, 1));
    EXPECT_EQ(gUpc.UPC.trimmed(), QStringLiteral("099999999990")) << "UPC order, then SL";

    gpUpc_Open(kUpcTable, gsDataPath);
    EXPECT_EQ(gfiDB_RecordCount(kUpcTable), 3) << "an existing table is left alone";
}

TEST_F(UpcTable, ADuplicateCodeIsRefusedAndLoggedToItsOwnFile)
{
    ASSERT_TRUE(add("1001", "012345678905", 11));
    EXPECT_FALSE(add("2002", "012345678905", 12));
    EXPECT_EQ(gsDBLastError, QStringLiteral("Duplicate Key"));
    EXPECT_EQ(gfiDB_RecordCount(kUpcTable), 1);

    const QString log = db.readFile(QStringLiteral("upcDups.txt"));
    EXPECT_TRUE(log.startsWith(QStringLiteral("11/22/2026 2:05:09 PM Description: Cannot insert duplicate"))) << log.toStdString();
    EXPECT_EQ(log.count(QStringLiteral("\r\n")), 1);
    EXPECT_FALSE(QFile::exists(db.file(QStringLiteral("PVSW.log"))));
}
