// The groups file and the statements that read and remove a group's promo rows.
#include "promo/PromoGroups.h"

#include "common/ProcessState.h"
#include "promo/PromoList.h"
#include "promo/PromoPricing.h"
#include "store/StoreFixture.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

QByteArray fileBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}
QList<PromoGroup> readGroups(const QString &path)
{
    QList<PromoGroup> groups;
    EXPECT_TRUE(gfbGroups_read(path, groups));
    return groups;
}

class GroupsFile : public ::testing::Test {
protected:
    QString path() const { return dir.filePath(QStringLiteral("Groups.QLN")); }
    QTemporaryDir dir;
};

} // namespace

TEST_F(GroupsFile, RoundTripKeepsCodesAndDescriptionsLessTheirTrailingBlanks)
{
    const QList<PromoGroup> written = {{QStringLiteral("3"), QStringLiteral("  Spring  ")},
                                       {QStringLiteral("12"), QStringLiteral("Summer Sale")},
                                       {QStringLiteral("999"), QString::fromUtf8("Caf\xc3\xa9 cr\xc3\xa8me")}};
    ASSERT_TRUE(gfbGroups_write(path(), written));
    EXPECT_TRUE(fileBytes(path()).startsWith("[CODE]3 [LABEL]  Spring  \n[CODE]12 [LABEL]Summer Sale\n"));
    EXPECT_TRUE(fileBytes(path()).endsWith("[LABEL]Caf\xe9 cr\xe8me\n")) << "the suite's code page";

    const QList<PromoGroup> read = readGroups(path());
    ASSERT_EQ(read.size(), 3);
    EXPECT_EQ(read[0].sLabel, QStringLiteral("  Spring")) << "leading blanks stay, trailing ones go";
    EXPECT_EQ(read[1].sCode, QStringLiteral("12"));
    EXPECT_EQ(read[2].sLabel, QString::fromUtf8("Caf\xc3\xa9 cr\xc3\xa8me"));
    EXPECT_EQ(gfsGroup_codes(read), QStringLiteral("312999"));
}

TEST_F(GroupsFile, LinesWithoutACodeAreSkippedAndABracketEndsAField)
{
    writeBytes(path(), "[CODE]1 [LABEL]One\r\n"
                       "   \r\n"
                       "[CODE] [LABEL]no code\r\n"
                       "[CODE]  2  [LABEL]Two [kept out]\n"
                       "[CODE][LABEL]tag behind tag\n"
                       "[LABEL]no code tag\n"
                       "[CODE]4 [LABEL][bracket behind the tag\n"
                       "[CODE]5");
    const QList<PromoGroup> read = readGroups(path());
    ASSERT_EQ(read.size(), 4);
    EXPECT_EQ(read[0].sLabel, QStringLiteral("One")) << "CR LF line ends";
    EXPECT_EQ(read[1].sCode, QStringLiteral("2"));
    EXPECT_EQ(read[1].sLabel, QStringLiteral("Two"));
    EXPECT_EQ(read[2].sCode, QStringLiteral("4"));
    EXPECT_TRUE(read[2].sLabel.isEmpty());
    EXPECT_EQ(read[3].sCode, QStringLiteral("5")) << "an unended last line with no label";
    EXPECT_TRUE(read[3].sLabel.isEmpty());
}

TEST_F(GroupsFile, AnEmptiedListWritesOneEmptyLineThatTheNextReadSkips)
{
    ASSERT_TRUE(gfbGroups_write(path(), {PromoGroup()}));
    EXPECT_EQ(fileBytes(path()), QByteArray("[CODE] [LABEL]\n"));
    EXPECT_TRUE(readGroups(path()).isEmpty());
}

TEST_F(GroupsFile, AMissingFileReadsAsNoListAndNineHundredNinetyNineCodesComeBack)
{
    QList<PromoGroup> groups = {{QStringLiteral("1"), QStringLiteral("x")}};
    EXPECT_FALSE(gfbGroups_read(path(), groups));
    EXPECT_TRUE(groups.isEmpty());

    QList<PromoGroup> many;
    for (int i = 1; i <= kGroupCodesMax; ++i)
        many << PromoGroup{QString::number(i), QStringLiteral("Group %1").arg(i)};
    ASSERT_TRUE(gfbGroups_write(path(), many));
    EXPECT_EQ(readGroups(path()).size(), kGroupCodesMax);
    EXPECT_EQ(readGroups(path()).last().sLabel, QStringLiteral("Group 999"));
}

TEST(GroupChoice, EntryTextAndTheRowsQueryKeepTheirBlanks)
{
    EXPECT_EQ(gfsGroup_choice_text({QStringLiteral("12"), QStringLiteral("Summer Sale")}), QStringLiteral("12  Summer Sale"));
    EXPECT_EQ(gfsGroup_choice_text({QStringLiteral("007"), QStringLiteral("Bond")}), QStringLiteral("7  Bond"));
    EXPECT_EQ(gfsGroup_rows_sql(12), QStringLiteral("SELECT * FROM PromoPrices WHERE groupid='12 ' order by SL"));
    EXPECT_TRUE(gfbGroup_code_numeric(QStringLiteral(" 12 ")));
    EXPECT_FALSE(gfbGroup_code_numeric(QStringLiteral("A1")));
    EXPECT_FALSE(gfbGroup_code_numeric(QString()));
}

namespace {

class GroupRows : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpPromo_table_register(kPromoTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kPromoTable));
    }
    static void add(int groupId, const char *sl, int uniqueId, int changeType = kChangeTo)
    {
        gpPromo_clear();
        gPromo.GroupID = groupId, gPromo.SL = QString::fromLatin1(sl), gPromo.UniqueID = uniqueId;
        gPromo.Invuid = uniqueId, gPromo.ChangeType = qint16(changeType);
        gPromo.StartDate = gPromo.EndDate = QDateTime(QDate(2025, 5, 1), QTime(0, 0));
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    }
    static int count(const QString &sql)
    {
        QList<PromoPriceRecord> rows;
        EXPECT_TRUE(gfbPromo_rows_read(sql, rows));
        return int(rows.size());
    }
};

} // namespace

TEST_F(GroupRows, TheQuotedNumberWithItsBlankFindsTheGroupTombstonesToo)
{
    add(12, "10000002", 1);
    add(12, "10000001", 2, kChangeDeleted);
    add(0, "10000003", 3);
    add(121, "10000004", 4);
    QList<PromoPriceRecord> rows;
    ASSERT_TRUE(gfbPromo_rows_read(gfsGroup_rows_sql(12), rows));
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].SL, QStringLiteral("10000001")) << "by SL";
    EXPECT_EQ(rows[1].SL, QStringLiteral("10000002"));
}

TEST_F(GroupRows, DeletingAGroupRemovesItsRowsHardAndAnUnnumberedCodeNone)
{
    add(12, "10000001", 1);
    add(12, "10000002", 2, kChangeDeleted);
    add(13, "10000003", 3);
    add(0, "10000004", 4);
    EXPECT_EQ(gfiGroup_promos_delete(QStringLiteral("A1")), 0);
    EXPECT_EQ(count(QStringLiteral("SELECT * FROM PromoPrices")), 4);
    EXPECT_EQ(gfiGroup_promos_delete(QStringLiteral("12")), 2);
    EXPECT_EQ(count(QStringLiteral("SELECT * FROM PromoPrices")), 2) << "no tombstone is left behind";
    EXPECT_EQ(gfiGroup_promos_delete(QStringLiteral("12")), 0);
    EXPECT_TRUE(boxes.shown().isEmpty());
}
