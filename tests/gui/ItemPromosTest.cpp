// The item promos window and its editor, driven as a user drives them, on a demo data set.
#include "promo/frmMain.h"

#include "DemoData.h"
#include "common/DateForms.h"
#include "common/ProcessState.h"
#include "config/Country.h"
#include "lookup/FlexGrid.h"
#include "output/PrintState.h"
#include "output/frmSMPRNT_PREVIEW.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "promo/PromoList.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "support/DemoStore.h"
#include "support/FormFinder.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSqlQuery>
#include <QTest>
#include <gtest/gtest.h>
#include <tuple>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2025, 5, 14);
const QString kSL = QStringLiteral("10000007");
constexpr qint32 kInvuid = 18; // demo items are numbered from 11

QString shortDate(const QDate &date) { return gfsDate_short(date, QStringLiteral("N")); }

QLineEdit *txtEdit(QWidget &f, int i) { return child<QLineEdit>(f, QStringLiteral("txtEdit(%1)").arg(i)); }
QString label(QWidget &f, const QString &name) { return child<QLabel>(f, name)->text(); }

// What the user types into the editor: the option, its amount and the two dates.
struct EditorInput {
    int option = 0;
    QString amount;
    QString start, end;
    bool accept = true;
};

class ItemPromos : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kToday, QTime(10, 30)), 50));
        ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET AllowDiscounts='Y', Price=10, PriceIncTax=10.65, Cost=6 "
                                               "WHERE SL='10000007'")), 0);
        gCommon.MultiStore = QStringLiteral("N");
        boxes.clear();
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    static void addPromo(QDate start, QDate end, int type, Money change, qint32 uniqueId, const QString &poll = QStringLiteral("Y"),
                         const QString &sl = kSL, qint32 invuid = kInvuid)
    {
        gpPromo_clear();
        gPromo.Store = 1, gPromo.SL = sl, gPromo.Invuid = invuid, gPromo.UniqueID = uniqueId;
        gPromo.StartDate = QDateTime(start, QTime(0, 0)), gPromo.EndDate = QDateTime(end, QTime(0, 0));
        gPromo.ChangeDate = QDateTime(kToday, QTime(0, 0));
        gPromo.ChangeType = qint16(type), gPromo.PriceChange = change, gPromo.Poll = poll;
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    }
    static QList<PromoPriceRecord> promos()
    {
        QList<PromoPriceRecord> rows;
        EXPECT_TRUE(gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices ORDER BY UniqueID"), rows));
        return rows;
    }

    // The window on the one item, as the inventory program opens it.
    std::unique_ptr<frmMain> openOnItem()
    {
        gbItemMode = true;
        gsSL = kSL;
        auto form = std::make_unique<frmMain>();
        form->show();
        return form;
    }
    FlexGrid &grid(QWidget &form) { return *child<FlexGrid>(form, QStringLiteral("fgrdItems")); }

    // Runs `press` with the editor played from `input`; records its title.
    void withEditor(const EditorInput &input, const std::function<void()> &press)
    {
        ScopedModalScript script([&](QDialog &editor) {
            editorTitle = editor.windowTitle();
            editorStart = txtEdit(editor, 1)->text();
            editorAmount = txtEdit(editor, 3 + input.option)->text();
            child<QRadioButton>(editor, QStringLiteral("Option1(%1)").arg(input.option))->click();
            if (!input.amount.isNull())
                typeInto(txtEdit(editor, 3 + input.option), input.amount);
            if (!input.start.isNull())
                typeInto(txtEdit(editor, 1), input.start);
            if (!input.end.isNull())
                typeInto(txtEdit(editor, 2), input.end);
            acceptEnabled = cmd(editor, QStringLiteral("cmdAcceptCancel(0)"))->isEnabled();
            if (beforeAccept)
                beforeAccept();
            if (input.accept)
                QTest::keyClick(&editor, Qt::Key_F10);
            editorStayedOpen = editor.isVisible();
        });
        press();
    }
    // What happens while the user has typed and not yet accepted, as another station acts.
    std::function<void()> beforeAccept;

    // The database refuses every `event` (INSERT, UPDATE) on `table` with `reason`.
    void refuseWrites(const QString &event, const QString &table, const QString &reason)
    {
        auto station = db.connect();
        QSqlQuery query(station->database());
        const QString name = QStringLiteral("refuse_") + event.toLower();
        if (TestDatabase::onPostgres()) {
            ASSERT_TRUE(query.exec(QStringLiteral("CREATE FUNCTION %1() RETURNS trigger LANGUAGE plpgsql AS "
                                                  "$$ BEGIN RAISE EXCEPTION '%2'; END $$")
                                       .arg(name, reason)));
            ASSERT_TRUE(query.exec(QStringLiteral("CREATE TRIGGER %1 BEFORE %2 ON %3 FOR EACH ROW EXECUTE FUNCTION %1()")
                                       .arg(name, event, table.toLower())));
        } else {
            ASSERT_TRUE(query.exec(QStringLiteral("CREATE TRIGGER %1 BEFORE %2 ON %3 BEGIN SELECT RAISE(ABORT, '%4'); END")
                                       .arg(name, event, table, reason)));
        }
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
    QString editorTitle, editorStart, editorAmount;
    bool acceptEnabled = false, editorStayedOpen = false;
};

} // namespace

// The road from the menu: no item yet, F3 finds one in the lookup by its description.
TEST_F(ItemPromos, F3FindsTheItemInTheLookupAndListsItsPromos)
{
    addPromo(kToday, kToday.addDays(6), kChangeBy, Money::fromWhole(2), 1);
    ASSERT_EQ(gfiInventory_BySL(kSL, true), -1);
    const QString description = gInventory.Description.trimmed();
    gbItemMode = false;
    frmMain form;
    form.show();
    EXPECT_EQ(grid(form).Rows(), 2);
    EXPECT_TRUE(grid(form).TextMatrix(1, 4).isEmpty()) << "nothing listed before an item is chosen";
    QString lookupTitle;
    {
        ScopedModalScript lookup([&](QDialog &window) {
            lookupTitle = window.windowTitle();
            auto *search = child<QLineEdit>(window, QStringLiteral("txtEditValue"));
            QTest::keyClicks(search, description);
            QTest::keyClick(search, Qt::Key_Return);
        });
        QTest::keyClick(&form, Qt::Key_F3);
    }
    EXPECT_EQ(lookupTitle, QStringLiteral("Find Inventory Item"));
    EXPECT_EQ(gsSL, kSL);
    EXPECT_EQ(label(form, QStringLiteral("lblEditData(0)")), QStringLiteral("1000000.7"));
    EXPECT_EQ(label(form, QStringLiteral("lblEditData(2)")).trimmed(), description);
    ASSERT_EQ(grid(form).Rows(), 2);
    EXPECT_EQ(grid(form).TextMatrix(1, 4), shortDate(kToday));
    EXPECT_EQ(grid(form).TextMatrix(1, 3), QStringLiteral("8.00"));
}

// A promo still runs on its last day: both faces list one ending today, and the item list's
// statement compares with today at midnight.
TEST_F(ItemPromos, APromoEndingTodayIsListedInBothFaces)
{
    addPromo(kToday.addDays(-3), kToday, kChangeBy, Money::fromWhole(1), 1);
    addPromo(kToday.addDays(-3), kToday.addDays(-1), kChangeBy, Money::fromWhole(2), 2);
    QStringList sent;
    dbConnection().setStatementObserver([&](const QString &sql) { sent << sql; });
    auto form = openOnItem();
    dbConnection().setStatementObserver(nullptr);
    EXPECT_TRUE(sent.contains(QStringLiteral("SELECT * FROM PromoPrices WHERE Invuid=18AND EndDate >='2025-05-14 00:00:00'")))
        << sent.join(QLatin1Char('\n')).toStdString();
    ASSERT_EQ(grid(*form).Rows(), 2) << "yesterday's promo has ended";
    EXPECT_EQ(grid(*form).TextMatrix(1, 5), shortDate(kToday));
    QTest::keyClick(form.get(), Qt::Key_F4);
    ASSERT_EQ(grid(*form).Rows(), 2);
    EXPECT_EQ(grid(*form).TextMatrix(1, 0), QStringLiteral("1000000.7"));
    EXPECT_EQ(grid(*form).TextMatrix(1, 5), shortDate(kToday));
}

TEST_F(ItemPromos, OnePromoFromTheEditorToTheTableAndBackIntoTheGrid)
{
    const qint32 highest = 41;
    addPromo(kToday.addDays(-40), kToday.addDays(-30), kChangeBy, Money::fromWhole(1), highest, QStringLiteral("Y"),
             QStringLiteral("10000009"), 20);
    auto form = openOnItem();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("ZOR Quillon"));
    EXPECT_EQ(label(*form, QStringLiteral("lblEditData(0)")), QStringLiteral("1000000.7"));
    EXPECT_FALSE(child<QLabel>(*form, QStringLiteral("LblTraining"))->isVisible());
    EXPECT_TRUE(cmd(*form, QStringLiteral("cmdEdit(0)"))->isEnabled()) << "a first promo can be added";
    EXPECT_FALSE(cmd(*form, QStringLiteral("cmdEdit(1)"))->isEnabled());
    EXPECT_FALSE(cmd(*form, QStringLiteral("cmdPrint"))->isEnabled());

    withEditor({2, QStringLiteral("25"), shortDate(kToday), shortDate(kToday.addDays(10))},
               [&] { QTest::keyClick(form.get(), Qt::Key_F2); });
    EXPECT_EQ(editorTitle, QStringLiteral("Add Promo Price"));
    EXPECT_EQ(editorStart, shortDate(kToday)) << "a new promo starts today";
    EXPECT_FALSE(editorStayedOpen);

    const QList<PromoPriceRecord> rows = promos();
    ASSERT_EQ(rows.size(), 2);
    const PromoPriceRecord &p = rows[1];
    EXPECT_EQ(p.ChangeType, kChangeByPercent);
    EXPECT_EQ(p.PriceChange, Money::fromWhole(25));
    EXPECT_EQ(p.Poll, QStringLiteral("Y"));
    EXPECT_EQ(p.Store, gCommon.StoreNumber);
    EXPECT_EQ(p.Invuid, kInvuid);
    EXPECT_EQ(p.SL, kSL);
    EXPECT_EQ(p.UniqueID, highest + 1);
    EXPECT_EQ(p.GroupID, 0);
    EXPECT_EQ(p.ChangeDate, QDateTime(kToday, QTime(0, 0)));
    EXPECT_EQ(p.StartDate.date(), kToday);
    EXPECT_EQ(p.EndDate.date(), kToday.addDays(10));
    ASSERT_TRUE(gfbInventory_ByRecordNum(kInvuid));
    EXPECT_EQ(gInventory.FlgPromoPrice, QStringLiteral("Y"));

    FlexGrid &g = grid(*form);
    ASSERT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.TextMatrix(1, 2), QStringLiteral("10.00"));
    EXPECT_EQ(g.TextMatrix(1, 3), QStringLiteral("7.50"));
    EXPECT_EQ(g.TextMatrix(1, 6), QStringLiteral("By Percent"));
    EXPECT_EQ(g.TextMatrix(1, 7), QStringLiteral("25.00"));
    EXPECT_EQ(g.TextMatrix(1, 8), QStringLiteral("20250514"));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();

    // A second promo inside the first one's range: the warning comes after the save.
    withEditor({0, QStringLiteral("9"), shortDate(kToday.addDays(5)), shortDate(kToday.addDays(6))},
               [&] { QTest::keyClick(form.get(), Qt::Key_F2); });
    ASSERT_EQ(promos().size(), 3);
    EXPECT_EQ(promos()[2].UniqueID, highest + 2);
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Promo Prices"));
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(QStringLiteral("You have over-lapping date ranges on your Items.")));
}

// Two promos of the item start on one day: each is found by its end and amount, for a change
// and for a delete, while the keyed walk still steps over the second of them.
TEST_F(ItemPromos, EachOfTwoPromosWithOneStartDateCanBeChangedAndDeleted)
{
    addPromo(kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1);
    addPromo(kToday, kToday.addDays(9), kChangeBy, Money::fromWhole(2), 2);
    addPromo(kToday.addDays(20), kToday.addDays(25), kChangeBy, Money::fromWhole(3), 3);
    gfiDB_Execute(QStringLiteral("UPDATE PromoPrices SET Poll=' ', ChangeDate='20250101 00:00:00'"));
    gPromo.SL = kSL, gPromo.StartDate = QDateTime(kToday, QTime(0, 0));
    ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpEqual, 2));
    ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpGetNext, 2));
    EXPECT_EQ(gPromo.UniqueID, 3) << "\"Get Next\" is strict on the whole key";

    auto form = openOnItem();
    FlexGrid &g = grid(*form);
    ASSERT_EQ(g.Rows(), 4);
    auto rowOf = [&](const QString &amount) {
        for (int row = 1; row < g.Rows(); ++row)
            if (g.TextMatrix(row, 7) == amount)
                return row;
        return 0;
    };
    // The boxes shown, less the overlap warnings of the refill (the two promos of one day overlap).
    auto said = [&] {
        QStringList texts;
        for (const QString &text : boxes.texts())
            if (!text.startsWith(QStringLiteral("You have over-lapping")))
                texts << text;
        return texts;
    };
    auto byId = [&](qint32 uid) {
        for (const PromoPriceRecord &p : promos())
            if (p.UniqueID == uid)
                return p;
        return PromoPriceRecord();
    };

    // A change keeps the row's UniqueID and sends it to the stores again, dated today.
    for (const auto &[amount, changed, uid] : {std::tuple{"1.00", "1.5", 1}, std::tuple{"2.00", "2.5", 2}}) {
        g.selectWholeRow(rowOf(QString::fromLatin1(amount)));
        boxes.clear();
        withEditor({1, QString::fromLatin1(changed), QString(), QString()}, [&] { QTest::keyClick(form.get(), Qt::Key_F8); });
        EXPECT_EQ(editorTitle, QStringLiteral("Change Promo Price"));
        EXPECT_TRUE(said().isEmpty()) << said().join(QLatin1Char('|')).toStdString();
        const PromoPriceRecord p = byId(uid);
        EXPECT_EQ(p.PriceChange, Money::fromDouble(QString::fromLatin1(changed).toDouble())) << uid;
        EXPECT_EQ(p.Poll, QStringLiteral("Y"));
        EXPECT_EQ(p.ChangeDate, QDateTime(kToday, QTime(0, 0)));
        EXPECT_EQ(p.StartDate.date(), kToday);
    }
    EXPECT_EQ(promos().size(), 3);
    EXPECT_EQ(byId(3).PriceChange, Money::fromWhole(3)) << "the later promo is untouched";
    EXPECT_EQ(byId(3).Poll, QStringLiteral(" "));

    // Head office: F5 leaves a tombstone of that very row, listed as "DELETED".
    gCommon.MultiStore = QStringLiteral("H");
    for (const auto &[amount, uid] : {std::pair{"2.50", 2}, std::pair{"1.50", 1}}) {
        const int row = rowOf(QString::fromLatin1(amount));
        ASSERT_GT(row, 0) << amount;
        g.selectWholeRow(row);
        boxes.clear();
        boxes.answer(MsgAnswer::Yes);
        QTest::keyClick(form.get(), Qt::Key_F5);
        EXPECT_EQ(said(), strings({"Are you sure you want to delete?\r\rReady To Delete"}));
        EXPECT_EQ(byId(uid).ChangeType, kChangeDeleted) << uid;
    }
    EXPECT_EQ(byId(3).ChangeType, kChangeBy);
    int deleted = 0;
    for (int row = 1; row < g.Rows(); ++row) {
        if (g.TextMatrix(row, 5) != QStringLiteral("DELETED"))
            continue;
        ++deleted;
        EXPECT_TRUE(g.TextMatrix(row, 6).isEmpty()) << "a tombstone has no type";
        EXPECT_EQ(g.TextMatrix(row, 3), row == 1 ? QStringLiteral(".00") : g.TextMatrix(row - 1, 3));
    }
    EXPECT_EQ(deleted, 2);

    // The row gone meanwhile: the user hears so, and nothing is marked.
    const int later = rowOf(QStringLiteral("3.00"));
    gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices WHERE UniqueID = 3"));
    g.selectWholeRow(later);
    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    QTest::keyClick(form.get(), Qt::Key_F5);
    EXPECT_EQ(said().value(1), QStringLiteral("PromoPrice record not retrieved"));
    for (const PromoPriceRecord &p : promos())
        EXPECT_NE(p.UniqueID, 3);

    // An update the server refuses, after another station changed the row.
    addPromo(kToday.addDays(30), kToday.addDays(35), kChangeBy, Money::fromWhole(4), 4);
    form = openOnItem();
    FlexGrid &g2 = grid(*form);
    for (int row = 1; row < g2.Rows(); ++row)
        if (g2.TextMatrix(row, 7) == QStringLiteral("4.00"))
            g2.selectWholeRow(row);
    auto station2 = db.connect();
    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    boxes.meanwhile([&] { station2->execute(QStringLiteral("UPDATE PromoPrices SET Poll = 'N' WHERE UniqueID = 4")); });
    QTest::keyClick(form.get(), Qt::Key_F5);
    ASSERT_EQ(said().size(), 2);
    EXPECT_EQ(boxes.shown()[1].text, QStringLiteral("Unable to delete promo"));
    EXPECT_EQ(boxes.shown()[1].title, QStringLiteral("Error"));
    EXPECT_EQ(byId(4).ChangeType, kChangeBy);

    // One store: the statement removes every promo of the item that starts on that date.
    gCommon.MultiStore = QStringLiteral(" ");
    addPromo(kToday, kToday.addDays(2), kChangeTo, Money::fromWhole(8), 5);
    form = openOnItem();
    FlexGrid &g3 = grid(*form);
    for (int row = 1; row < g3.Rows(); ++row)
        if (g3.TextMatrix(row, 7) == QStringLiteral("8.00"))
            g3.selectWholeRow(row);
    boxes.answer(MsgAnswer::Yes);
    QTest::keyClick(form.get(), Qt::Key_F5);
    QList<int> left;
    for (const PromoPriceRecord &p : promos())
        left << p.UniqueID;
    EXPECT_EQ(left, QList<int>{4});
}

// Another station removes the promo while it is listed here: no other row takes the change.
TEST_F(ItemPromos, APromoRemovedMeanwhileIsToldAndNoOtherRowTakesTheChange)
{
    addPromo(kToday.addDays(-40), kToday.addDays(-30), kChangeBy, Money::fromWhole(1), 1, QStringLiteral("Y"),
             QStringLiteral("10000009"), 20); // the table's first row, of another item
    addPromo(kToday, kToday.addDays(5), kChangeBy, Money::fromWhole(2), 2);
    addPromo(kToday.addDays(10), kToday.addDays(15), kChangeBy, Money::fromWhole(3), 3);
    auto form = openOnItem();
    FlexGrid &g = grid(*form);
    ASSERT_EQ(g.Rows(), 3);
    auto select = [&](const QString &amount) {
        for (int row = 1; row < g.Rows(); ++row)
            if (g.TextMatrix(row, 7) == amount)
                g.selectWholeRow(row);
    };
    auto station2 = db.connect();
    auto firstRowIntact = [&] {
        const QList<PromoPriceRecord> rows = promos();
        ASSERT_FALSE(rows.isEmpty());
        EXPECT_EQ(rows[0].UniqueID, 1);
        EXPECT_EQ(rows[0].SL, QStringLiteral("10000009"));
        EXPECT_EQ(rows[0].PriceChange, Money::fromWhole(1));
        EXPECT_EQ(rows[0].EndDate.date(), kToday.addDays(-30));
    };

    // Gone before F8: the editor doesn't open.
    ASSERT_TRUE(station2->execute(QStringLiteral("DELETE FROM PromoPrices WHERE UniqueID = 2")));
    select(QStringLiteral("2.00"));
    withEditor({1, QStringLiteral("1.5"), QString(), QString()}, [&] { QTest::keyClick(form.get(), Qt::Key_F8); });
    EXPECT_EQ(boxes.texts(), strings({"PromoPrice record not retrieved"}));
    EXPECT_TRUE(editorTitle.isEmpty());
    EXPECT_EQ(promos().size(), 2);
    firstRowIntact();

    // Gone while the editor is open: Accept says so and the dialog stays for Esc.
    boxes.clear();
    select(QStringLiteral("3.00"));
    beforeAccept = [&] { station2->execute(QStringLiteral("DELETE FROM PromoPrices WHERE UniqueID = 3")); };
    withEditor({1, QStringLiteral("2.5"), QString(), QString()}, [&] { QTest::keyClick(form.get(), Qt::Key_F8); });
    ASSERT_EQ(boxes.texts().size(), 1);
    EXPECT_TRUE(boxes.texts()[0].startsWith(QStringLiteral("Promo not updated\r\rRow cannot be located for updating")))
        << boxes.texts()[0].toStdString();
    EXPECT_TRUE(editorStayedOpen);
    EXPECT_EQ(promos().size(), 1);
    firstRowIntact();
}

// The item refuses its promo flag: the promo row stands, the user hears what was written, and
// the dialog closes so that a second Accept can't add the promo twice.
TEST_F(ItemPromos, AnItemThatRefusesItsFlagKeepsTheSavedPromoAndTheUserHearsWhatWasWritten)
{
    refuseWrites(QStringLiteral("UPDATE"), QStringLiteral("invt1"), QStringLiteral("items are locked"));
    auto form = openOnItem();
    withEditor({2, QStringLiteral("25"), shortDate(kToday), shortDate(kToday.addDays(10))},
               [&] { QTest::keyClick(form.get(), Qt::Key_F2); });
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(
        QStringLiteral("The promo was saved, but the item could not be marked as having a promo.")));
    EXPECT_TRUE(boxes.shown()[0].text.contains(QStringLiteral("items are locked"))) << "the database's reason";
    EXPECT_FALSE(editorStayedOpen);
    ASSERT_EQ(promos().size(), 1);
    EXPECT_EQ(promos()[0].PriceChange, Money::fromWhole(25));
    EXPECT_EQ(grid(*form).Rows(), 2) << "the list shows the promo written";
    ASSERT_TRUE(gfbInventory_ByRecordNum(kInvuid));
    EXPECT_NE(gInventory.FlgPromoPrice, QStringLiteral("Y"));
}

// A refused promo row: nothing is written, the item stays unmarked, and the dialog stays open.
TEST_F(ItemPromos, APromoRowTheDatabaseRefusesIsToldAndTheItemIsNotMarked)
{
    refuseWrites(QStringLiteral("INSERT"), QStringLiteral("PromoPrices"), QStringLiteral("promos are locked"));
    auto form = openOnItem();
    withEditor({2, QStringLiteral("25"), shortDate(kToday), shortDate(kToday.addDays(10))},
               [&] { QTest::keyClick(form.get(), Qt::Key_F2); });
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(QStringLiteral("Promo not inserted\r\r"))) << boxes.shown()[0].text.toStdString();
    EXPECT_TRUE(boxes.shown()[0].text.contains(QStringLiteral("promos are locked")));
    EXPECT_TRUE(editorStayedOpen);
    EXPECT_TRUE(promos().isEmpty());
    ASSERT_TRUE(gfbInventory_ByRecordNum(kInvuid));
    EXPECT_NE(gInventory.FlgPromoPrice, QStringLiteral("Y"));
}

TEST_F(ItemPromos, AFailedAllItemsFillEndsWithItsOwnMessage)
{
    addPromo(kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1);
    auto form = openOnItem();
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("ALTER TABLE PromoPrices RENAME TO PromoGone")));
    dbuaTable[kPromoTable].sSqlFile = QStringLiteral("PromoGone"); // counted, but the list's statement is refused
    boxes.clear();
    QTest::keyClick(form.get(), Qt::Key_F4);
    EXPECT_EQ(boxes.texts(), strings({"Error occured while populating Grid"}));
    EXPECT_TRUE(grid(*form).TextMatrix(1, 0).isEmpty());
    EXPECT_FALSE(cmd(*form, QStringLiteral("cmdEdit(1)"))->isEnabled());
    dbConnection().execute(QStringLiteral("ALTER TABLE PromoGone RENAME TO PromoPrices"));
}

// Only neighbours in the list are compared, and each overlapping pair has its own box.
TEST_F(ItemPromos, TheOverlapWarningComesOnceForEachOverlappingPair)
{
    addPromo(kToday, kToday.addDays(10), kChangeBy, Money::fromWhole(1), 1);
    addPromo(kToday.addDays(5), kToday.addDays(12), kChangeBy, Money::fromWhole(1), 2);
    addPromo(kToday.addDays(12), kToday.addDays(20), kChangeBy, Money::fromWhole(1), 3); // starts on the day before ends
    addPromo(kToday.addDays(30), kToday.addDays(40), kChangeBy, Money::fromWhole(1), 4);
    auto form = openOnItem();
    EXPECT_TRUE(boxes.shown().isEmpty()) << "the first fill is quiet";
    ASSERT_EQ(grid(*form).Rows(), 5);
    child<QCheckBox>(*form, QStringLiteral("chkExpired"))->click();
    ASSERT_EQ(boxes.shown().size(), 2);
    for (const MessageBoxSpec &box : boxes.shown()) {
        EXPECT_EQ(box.text, QStringLiteral("You have over-lapping date ranges on your Items.\r\n'Best Deal' price will be applied on Selling"));
        EXPECT_EQ(box.title, QStringLiteral("Promo Prices"));
        EXPECT_EQ(box.icon, MsgIcon::Information);
    }
}

TEST_F(ItemPromos, ChangingAGroupMemberAsksFirstAndTakesItOutOfTheGroup)
{
    addPromo(kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1);
    gfiDB_Execute(QStringLiteral("UPDATE PromoPrices SET GroupID = 12"));
    auto form = openOnItem();
    grid(*form).selectWholeRow(1);
    const QString question =
        QStringLiteral(" is a member of Group 12\r\nChanging this item will remove it from the group.\r\nChange Item?");

    boxes.answer(MsgAnswer::No);
    withEditor({1, QStringLiteral("2"), QString(), QString()}, [&] { QTest::keyClick(form.get(), Qt::Key_F8); });
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].text, question);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Group Item Selected"));
    EXPECT_TRUE(editorTitle.isEmpty()) << "No ends the change";
    EXPECT_EQ(promos()[0].GroupID, 12);

    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    withEditor({1, QStringLiteral("2"), QString(), QString()}, [&] { QTest::keyClick(form.get(), Qt::Key_F8); });
    EXPECT_EQ(editorTitle, QStringLiteral("Change Promo Price"));
    EXPECT_EQ(promos()[0].GroupID, 0);
    EXPECT_EQ(promos()[0].PriceChange, Money::fromWhole(2));
}

TEST_F(ItemPromos, PricesShowWithTaxWhenTheCountrySaysSo)
{
    ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET TaxCode='A' WHERE SL='10000007'")), 0);
    gCommon.TaxRate1 = 6.5f;
    gsTaxChangeDate.clear();
    gbIncludeTax = true;
    addPromo(kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1);
    auto form = openOnItem();
    EXPECT_EQ(grid(*form).TextMatrix(1, 2), QStringLiteral("10.65"));
    EXPECT_EQ(grid(*form).TextMatrix(1, 3), QStringLiteral("9.65"));
    QString listPrice;
    ScopedModalScript script([&](QDialog &editor) {
        listPrice = child<QLabel>(editor, QStringLiteral("lblItem(1)"))->text().trimmed();
        QTest::keyClick(&editor, Qt::Key_Escape);
    });
    QTest::keyClick(form.get(), Qt::Key_F2);
    EXPECT_EQ(listPrice, QStringLiteral("10.65"));
}

TEST_F(ItemPromos, AnItemThatTakesNoDiscountIsNotListed)
{
    ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET AllowDiscounts='N' WHERE SL='10000009'")), 0);
    addPromo(kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1, QStringLiteral("Y"), QStringLiteral("10000009"), 20);
    ASSERT_EQ(gfiInventory_BySL(QStringLiteral("10000009"), true), -1);
    const QString description = gInventory.Description.trimmed();
    gbItemMode = false;
    frmMain form;
    form.show();
    {
        ScopedModalScript lookup([&](QDialog &window) {
            auto *search = child<QLineEdit>(window, QStringLiteral("txtEditValue"));
            QTest::keyClicks(search, description);
            QTest::keyClick(search, Qt::Key_Return);
        });
        QTest::keyClick(&form, Qt::Key_F3);
    }
    EXPECT_EQ(boxes.texts(), strings({"Discounts not allowed on this item"}));
    EXPECT_TRUE(label(form, QStringLiteral("lblEditData(2)")).isEmpty());
    EXPECT_TRUE(grid(form).TextMatrix(1, 4).isEmpty()) << "no list";
    EXPECT_FALSE(cmd(form, QStringLiteral("cmdEdit(0)"))->isEnabled()) << "no add";
}

TEST_F(ItemPromos, EditorChecksThePriceAgainstTheRegularPriceAndCost)
{
    auto form = openOnItem();
    auto add = [&](const EditorInput &input) {
        boxes.clear();
        withEditor(input, [&] { QTest::keyClick(form.get(), Qt::Key_F2); });
        return boxes.texts();
    };
    const QString start = shortDate(kToday), end = shortDate(kToday.addDays(7));
    const QString higher = QStringLiteral("' Promo Price ' Is Not Valid\r\rThe 'Promo Price ' is higher than the regular price.");
    const QString zero = QStringLiteral("' Promo Price ' Is Not Valid\r\rThe 'Promo Price ' must be greater than zero.");

    EXPECT_EQ(add({0, QStringLiteral("10.01"), start, end}), QStringList{higher});
    EXPECT_TRUE(editorStayedOpen);
    EXPECT_EQ(add({1, QStringLiteral("-1"), start, end}), QStringList{higher}) << "a negative amount off";
    EXPECT_EQ(add({1, QStringLiteral("10"), start, end}), QStringList{zero});
    EXPECT_EQ(add({2, QStringLiteral("100"), start, end}), QStringList{zero});
    EXPECT_TRUE(editorStayedOpen) << "a price failure with the \"to\" box hidden leaves the dialog usable";
    EXPECT_TRUE(promos().isEmpty());

    // Equal to cost counts as below it; No keeps the dialog open.
    boxes.answer(MsgAnswer::No);
    const QStringList belowCost = add({0, QStringLiteral("6"), start, end});
    ASSERT_EQ(belowCost.size(), 1);
    EXPECT_EQ(belowCost[0], QStringLiteral("Promo Price Is Below Cost\r\rIs that what you want?"));
    EXPECT_EQ(boxes.shown()[0].defaultButton, 2);
    EXPECT_TRUE(promos().isEmpty());

    EXPECT_EQ(add({0, QStringLiteral("7x"), start, end}).value(0),
              QStringLiteral("'7x' is not a valid amount.\r\rEnter the amount as a number, for example 12.50."));
    EXPECT_TRUE(promos().isEmpty()) << "an amount that isn't money writes nothing";

    EXPECT_EQ(add({0, QString(), QString(), QString()}).value(0).section(QLatin1Char('\r'), 0, 0),
              QStringLiteral("' Promo Price ' Is Not Valid")) << "an empty amount reads as zero";
    EXPECT_EQ(add({0, QStringLiteral("9"), QStringLiteral(""), end}).value(0),
              QStringLiteral("'Starting Date' Is Not Valid\r\rEnter date using the 'mm-dd-yyyy' format."));
    EXPECT_TRUE(acceptEnabled) << "an empty starting date leaves Accept on";
    add({0, QStringLiteral("9"), start, QStringLiteral(""), false});
    EXPECT_FALSE(acceptEnabled) << "an empty ending date turns Accept off";

    // Equal to the regular price passes, and reversed dates pass as they always did.
    EXPECT_TRUE(add({0, QStringLiteral("10"), end, start}).isEmpty());
    const QList<PromoPriceRecord> rows = promos();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].PriceChange, Money::fromWhole(10));
    EXPECT_GT(rows[0].StartDate, rows[0].EndDate);
}

TEST_F(ItemPromos, PurgesInStoreAndHeadOfficeMode)
{
    const QDate past = kToday.addDays(-20), expired = kToday.addDays(-1);
    auto seed = [&] {
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
        addPromo(past, expired, kChangeBy, Money::fromWhole(1), 1);                       // expired, live
        addPromo(past, kToday.addDays(5), kChangeBy, Money::fromWhole(1), 2);             // running
        addPromo(past, kToday.addDays(5), kChangeBy, Money::fromWhole(1), 3, QStringLiteral("Y"), QStringLiteral("10000009"), 20);
    };
    seed();
    auto form = openOnItem();
    auto press = [&](Qt::Key key, std::initializer_list<MsgAnswer> answers) {
        boxes.clear();
        for (MsgAnswer a : answers)
            boxes.answer(a);
        QTest::keyClick(form.get(), key);
    };
    const QString log = db.file(QStringLiteral("PVSW.log"));

    // One store: F6 with expired rows stops before touching any; F7 removes them.
    press(Qt::Key_F6, {MsgAnswer::Yes});
    EXPECT_EQ(promos().size(), 3);
    ASSERT_EQ(boxes.shown().size(), 2);
    EXPECT_TRUE(boxes.shown()[1].text.startsWith(QStringLiteral("Expired promos of one item can only be purged")));
    EXPECT_TRUE(cmd(*form, QStringLiteral("cmdPurge(0)"))->isEnabled()) << "the window stays usable";
    press(Qt::Key_F7, {MsgAnswer::Yes});
    EXPECT_EQ(promos().size(), 2);
    EXPECT_EQ(boxes.texts().last(), QStringLiteral("1 Promo(s) Purged"));

    // Head office, no polling: F6 takes every promo of the item, expired or not.
    gCommon.MultiStore = QStringLiteral("H");
    seed();
    press(Qt::Key_F6, {MsgAnswer::Yes, MsgAnswer::No});
    EXPECT_EQ(boxes.shown()[1].title, QStringLiteral("Purging Promo's"));
    ASSERT_EQ(promos().size(), 1);
    EXPECT_EQ(promos()[0].UniqueID, 3);

    // Head office with polling: the refused UPDATE goes to the log and no row changes;
    // a tombstone already polled goes with the rest of its item.
    seed();
    form = openOnItem(); // the last purge left the item without promos, and F6 off
    QFile::remove(log);
    press(Qt::Key_F6, {MsgAnswer::Yes, MsgAnswer::Yes});
    EXPECT_EQ(promos().size(), 3);
    for (const PromoPriceRecord &p : promos())
        EXPECT_EQ(p.ChangeType, kChangeBy);
    EXPECT_TRUE(db.readFile(QStringLiteral("PVSW.log")).contains(
        QStringLiteral("UPDATE & dbuaTable(itable).sSqlFile & set changetype =99, changeDate = ")));
    addPromo(past, expired, kChangeDeleted, Money::fromWhole(1), 4, QStringLiteral(" "), QStringLiteral("10000009"), 20);
    press(Qt::Key_F7, {MsgAnswer::Yes, MsgAnswer::Yes});
    QList<int> left;
    for (const PromoPriceRecord &p : promos())
        left << p.UniqueID;
    EXPECT_EQ(left, (QList<int>{1, 2})) << "the polled tombstone took every row of its item";
    EXPECT_EQ(boxes.shown().size(), 2) << "no count with polling";
}

TEST_F(ItemPromos, AllItemsFaceListsSortsAndSearches)
{
    addPromo(kToday, kToday.addDays(3), kChangeByPercent, Money::fromWhole(20), 1);
    addPromo(kToday.addDays(-9), kToday.addDays(-2), kChangeBy, Money::fromWhole(1), 2); // expired
    addPromo(kToday.addDays(-1), kToday.addDays(30), kChangeBy, Money::fromWhole(1), 3, QStringLiteral("Y"),
             QStringLiteral("10000009"), 20);
    addPromo(kToday.addDays(-1), kToday.addDays(30), kChangeBy, Money::fromWhole(1), 4, QStringLiteral("Y"),
             QStringLiteral("10000008"), 999999); // its item is gone
    auto form = openOnItem();
    QTest::keyClick(form.get(), Qt::Key_F4);
    FlexGrid &g = grid(*form);
    EXPECT_EQ(label(*form, QStringLiteral("lblEditData(2)")), frmMain::kAllItemsCaption);
    EXPECT_TRUE(cmd(*form, QStringLiteral("cmdEdit(0)"))->isHidden());
    ASSERT_EQ(g.Rows(), 3);
    EXPECT_EQ(g.TextMatrix(0, 0), QStringLiteral("S/L"));
    EXPECT_EQ(g.TextMatrix(1, 7), QStringLiteral("20.00%"));
    EXPECT_NEAR(double(g.ColWidth(1)) / g.ColWidth(2), 2200.0 / 825, 0.05) << "All Items widths";

    // Sorting on the ending date goes by its hidden twin; a second click turns it round.
    emit g.cellClicked(0, 5);
    EXPECT_EQ(g.TextMatrix(1, 0), QStringLiteral("1000000.7"));
    emit g.cellClicked(0, 5);
    EXPECT_EQ(g.TextMatrix(1, 0), QStringLiteral("1000000.9"));
    EXPECT_EQ(child<QGroupBox>(*form, QStringLiteral("FraSearch"))->title(), QStringLiteral("Search ending Date for"));
    emit g.cellClicked(0, 0);
    QTest::keyClicks(child<QLineEdit>(*form, QStringLiteral("txtSearch")), QStringLiteral("1000000.9"));
    EXPECT_EQ(g.Row(), 2);

    // With expired promos shown the expired row comes in as well.
    child<QCheckBox>(*form, QStringLiteral("chkExpired"))->click();
    EXPECT_EQ(g.Rows(), 4);
}

TEST_F(ItemPromos, F11PrintsTheListUnderTheItemAndStoreHeads)
{
    addPromo(kToday, kToday.addDays(3), kChangeByPercent, Money::fromWhole(20), 1);
    addPromo(kToday.addDays(4), kToday.addDays(9), kChangeBy, Money::fromWhole(1), 2);
    auto form = openOnItem();
    ASSERT_TRUE(cmd(*form, QStringLiteral("cmdPrint"))->isEnabled());
    QStringList heads;
    std::vector<QStringList> rows;
    ScopedModalScript script([&](QDialog &dialog) {
        auto *preview = qobject_cast<frmSMPRNT_PREVIEW *>(&dialog);
        ASSERT_NE(preview, nullptr);
        const PrintTable &table = preview->engine().tables().front();
        heads = table.head();
        for (int r = 0; r < table.rowCount(); ++r)
            rows.push_back(table.row(r));
    });
    QTest::keyClick(form.get(), Qt::Key_F11);
    EXPECT_EQ(sPrintTitle, label(*form, QStringLiteral("lblEditData(2)")).trimmed());
    EXPECT_EQ(gsaPrint_HeadLines, QStringList{QStringLiteral("1000000.7")});
    EXPECT_EQ(sPrintHeadLeft, QStringLiteral("Quillon Demo Store"));
    EXPECT_EQ(gfsPrint_Footer(), QStringLiteral("|Store #1Page %d"));
    // The item face hides S/L, description and the sort twins: they leave the list.
    EXPECT_EQ(heads, strings({"Reg. Price", "Promo Price", "Starting", "Ending", "Type Change", "Amount"}));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].value(2), shortDate(kToday));
}
