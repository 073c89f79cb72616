#include "promo/PromoPricing.h"
#include "store/StoreFixture.h"

using namespace qln;
using namespace qln::test;

namespace {

Money money(const char *text) { return *Money::parse(QString::fromUtf8(text)); }

QString price(const char *regular, const char *change, int type)
{
    const auto p = gfcPromo_price_get(money(regular), money(change), type);
    return p ? p->toText(4) : QStringLiteral("none");
}

class PromoTable : public ConnectedStore {
protected:
    void open()
    {
        gpPromo_table_register(kPromoTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kPromoTable));
    }
    void insertPromo(const char *sl, QDate start, int invuid, qint32 uniqueId)
    {
        gpPromo_clear();
        gPromo.Store = 1;
        gPromo.SL = QString::fromUtf8(sl).leftJustified(8);
        gPromo.StartDate = QDateTime(start, QTime(0, 0));
        gPromo.EndDate = gPromo.StartDate.addDays(7);
        gPromo.ChangeDate = gPromo.StartDate;
        gPromo.PriceChange = money("25");
        gPromo.ChangeType = kChangeByPercent;
        gPromo.Poll = QStringLiteral("Y");
        gPromo.Invuid = invuid;
        gPromo.UniqueID = uniqueId;
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert)) << gsDBLastError.toStdString();
    }
};

} // namespace

TEST(PromoPrice, ArithmeticOverTheThreeTypes)
{
    EXPECT_EQ(price("9.99", "15", kChangeByPercent), QStringLiteral("8.4915"));
    EXPECT_EQ(price("9.99", "0", kChangeByPercent), QStringLiteral("9.9900"));
    EXPECT_EQ(price("9.99", "100", kChangeByPercent), QStringLiteral("0.0000"));
    EXPECT_EQ(price("10.00", "150", kChangeByPercent), QStringLiteral("-5.0000"));
    EXPECT_EQ(price("3.33", "33.33", kChangeByPercent), QStringLiteral("2.2201"));
    EXPECT_EQ(price("5.00", "7.50", kChangeBy), QStringLiteral("-2.5000")) << "no floor";
    EXPECT_EQ(price("5.00", "3.25", kChangeTo), QStringLiteral("3.2500"));
    EXPECT_EQ(price("5.00", "3.25", kChangeDeleted), QStringLiteral("none"));
    EXPECT_EQ(gfcPromo_price_get(money("9.99"), money("15"), kChangeByPercent)->toText(2), QStringLiteral("8.49"));
}

TEST(PromoPrice, OldNoteFormReadsItsPrice)
{
    EXPECT_EQ(mfsPromo_Price_get(strings({"x", "PROMO:20260101:20260131:4.5"}), 1, 1), QStringLiteral("4.50"));
    EXPECT_EQ(mfsPromo_Price_get(strings({"PROMO:a:b"}), 0, 1), QStringLiteral("0.00"));
}

TEST_F(PromoTable, RowsRoundTripAndNumberFromTheHighest)
{
    open();
    EXPECT_EQ(gfiPromo_UniqueID_next(kPromoTable), 1) << "an empty table starts at one";
    insertPromo("O'NEIL1", QDate(2026, 11, 22), 1234, 7);
    EXPECT_EQ(gfiPromo_UniqueID_next(kPromoTable), 8);

    gpPromo_clear();
    gPromo.Invuid = 1234;
    gPromo.StartDate = QDateTime(QDate(2026, 11, 22), QTime(0, 0));
    ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpEqual, 8));
    EXPECT_EQ(gPromo.SL, QStringLiteral("O'NEIL1 "));
    EXPECT_EQ(gPromo.EndDate, QDateTime(QDate(2026, 11, 29), QTime(0, 0)));
    EXPECT_EQ(gPromo.PriceChange, money("25"));
    EXPECT_EQ(gPromo.ChangeType, kChangeByPercent);
    EXPECT_EQ(gPromo.Poll, QStringLiteral("Y"));
    EXPECT_EQ(gPromo.UniqueID, 7);

    gPromo.ChangeType = kChangeDeleted;
    gPromo.PriceChange = money("12.345");
    ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpUpdate));
    gpPromo_clear();
    gPromo.SL = QStringLiteral("O'NEIL1 ");
    gPromo.EndDate = QDateTime(QDate(2026, 11, 29), QTime(0, 0));
    ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpEqual, 0));
    EXPECT_EQ(gPromo.ChangeType, kChangeDeleted);
    EXPECT_EQ(gPromo.PriceChange, money("12.35")) << "the column keeps two decimals";
}

TEST_F(PromoTable, TheValueListIsTheSuitesText)
{
    gpPromo_clear();
    gPromo.Store = 3;
    gPromo.SL = QStringLiteral("1234567 ");
    gPromo.StartDate = QDateTime(QDate(2026, 11, 22), QTime(0, 0));
    gPromo.EndDate = QDateTime(QDate(2026, 12, 1), QTime(0, 0));
    gPromo.ChangeDate = gPromo.StartDate;
    gPromo.PriceChange = money("25");
    gPromo.ChangeType = 2;
    gPromo.Poll = QStringLiteral("Y");
    gPromo.Invuid = 88;
    gPromo.UniqueID = 9;
    EXPECT_EQ(gfsPromo_values_get(), QStringLiteral("3, '1234567 ','           ','20261122 00:00:00','20261201 00:00:00',"
                                                    "'20261122 00:00:00',25, 2, 'Y',0,88,9"));
}

TEST_F(PromoTable, ElevenColumnTableIsNumberedInStartOrderAndTwelveIsLeftAlone)
{
    ASSERT_TRUE(dbConnection().execute(QStringLiteral(
        "Create Table PromoPrices (Store SMALLINT, SL CHAR (8), Dept CHAR (11), StartDate DATETIME, EndDate DATETIME, "
        "ChangeDate DATETIME, PriceChange DECIMAL (18,2), ChangeType SMALLINT, Poll CHAR(1),GroupID SMALLINT, Invuid INTEGER "
        "not null)")));
    const char *rows[][3] = {{"B", "20261105 00:00:00", "2"}, {"A", "20261101 00:00:00", "9"}, {"C", "20261101 00:00:00", "3"}};
    for (const auto &r : rows)
        ASSERT_TRUE(dbConnection().execute(QStringLiteral("INSERT INTO PromoPrices VALUES(1, '%1', ' ', '%2', '%2', '%2', 1, 0, 'Y', 0, %3)")
                                               .arg(QString::fromUtf8(r[0]), QString::fromUtf8(r[1]), QString::fromUtf8(r[2]))));
    open();
    ASSERT_EQ(dbaRecordset[kPromoTable]->fieldCount(), 11);
    ASSERT_TRUE(gfbPromo_upgrade(kPromoTable, gfiDB_RecordCount(kPromoTable)));
    Recordset rs;
    ASSERT_TRUE(rs.open(dbConnection(), QStringLiteral("SELECT * FROM PromoPrices ORDER BY UniqueID")));
    QStringList order;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext())
        order << rs.value(1).toString().trimmed() + rs.value(11).toString();
    EXPECT_EQ(order, strings({"C1", "A2", "B3"}));
    EXPECT_EQ(gfiPromo_UniqueID_next(kPromoTable), 4);
    // The unique index is there now.
    insertPromo("D", QDate(2026, 11, 1), 5, 4);
    gPromo.UniqueID = 4;
    EXPECT_FALSE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    EXPECT_EQ(gsDBLastError, QStringLiteral("Duplicate Key"));
}

TEST_F(PromoTable, ARowWithoutANumberKeepsTheBuffersNumber)
{
    open();
    ASSERT_TRUE(dbConnection().execute(QStringLiteral(
        "INSERT INTO PromoPrices VALUES(1, 'X', ' ', '20261101 00:00:00', '20261101 00:00:00', '20261101 00:00:00', 1, 0, 'Y', "
        "0, 50, NULL)")));
    gpPromo_clear();
    gPromo.UniqueID = 41;
    gPromo.Invuid = 50;
    gPromo.StartDate = QDateTime(QDate(2026, 11, 1), QTime(0, 0));
    ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpEqual, 8));
    EXPECT_EQ(gPromo.UniqueID, 41);
    EXPECT_EQ(gfiPromo_UniqueID_next(kPromoTable), 1) << "NULL sorts below every number";
}
