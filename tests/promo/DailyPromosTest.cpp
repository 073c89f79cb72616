#include "promo/DailyPromos.h"

#include "common/DateForms.h"
#include "store/StoreFixture.h"

#include <QRandomGenerator>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kDay(2025, 5, 14);

class DailyTable : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpPromo_table_register(kPromoTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kPromoTable));
    }
    void insert(qint32 groupId, QDate end, const QString &sl = QString())
    {
        gpPromo_clear();
        gPromo.SL = sl;
        gPromo.GroupID = groupId;
        gPromo.StartDate = QDateTime(end.addDays(-2), QTime(0, 0));
        gPromo.EndDate = QDateTime(end, QTime(0, 0));
        gPromo.ChangeType = kChangeByPercent;
        gPromo.PriceChange = Money::fromWhole(10);
        gPromo.UniqueID = ++m_uniqueId;
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert)) << gsDBLastError.toStdString();
    }
    static QString key(const PromoPriceRecord &p) { return QString::number(p.GroupID) + QLatin1Char('|') + gfsDate_key(p.EndDate); }
    // The list as the keyed walk gives it, one read a row.
    static QStringList walked()
    {
        QStringList keys;
        for (bool found = gfbDB_RecordOp(kPromoTable, kOpGetFirst, kPromoByGroupEnd); found && gPromo.GroupID != 0;
             found = gfbDB_RecordOp(kPromoTable, kOpGetNext, kPromoByGroupEnd))
            keys << key(gPromo);
        return keys;
    }
    static QStringList read()
    {
        QList<PromoPriceRecord> rows;
        EXPECT_TRUE(gfbDailyPromos_read(rows));
        QStringList keys;
        for (const PromoPriceRecord &row : rows)
            keys << key(row);
        return keys;
    }

    qint32 m_uniqueId = 0;
};

} // namespace

TEST(DailyStatements, TheStoreDeleteStandsToTheCharacter)
{
    EXPECT_EQ(gfsDailyPromo_delete_sql(QDate(2025, 5, 4), -3),
              QStringLiteral("DELETE FROM PromoPrices WHERE enddate = '5/4/2025' AND groupid =-3"));
}

TEST_F(DailyTable, NumbersGoBelowTheLowestUntilTheColumnHasNoRoomLeft)
{
    EXPECT_EQ(gfiDailyPromo_GroupID_next(), -1) << "an empty table";
    insert(0, kDay, QStringLiteral("1234"));
    insert(7, kDay, QStringLiteral("1234"));
    EXPECT_EQ(gfiDailyPromo_GroupID_next(), -1) << "item and group rows only";
    insert(-1, kDay);
    insert(-5, kDay.addDays(-30));
    EXPECT_EQ(gfiDailyPromo_GroupID_next(), -6) << "below the lowest, gaps and expired rows alike";
    insert(kDailyGroupID_lowest, kDay);
    EXPECT_EQ(gfiDailyPromo_GroupID_next(), std::nullopt);
}

// One read stands for the walk of "Get Next" on the key: the rows and their order must be
// those the walk gives, stop at GroupID 0, run-on into the groups, equal keys and all.
TEST_F(DailyTable, TheOneReadListsWhatTheKeyedWalkLists)
{
    QRandomGenerator random(20261123);
    const QList<qint32> groups = {-3, -2, -1, 0, 1, 2};
    for (int round = 0; round < 25; ++round) {
        ASSERT_GE(gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices")), 0);
        const bool withZero = random.bounded(2) == 0;
        const int rows = random.bounded(0, 12);
        for (int r = 0; r < rows; ++r) {
            qint32 group = groups[random.bounded(int(groups.size()))];
            if (group == 0 && !withZero)
                group = -4;
            insert(group, kDay.addDays(random.bounded(3)));
        }
        const QStringList expected = walked();
        ASSERT_EQ(read(), expected) << "round " << round;
    }
}

TEST_F(DailyTable, TheStoreDeleteFindsItsRowByTheShortDate)
{
    insert(-1, kDay);
    insert(-2, kDay);
    insert(-1, kDay.addDays(1));
    EXPECT_EQ(gfiDB_Execute(gfsDailyPromo_delete_sql(kDay, -1)), 1);
    EXPECT_EQ(read(), strings({"-2|20250514 00:00:00", "-1|20250515 00:00:00"}));
    // Only a date column takes the slashed form as a date.
    EXPECT_TRUE(dbConnection().dialect().rewrite(QStringLiteral("SELECT * FROM NOTES WHERE Note = '5/4/2025'"))
                    .contains(QStringLiteral("'5/4/2025'")));
}
