// Which promos reach an item: the kind rules, and the one-item read against the index over the
// whole table, which import's overlap report relies on to say the same thing.
#include "promo/PromoKind.h"
#include "promo/PromoReach.h"

#include "store/StoreFixture.h"

#include <QRandomGenerator>

using namespace qln;
using namespace qln::test;

namespace {

PromoPriceRecord row(const QString &sl, const QString &dept, qint32 groupId)
{
    PromoPriceRecord p;
    p.SL = sl, p.Dept = dept, p.GroupID = groupId;
    return p;
}

QDateTime midnight(const QDate &d) { return QDateTime(d, QTime(0, 0)); }

QList<qint32> ids(const QList<PromoPriceRecord> &rows)
{
    QList<qint32> out;
    for (const PromoPriceRecord &p : rows)
        out << p.UniqueID;
    return out;
}

} // namespace

TEST(PromoKind, FollowsFromTheFieldsOfTheRow)
{
    EXPECT_EQ(gfePromo_kind(row(QStringLiteral("10000007"), QString(), 0)), PromoKind::Item);
    EXPECT_EQ(gfePromo_kind(row(QStringLiteral("10000007"), QStringLiteral("           "), 1)), PromoKind::Group);
    EXPECT_EQ(gfePromo_kind(row(QStringLiteral("10000007"), QString(), 999)), PromoKind::Group);
    EXPECT_EQ(gfePromo_kind(row(QStringLiteral("10000007"), QString(), 1000)), PromoKind::Matrix);
    EXPECT_EQ(gfePromo_kind(row(QStringLiteral("        "), QStringLiteral("001.002.003"), 0)), PromoKind::Dept);
    // The department editor leaves GroupID as the buffer held it: the code still decides.
    EXPECT_EQ(gfePromo_kind(row(QString(), QStringLiteral("001.002.003"), -4)), PromoKind::Dept);
    EXPECT_EQ(gfePromo_kind(row(QString(), QStringLiteral("001.002.003"), 1004)), PromoKind::Dept);
    EXPECT_EQ(gfePromo_kind(row(QString(), QString(), -1)), PromoKind::Daily);
    EXPECT_EQ(gfePromo_kind(row(QString(), QString(), 0)), std::nullopt) << "a row naming nothing";
    EXPECT_EQ(gfePromo_kind(row(QString(), QStringLiteral("000.000.000"), 0)), std::nullopt) << "the code of no department";

    for (PromoKind kind : {PromoKind::Item, PromoKind::Dept, PromoKind::Group, PromoKind::Matrix, PromoKind::Daily})
        EXPECT_EQ(gfePromoKind_parse(gfsPromoKind_name(kind)), kind);
    EXPECT_EQ(gfePromoKind_parse(QStringLiteral("Item")), std::nullopt);
    EXPECT_EQ(gfePromoKind_parse(QString()), std::nullopt);
}

TEST(PromoReach, DaysCountBothEndsAndTombstonesReachNothing)
{
    const QDate day(2026, 5, 14);
    const PromoTarget item{QStringLiteral("10000007"), QStringLiteral("001.002.003")};
    PromoPriceRecord p = row(QStringLiteral("10000007"), QString(), 0);
    p.StartDate = midnight(day), p.EndDate = midnight(day);
    EXPECT_TRUE(gfbPromo_reaches(p, item, day, day)) << "a promo of one day";
    EXPECT_FALSE(gfbPromo_reaches(p, item, day.addDays(1), day.addDays(3)));
    EXPECT_FALSE(gfbPromo_reaches(p, item, day.addDays(-3), day.addDays(-1)));
    EXPECT_TRUE(gfbPromo_reaches(p, item, day.addDays(-3), day));
    p.ChangeType = kChangeDeleted;
    EXPECT_FALSE(gfbPromo_reaches(p, item, day, day));

    PromoPriceRecord dept = row(QString(), QStringLiteral("001.002.003"), 0);
    dept.StartDate = dept.EndDate = midnight(day);
    EXPECT_TRUE(gfbPromo_reaches(dept, item, day, day));
    EXPECT_FALSE(gfbPromo_reaches(dept, {item.SL, QStringLiteral("001.002.000")}, day, day)) << "exact code, not a level above";
    EXPECT_FALSE(gfbPromo_reaches(row(QString(), QStringLiteral("000.000.000"), 0), {item.SL, QStringLiteral("000.000.000")}, day, day));
    EXPECT_FALSE(gfbPromo_reaches(p, {QStringLiteral("10000008"), item.Dept}, day, day));
}

class PromoReachTable : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpPromo_table_register(kPromoTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kPromoTable));
    }
    void insert(const PromoPriceRecord &p)
    {
        gPromo = p;
        gPromo.UniqueID = ++m_uniqueId;
        gPromo.ChangeDate = midnight(kFirst);
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert)) << gsDBLastError.toStdString();
    }

    const QDate kFirst{2026, 3, 1};
    qint32 m_uniqueId = 0;
};

// Random rows of every kind over a few items, departments and weeks, tombstones among them:
// for every item and range, the statement for one item and the index over the table must
// name the same promos in the same order.
TEST_F(PromoReachTable, OneItemReadAndTheIndexAgreeOnEveryItemAndRange)
{
    QRandomGenerator random(19);
    const QStringList sls = {QStringLiteral("10000007"), QStringLiteral("10000008"), QStringLiteral("2000001"),
                             QStringLiteral("A0000001")};
    const QStringList depts = {QStringLiteral("001.002.003"), QStringLiteral("001.002.000"), QStringLiteral("004.000.000")};
    for (int i = 0; i < 160; ++i) {
        PromoPriceRecord p;
        gpPromo_clear();
        p = gPromo;
        switch (random.bounded(5)) {
        case 0: p.SL = sls[random.bounded(sls.size())], p.Invuid = 11 + i; break;
        case 1: p.Dept = depts[random.bounded(depts.size())], p.GroupID = qint32(random.bounded(3)) - 1; break;
        case 2: p.SL = sls[random.bounded(sls.size())], p.GroupID = 1 + random.bounded(3), p.Invuid = 11 + i; break;
        case 3: p.SL = sls[random.bounded(sls.size())], p.GroupID = 1000 + random.bounded(3), p.Invuid = 11 + i; break;
        default: p.GroupID = -1 - random.bounded(5); break;
        }
        const QDate start = kFirst.addDays(random.bounded(40));
        p.StartDate = midnight(start), p.EndDate = midnight(start.addDays(random.bounded(10)));
        p.ChangeType = qint16(random.bounded(10) == 0 ? kChangeDeleted : random.bounded(3));
        p.PriceChange = Money::fromUnits(random.bounded(1, 500000));
        // The same start for many rows makes the order's later keys count.
        if (i % 7 == 0)
            p.StartDate = midnight(kFirst.addDays(10));
        insert(p);
    }
    PromoReachIndex index;
    ASSERT_TRUE(index.load());
    EXPECT_GT(index.rows().size(), 100);

    int compared = 0, nonEmpty = 0;
    for (const QString &sl : sls + QStringList{QStringLiteral("99999999")})
        for (const QString &dept : depts + QStringList{QString()})
            for (int from = -2; from < 52; from += 9)
                for (int length : {0, 3, 15}) {
                    const PromoTarget item{sl, dept};
                    const QDate a = kFirst.addDays(from), b = a.addDays(length);
                    QList<PromoPriceRecord> read;
                    ASSERT_TRUE(gfbPromo_reaching_read(item, a, b, read));
                    const QList<PromoPriceRecord> indexed = index.reaching(item, a, b);
                    ASSERT_EQ(ids(read), ids(indexed)) << sl.toStdString() << " " << dept.toStdString() << " "
                                                       << a.toString(Qt::ISODate).toStdString();
                    for (const PromoPriceRecord &p : read)
                        ASSERT_TRUE(gfbPromo_reaches(p, item, a, b));
                    ++compared, nonEmpty += read.isEmpty() ? 0 : 1;
                }
    EXPECT_GT(nonEmpty, compared / 3) << "the ranges must meet promos to prove anything";

    // Keys compare as the server compares them: without case or trailing blanks.
    QList<PromoPriceRecord> padded;
    ASSERT_TRUE(gfbPromo_reaching_read({QStringLiteral("a0000001"), QString()}, kFirst, kFirst.addDays(60), padded));
    EXPECT_EQ(ids(padded), ids(index.reaching({QStringLiteral("a0000001 "), QString()}, kFirst, kFirst.addDays(60))));
    EXPECT_EQ(ids(index.reaching({QStringLiteral("2000001 "), QString()}, kFirst, kFirst.addDays(60))),
              ids(index.reaching({QStringLiteral("2000001"), QString()}, kFirst, kFirst.addDays(60))));
}

TEST_F(PromoReachTable, AQuoteInAKeyIsAKeyNotAStatement)
{
    PromoPriceRecord p;
    gpPromo_clear();
    p = gPromo;
    p.SL = QStringLiteral("O'1"), p.StartDate = p.EndDate = midnight(kFirst);
    insert(p);
    QList<PromoPriceRecord> read;
    ASSERT_TRUE(gfbPromo_reaching_read({QStringLiteral("O'1"), QStringLiteral("1'2")}, kFirst, kFirst, read));
    EXPECT_EQ(ids(read), QList<qint32>{1});
}

TEST_F(PromoReachTable, TheIndexLoadsOnlyWhatEndsFromTheDayGiven)
{
    PromoPriceRecord p;
    gpPromo_clear();
    p = gPromo;
    p.SL = QStringLiteral("10000007");
    p.StartDate = midnight(kFirst), p.EndDate = midnight(kFirst.addDays(4));
    insert(p);
    p.StartDate = midnight(kFirst.addDays(5)), p.EndDate = midnight(kFirst.addDays(9));
    insert(p);
    p.ChangeType = kChangeDeleted;
    insert(p);
    PromoReachIndex index;
    ASSERT_TRUE(index.load(kFirst.addDays(4)));
    EXPECT_EQ(ids(index.rows()), (QList<qint32>{1, 2}));
    ASSERT_TRUE(index.load(kFirst.addDays(5)));
    EXPECT_EQ(ids(index.rows()), QList<qint32>{2});
}
