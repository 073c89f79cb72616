#include "promo/PromoImport.h"

#include "common/Csv.h"
#include "platform/Recordset.h"
#include "promo/PromoList.h"
#include "store/Database.h"
#include "store/Departments.h"
#include "store/RecordOps.h"
#include "support/DemoStore.h"

#include <QFile>
#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2026, 11, 23);
const QString kHeader = QStringLiteral("Kind,Store,SL,Dept,GroupID,StartDate,EndDate,ChangeType,PriceChange,PromoPrice,Poll,UniqueID\r\n");

struct CliRun {
    int code = -1;
    QString out;
    QString err;
};

// The values a promo keeps through a list and an import; UniqueID and ChangeDate are the
// table's to assign anew.
auto kept(const PromoPriceRecord &p)
{
    return std::tuple(p.Store, p.SL, p.Dept, p.StartDate, p.EndDate, p.PriceChange, p.ChangeType, p.Poll, p.GroupID, p.Invuid);
}

class PromoImport : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kToday, QTime(9, 0)), 80));
        ASSERT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpBySQL, 0, false, false,
                                   QStringLiteral("SELECT * FROM ") + dbuaTable[kInventoryTable].sSqlFile +
                                       QStringLiteral(" WHERE Price > 5 ORDER BY RecordNum")));
        Recordset &set = *dbaRecordset[kInventoryTable];
        for (set.moveFirst(); !set.eof(); set.moveNext()) {
            gpDB_table_row_to_record(kInventoryTable);
            (gInventory.AllowDiscounts == QLatin1String("N") ? noDiscount : items) << gInventory;
        }
        ASSERT_GE(items.size(), 40);
        DeptTable depts;
        depts.read();
        ASSERT_TRUE(depts.find(items[0].DeptCode));
        dept = items[0].DeptCode.trimmed();
    }
    void TearDown() override { Clock::setFixed(QDateTime()); }

    CliRun run(const QStringList &arguments)
    {
        QProcess process;
        process.start(QStringLiteral(QUILLON_PROMO_EXE), QStringList{QStringLiteral("--datapath"), db.dataPath()} + arguments);
        CliRun result;
        if (!process.waitForFinished(180000) || process.exitStatus() != QProcess::NormalExit)
            return result;
        result.code = process.exitCode();
        result.out = QString::fromUtf8(process.readAllStandardOutput());
        result.err = QString::fromUtf8(process.readAllStandardError());
        return result;
    }

    QString file(const QString &name, const QString &text)
    {
        QFile f(db.file(name));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(text.toUtf8());
        return f.fileName();
    }

    static QList<PromoPriceRecord> rows()
    {
        QList<PromoPriceRecord> read;
        EXPECT_TRUE(gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices ORDER BY UniqueID"), read));
        return read;
    }

    QString itemLine(int i, int type, const QString &amount, const QString &from = QStringLiteral("2026-12-01"),
                     const QString &to = QStringLiteral("2026-12-07"))
    {
        return QStringLiteral("item,,%1,,,%2,%3,%4,%5,,,\r\n").arg(items[i].SL.trimmed(), from, to).arg(type).arg(amount);
    }

    // Item promos of all three types, a department promo and a daily promo, in one week.
    QString campaign()
    {
        return kHeader + itemLine(0, 0, (items[0].Price - Money::fromWhole(1)).toPlainText()) + itemLine(1, 1, QStringLiteral("0.5")) +
               itemLine(2, 2, QStringLiteral("15")) + QStringLiteral("dept,,,%1,,2026-12-01,2026-12-07,2,10,,,\r\n").arg(dept) +
               QStringLiteral("daily,,,,,2026-12-01,2026-12-07,2,5,,,\r\n");
    }

    TestDatabase db;
    QTemporaryDir program;
    QList<InventoryRecord> items, noDiscount;
    QString dept;
};

} // namespace

TEST_F(PromoImport, AListedFileOverlapsItselfAndRestoresTheRowsItListed)
{
    const CliRun seeded = run({QStringLiteral("import"), file(QStringLiteral("campaign.csv"), campaign())});
    ASSERT_EQ(seeded.code, 0) << seeded.out.toStdString() << seeded.err.toStdString();
    const QList<PromoPriceRecord> before = rows();
    ASSERT_EQ(before.size(), 5);
    ASSERT_TRUE(gfbInventory_ByRecordNum(items[1].RecordNum));
    EXPECT_EQ(gInventory.FlgPromoPrice, QStringLiteral("Y"));

    const CliRun listed = run({QStringLiteral("list"), QStringLiteral("--expired"), QStringLiteral("--format"), QStringLiteral("csv")});
    ASSERT_EQ(listed.code, 0) << listed.err.toStdString();
    const QString path = file(QStringLiteral("listed.csv"), listed.out);

    const CliRun dry = run({QStringLiteral("import"), path, QStringLiteral("--dry-run")});
    EXPECT_EQ(dry.code, 0) << dry.out.toStdString();
    const CsvText csv = gfCsv_read(listed.out.toUtf8());
    ASSERT_EQ(csv.records.size(), 6);
    for (const CsvRecord &record : csv.records.mid(1))
        EXPECT_TRUE(dry.out.contains(QStringLiteral("line %1: overlaps").arg(record.line)) &&
                    dry.out.contains(QStringLiteral("(UniqueID %1)\n").arg(record.fields.last())))
            << "line " << record.line << ":\n" << dry.out.toStdString();
    EXPECT_TRUE(dry.out.contains(QStringLiteral("Dry run, nothing written: 5 promo(s) fit"))) << dry.out.toStdString();
    EXPECT_EQ(rows().size(), 5);

    gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
    const CliRun again = run({QStringLiteral("import"), path});
    ASSERT_EQ(again.code, 0) << again.out.toStdString();
    QList<PromoPriceRecord> restored = rows();
    ASSERT_EQ(restored.size(), before.size());
    for (const PromoPriceRecord &old : before)
        EXPECT_TRUE(std::any_of(restored.cbegin(), restored.cend(), [&](const PromoPriceRecord &p) { return kept(p) == kept(old); }))
            << old.SL.toStdString() << old.Dept.toStdString() << " " << old.GroupID;
}

TEST_F(PromoImport, OneBadLineWritesNothingAndTheGoodLinesGoInAtOnce)
{
    QString good = kHeader;
    for (int i = 0; i < 40; ++i)
        good += itemLine(i, 1, QStringLiteral("0.25"));
    QString bad = good;
    bad += itemLine(3, 0, (items[3].Price + Money::fromUnits(100)).toPlainText());                           // line 42
    bad += itemLine(4, 1, QStringLiteral("1"), QStringLiteral("31/02/2026"));                                // line 43
    bad += QStringLiteral("item,,ZZZZZZZ9,,,2026-12-01,2026-12-07,1,1,,,\r\n");                             // line 44
    bad += QStringLiteral("item,,%1\"x,,,2026-12-01,2026-12-07,1,1,,,\r\n").arg(items[5].SL.trimmed());     // line 45
    if (!noDiscount.isEmpty())
        bad += itemLine(0, 1, QStringLiteral("1")).replace(items[0].SL.trimmed(), noDiscount[0].SL.trimmed()); // line 46

    const CliRun refused = run({QStringLiteral("import"), file(QStringLiteral("bad.csv"), bad)});
    EXPECT_EQ(refused.code, 1);
    for (const QString &expected : {QStringLiteral("line 42: refused: ' Promo Price ' Is Not Valid: The 'Promo Price ' is higher than the regular price."),
                                    QStringLiteral("line 43: refused: StartDate '31/02/2026' is not a date of the form yyyy-MM-dd"),
                                    QStringLiteral("line 44: refused: SL 'ZZZZZZZ9' is no item of this store"),
                                    QStringLiteral("line 45: refused: field 3 holds a quote but is not in quotes")})
        EXPECT_TRUE(refused.out.contains(expected)) << expected.toStdString() << "\n" << refused.out.toStdString();
    if (!noDiscount.isEmpty()) {
        EXPECT_TRUE(refused.out.contains(QStringLiteral("line 46: refused: Discounts not allowed on this item")));
    }
    EXPECT_TRUE(refused.out.contains(QStringLiteral("Nothing written:")));
    EXPECT_TRUE(rows().isEmpty());

    // A second station counts the rows while the good file goes in: it sees all or none.
    std::unique_ptr<Connection> station = db.connect();
    QProcess process;
    process.start(QStringLiteral(QUILLON_PROMO_EXE),
                  {QStringLiteral("--datapath"), db.dataPath(), QStringLiteral("import"), file(QStringLiteral("good.csv"), good)});
    QSet<int> seen;
    while (!process.waitForFinished(5)) {
        QSqlQuery count(station->database());
        if (count.exec(QStringLiteral("SELECT COUNT(*) FROM PromoPrices")) && count.next())
            seen.insert(count.value(0).toInt());
    }
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardOutput().toStdString();
    seen.remove(0);
    seen.remove(40);
    EXPECT_TRUE(seen.isEmpty()) << "a station saw part of the import";
    EXPECT_EQ(rows().size(), 40);
}

TEST_F(PromoImport, ShiftCopiesACampaignAWeekLaterWithNewNumbers)
{
    ASSERT_EQ(run({QStringLiteral("import"), file(QStringLiteral("campaign.csv"), campaign())}).code, 0);
    const QList<PromoPriceRecord> week = rows();
    const QStringList shift = {QStringLiteral("shift"), QStringLiteral("--kind"), QStringLiteral("item"), QStringLiteral("--from"),
                               QStringLiteral("2026-12-01"), QStringLiteral("--to"), QStringLiteral("2026-12-01"), QStringLiteral("--days"),
                               QStringLiteral("7")};
    const CliRun dry = run(shift + QStringList{QStringLiteral("--dry-run")});
    EXPECT_EQ(dry.code, 0) << dry.out.toStdString();
    EXPECT_EQ(rows().size(), week.size());

    const CliRun shifted = run(shift);
    ASSERT_EQ(shifted.code, 0) << shifted.out.toStdString();
    const QList<PromoPriceRecord> after = rows();
    ASSERT_EQ(after.size(), week.size() + 3);
    qint32 highest = 0;
    for (const PromoPriceRecord &p : week)
        highest = std::max(highest, p.UniqueID);
    for (const PromoPriceRecord &copy : after.mid(week.size())) {
        EXPECT_GT(copy.UniqueID, highest);
        PromoPriceRecord original = copy;
        original.StartDate = copy.StartDate.addDays(-7);
        original.EndDate = copy.EndDate.addDays(-7);
        EXPECT_TRUE(std::any_of(week.cbegin(), week.cend(), [&](const PromoPriceRecord &p) { return kept(p) == kept(original); }))
            << copy.SL.toStdString();
    }
    EXPECT_EQ(run({QStringLiteral("shift"), QStringLiteral("--kind"), QStringLiteral("group"), QStringLiteral("--from"),
                   QStringLiteral("2026-12-01"), QStringLiteral("--to"), QStringLiteral("2026-12-01"), QStringLiteral("--days"),
                   QStringLiteral("7")})
                  .code,
              2);
}

TEST_F(PromoImport, AStatementTheServerRefusesLeavesNothingWritten)
{
    PromoAddition addition;
    addition.lines_take(gfCsv_read(campaign().toUtf8()));
    ASSERT_TRUE(addition.check());
    ASSERT_FALSE(addition.refused());

    // The second line's insert is refused by the server itself.
    std::unique_ptr<Connection> station = db.connect();
    QSqlQuery ddl(station->database());
    const int refusedItem = items[1].RecordNum;
    if (TestDatabase::onPostgres()) {
        ASSERT_TRUE(ddl.exec(QStringLiteral("CREATE FUNCTION qln_refuse() RETURNS trigger AS $$ BEGIN IF NEW.invuid = %1 THEN "
                                            "RAISE EXCEPTION 'refused by the test'; END IF; RETURN NEW; END $$ LANGUAGE plpgsql")
                                 .arg(refusedItem)));
        ASSERT_TRUE(ddl.exec(QStringLiteral("CREATE TRIGGER qln_refuse BEFORE INSERT ON promoprices FOR EACH ROW EXECUTE FUNCTION qln_refuse()")));
    } else {
        ASSERT_TRUE(ddl.exec(QStringLiteral("CREATE TRIGGER qln_refuse BEFORE INSERT ON PromoPrices WHEN NEW.Invuid = %1 "
                                            "BEGIN SELECT RAISE(ABORT, 'refused by the test'); END")
                                 .arg(refusedItem)));
    }
    QString error;
    EXPECT_FALSE(addition.write(error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("line 3: the database refused it"))) << error.toStdString();
    EXPECT_TRUE(rows().isEmpty());
    // The first line's item flag went back with its row.
    ASSERT_TRUE(gfbInventory_ByRecordNum(items[0].RecordNum));
    EXPECT_EQ(gInventory.FlgPromoPrice, items[0].FlgPromoPrice);
    // The connection is fit for the next write.
    ddl.exec(QStringLiteral("DROP TRIGGER qln_refuse") + (TestDatabase::onPostgres() ? QStringLiteral(" ON promoprices") : QString()));
    EXPECT_TRUE(addition.write(error)) << error.toStdString();
    EXPECT_EQ(rows().size(), 5);
}

TEST(PromoImportLines, EachLineInErrorIsNamedWithItsReason)
{
    const QByteArray text = "\xEF\xBB\xBF" "Kind,SL,Dept,StartDate,EndDate,ChangeType,PriceChange,Note\r\n"
                            "item,12345678,,2026-12-01,2026-12-07,0,\"1.5\",\"a, b \"\"c\"\"\"\n"  // 2 fits
                            "group,12345678,,2026-12-01,2026-12-07,0,1,\r\n"                    // 3
                            "matrix,12345678,,2026-12-01,2026-12-07,0,1,\r\n"                   // 4
                            "coupon,12345678,,2026-12-01,2026-12-07,0,1,\r\n"                   // 5
                            "item,12345678,,2026-02-31,2026-12-07,0,1,\r\n"                     // 6
                            "item,12345678,,2026-12-08,2026-12-07,0,1,\r\n"                     // 7
                            "dept,,002.001.000,2026-12-01,2026-12-07,0,1,\r\n"                  // 8
                            "daily,,,2026-12-01,2026-12-07,1,5,\r\n"                            // 9
                            "item,12345678,,2026-12-01,2026-12-07,0,\"1,5\",\r\n"               // 10
                            "item,12345678,,2026-12-01,2026-12-07,0,1.23456,\r\n"               // 11
                            "item,12345678,,2026-12-01,2026-12-07,0,1,,extra\r\n"               // 12
                            "dept,,2.1.0,2026-12-01,2026-12-07,1,1,\r\n"                        // 13
                            "item,\"1234567.8\",,2026-12-01,2026-12-07,2,12.5,\r\n";            // 14 fits
    PromoAddition addition;
    addition.lines_take(gfCsv_read(text));
    QStringList told;
    for (const PromoAddNote &note : addition.notes())
        told << note.origin + QStringLiteral(": ") + note.text;
    const QStringList expected = {
        QStringLiteral("line 3: a group promo is kept for all members of its group at once: add it in the Group Promos window"),
        QStringLiteral("line 4: a matrix promo is kept for all members of its group at once: add it in the Matrix Promos window"),
        QStringLiteral("line 5: Kind 'coupon' is none of item, dept, group, matrix, daily"),
        QStringLiteral("line 6: StartDate '2026-02-31' is not a date of the form yyyy-MM-dd"),
        QStringLiteral("line 7: EndDate is before StartDate"),
        QStringLiteral("line 8: ChangeType '0' is not offered for a dept promo"),
        QStringLiteral("line 9: ChangeType '1' is not offered for a daily promo"),
        QStringLiteral("line 10: PriceChange '1,5' is not an amount like 12.5 or 0.9975"),
        QStringLiteral("line 11: PriceChange '1.23456' is not an amount like 12.5 or 0.9975"),
        QStringLiteral("line 12: 9 fields where the header has 8"),
        QStringLiteral("line 13: Dept '2.1.0' is no department code DDD.CCC.SSS"),
    };
    EXPECT_EQ(told, expected);
    ASSERT_EQ(addition.drafts().size(), 2);
    EXPECT_EQ(addition.drafts()[0].amount, Money::fromUnits(15000));
    EXPECT_EQ(addition.drafts()[1].sl, QStringLiteral("12345678"));
}

TEST(PromoImportLines, AFileWithoutTheColumnsItNeedsIsRefusedAtItsHeader)
{
    PromoAddition addition;
    addition.lines_take(gfCsv_read("Kind,SL,Dept,StartDate,EndDate,ChangeType\r\nitem,1,,2026-12-01,2026-12-07,0\r\n"));
    ASSERT_EQ(addition.notes().size(), 1);
    EXPECT_EQ(addition.notes()[0].origin + QStringLiteral(": ") + addition.notes()[0].text,
              QStringLiteral("line 1: the header has no column PriceChange"));
    EXPECT_TRUE(addition.drafts().isEmpty());

    PromoAddition huge;
    huge.lines_take(gfCsv_read(kHeader.toUtf8() + "item,," + QByteArray(10 * 1024 * 1024, '7') + ",,,2026-12-01,2026-12-07,0,1,,,\r\n"));
    ASSERT_EQ(huge.notes().size(), 1);
    EXPECT_TRUE(huge.notes()[0].text.startsWith(QStringLiteral("SL '777"))) << huge.notes()[0].text.left(40).toStdString();
}
