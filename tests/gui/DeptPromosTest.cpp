// The department promos window, its picker and its editor, driven as a user drives them.
#include "promo/frmDeptMain.h"

#include "DemoData.h"
#include "common/DateForms.h"
#include "common/ProcessState.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "promo/PromoList.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/Departments.h"
#include "store/RecordOps.h"
#include "support/DemoStore.h"
#include "support/FormFinder.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2025, 5, 14);
const QString kCanned = QStringLiteral("002.001.000"); // level 2 under Grocery
const QString kGrocery = QStringLiteral("002.000.000");
const QString kDairy = QStringLiteral("003.000.000");

QString shortDate(const QDate &date) { return gfsDate_short(date, QStringLiteral("N")); }

QLineEdit *txtEdit(QWidget &f, int i) { return child<QLineEdit>(f, QStringLiteral("txtEdit(%1)").arg(i)); }

class DeptPromos : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kToday, QTime(10, 30)), 20));
        gCommon.MultiStore = QStringLiteral(" ");
        gDept = DeptRecord();
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    static void addPromo(const QString &dept, QDate start, QDate end, int type, Money change, qint32 uniqueId,
                         const QString &poll = QStringLiteral("Y"))
    {
        gpPromo_clear();
        gPromo.Store = 1, gPromo.Dept = dept, gPromo.UniqueID = uniqueId;
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
    static FlexGrid &grid(QWidget &form) { return *child<FlexGrid>(form, QStringLiteral("fgrdItems")); }
    static QString caption(QWidget &form) { return child<QLabel>(form, QStringLiteral("lblEditData"))->text(); }

    std::unique_ptr<frmDeptMain> openOn(const QString &code)
    {
        gsDept = code;
        auto form = std::make_unique<frmDeptMain>();
        form->show();
        return form;
    }
    // F2 and the picker played by keyboard: `downs` rows below the first, then F10 or Esc.
    void pick(frmDeptMain &form, int downs, bool accept = true)
    {
        ScopedModalScript picker([&](QDialog &window) {
            pickerTitle = window.windowTitle();
            FlexGrid &g = grid(window);
            pickerRows.clear(), pickerColours.clear();
            for (int row = 1; row <= 4 && row < g.Rows(); ++row) {
                pickerRows << g.TextMatrix(row, 0) + QLatin1Char('|') + g.TextMatrix(row, 1);
                g.setRow(row);
                g.setCol(0);
                pickerColours << g.CellForeColor();
            }
            g.setRow(1);
            g.setFocus();
            for (int i = 0; i < downs; ++i)
                QTest::keyClick(g.view(), Qt::Key_Down);
            QTest::keyClick(&window, accept ? Qt::Key_F10 : Qt::Key_Escape);
        });
        QTest::keyClick(&form, Qt::Key_F2);
    }
    // The editor played: option, amount, dates, then F10 (or Esc).
    void edit(const std::function<void()> &press, int option, const QString &amount, const QString &start, const QString &end,
              bool accept = true)
    {
        ScopedModalScript script([&](QDialog &editor) {
            editorTitle = editor.windowTitle();
            editorAmount = txtEdit(editor, 3 + option)->text();
            child<QRadioButton>(editor, QStringLiteral("Option1(%1)").arg(option))->click();
            if (!amount.isNull())
                typeInto(txtEdit(editor, 3 + option), amount);
            if (!start.isNull())
                typeInto(txtEdit(editor, 1), start);
            if (!end.isNull())
                typeInto(txtEdit(editor, 2), end);
            acceptEnabled = cmd(editor, QStringLiteral("cmdAcceptCancel(0)"))->isEnabled();
            QTest::keyClick(&editor, accept ? Qt::Key_F10 : Qt::Key_Escape);
            editorStayedOpen = editor.isVisible();
        });
        press();
    }
    // A cell of the grid under the mouse.
    static QPoint cellPoint(FlexGrid &g, int row, int col)
    {
        const QModelIndex index = g.view()->model()->index(row - g.FixedRows(), col);
        g.view()->scrollTo(index);
        return g.view()->visualRect(index).center();
    }
    void markDelete(QWidget &form, int row)
    {
        FlexGrid &g = grid(form);
        QTest::mouseClick(g.view()->viewport(), Qt::LeftButton, {}, cellPoint(g, row, 6));
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
    QString pickerTitle, editorTitle, editorAmount;
    QStringList pickerRows;
    QList<quint32> pickerColours;
    bool acceptEnabled = false, editorStayedOpen = false;
};

} // namespace

TEST_F(DeptPromos, ARoadFromThePickerThroughTheEditorToTheTableAndTheList)
{
    addPromo(kGrocery, kToday, kToday.addDays(5), kChangeBy, Money::fromWhole(1), 70);
    auto form = openOn(QString());
    EXPECT_EQ(form->windowTitle(), QStringLiteral("ZOR Quillon"));
    EXPECT_FALSE(cmd(*form, QStringLiteral("cmdEdit(0)"))->isEnabled());
    EXPECT_FALSE(cmd(*form, QStringLiteral("CmdPurge(1)"))->isVisible());

    pick(*form, 2); // General, Grocery, Canned Goods
    EXPECT_EQ(pickerTitle, QStringLiteral("Select Department"));
    EXPECT_EQ(pickerRows, strings({"001.000.000|General", "002.000.000|Grocery", "   002.001.000|Grocery - Canned Goods",
                                       "      002.001.001|Grocery - Canned Goods - Canned Goods Basic"}));
    EXPECT_EQ(pickerColours.value(1), 0xFFu) << "level 1 in red";
    EXPECT_EQ(pickerColours.value(2), 0xFF0000u) << "level 2 in blue";
    EXPECT_NE(pickerColours.value(3), 0xFF0000u);
    EXPECT_EQ(gDept.DeptCode.trimmed(), kCanned);
    EXPECT_EQ(caption(*form), QStringLiteral("002.001.000 Grocery - Canned Goods"));
    EXPECT_TRUE(grid(*form).TextMatrix(1, 0).isEmpty()) << "the parent's promo is not listed under the child";
    EXPECT_TRUE(cmd(*form, QStringLiteral("cmdEdit(0)"))->isEnabled()) << "a first promo can be added";
    EXPECT_FALSE(cmd(*form, QStringLiteral("cmdEdit(1)"))->isEnabled());
    EXPECT_FALSE(cmd(*form, QStringLiteral("cmdEdit(2)"))->isEnabled());
    EXPECT_FALSE(cmd(*form, QStringLiteral("cmdPrint"))->isEnabled());

    gPromo.SL = QStringLiteral("10000007"); // an item read by another window stays in the shared buffer
    edit([&] { QTest::keyClick(form.get(), Qt::Key_A); }, 2, QStringLiteral("10"), shortDate(kToday), shortDate(kToday.addDays(9)));
    EXPECT_EQ(editorTitle, QStringLiteral("Add Promo Price"));
    EXPECT_FALSE(editorStayedOpen);
    const QList<PromoPriceRecord> rows = promos();
    ASSERT_EQ(rows.size(), 2);
    const PromoPriceRecord &p = rows[1];
    EXPECT_EQ(p.Dept, kCanned);
    EXPECT_TRUE(p.SL.trimmed().isEmpty()) << "a department row carries no item";
    EXPECT_EQ(p.Invuid, 0);
    EXPECT_EQ(p.Poll, QStringLiteral("Y"));
    EXPECT_EQ(p.Store, gCommon.StoreNumber);
    EXPECT_EQ(p.UniqueID, 71);
    EXPECT_EQ(p.ChangeType, kChangeByPercent);
    EXPECT_EQ(p.PriceChange, Money::fromWhole(10));
    EXPECT_EQ(p.StartDate, QDateTime(kToday, QTime(0, 0)));
    EXPECT_EQ(p.EndDate, QDateTime(kToday.addDays(9), QTime(0, 0)));
    EXPECT_EQ(p.ChangeDate, QDateTime(kToday, QTime(0, 0)));

    FlexGrid &g = grid(*form);
    ASSERT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.TextMatrix(1, 0), shortDate(kToday));
    EXPECT_EQ(g.TextMatrix(1, 2), QStringLiteral("By Percent"));
    EXPECT_EQ(g.TextMatrix(1, 3), QStringLiteral("10.00%"));
    EXPECT_TRUE(cmd(*form, QStringLiteral("cmdEdit(1)"))->isEnabled());
    EXPECT_TRUE(cmd(*form, QStringLiteral("cmdPrint"))->isEnabled()) << "rows to print";
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();

    // Cancel in the picker blanks the current code: the next refresh finds nothing.
    pick(*form, 0, false);
    EXPECT_TRUE(gDept.DeptCode.isEmpty());
    child<QCheckBox>(*form, QStringLiteral("chkExpired"))->click();
    EXPECT_TRUE(grid(*form).TextMatrix(1, 0).isEmpty());
}

TEST_F(DeptPromos, ListsShowTodaysLastDayAndTheAllDepartmentsViewNamesEachDepartment)
{
    addPromo(kCanned, kToday.addDays(-3), kToday, kChangeBy, Money::parse(QStringLiteral("0.5")).value(), 1);
    addPromo(kCanned, kToday.addDays(-9), kToday.addDays(-1), kChangeBy, Money::fromWhole(2), 2);
    addPromo(kDairy, kToday, kToday.addDays(3), kChangeByPercent, Money::fromWhole(15), 3);
    addPromo(kDairy, kToday, kToday.addDays(4), kChangeBy, Money::fromWhole(1), 4, QStringLiteral("Y"));
    gfiDB_Execute(QStringLiteral("UPDATE PromoPrices SET ChangeType=99 WHERE UniqueID=4"));
    auto form = openOn(kCanned);
    FlexGrid &g = grid(*form);
    ASSERT_EQ(g.Rows(), 2) << "ending today is still listed, ended yesterday is not";
    EXPECT_EQ(g.TextMatrix(1, 1), shortDate(kToday));
    EXPECT_EQ(g.TextMatrix(1, 3), QStringLiteral(".50"));

    QTest::keyClick(form.get(), Qt::Key_F3);
    EXPECT_EQ(caption(*form), frmDeptMain::kAllDeptsCaption);
    ASSERT_EQ(g.Rows(), 3) << "tombstones are never listed";
    EXPECT_EQ(g.TextMatrix(0, 5), QStringLiteral("Dept Name"));
    EXPECT_EQ(g.TextMatrix(1, 4), kCanned);
    EXPECT_EQ(g.TextMatrix(1, 5), QStringLiteral(" Grocery - Canned Goods"));
    EXPECT_EQ(g.TextMatrix(2, 5), QStringLiteral(" Dairy"));
    EXPECT_EQ(g.TextMatrix(2, 3), QStringLiteral("15.00%"));
    EXPECT_FALSE(cmd(*form, QStringLiteral("CmdPurge(0)"))->isVisible());

    child<QCheckBox>(*form, QStringLiteral("chkExpired"))->click();
    EXPECT_EQ(g.Rows(), 4) << "the click refreshes the view on the screen";
}

TEST_F(DeptPromos, ChangeWalksBackByEndDateAndDeleteOfAStoreRemovesNothing)
{
    addPromo(kCanned, kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1);
    addPromo(kCanned, kToday.addDays(1), kToday.addDays(8), kChangeByPercent, Money::fromWhole(20), 2);
    auto form = openOn(kCanned);
    FlexGrid &g = grid(*form);
    ASSERT_EQ(g.Rows(), 3);
    const int later = g.TextMatrix(1, 0) == shortDate(kToday) ? 2 : 1;
    g.selectWholeRow(later);
    edit([&] { QTest::keyClick(form.get(), Qt::Key_C); }, 2, QStringLiteral("25"), QString(), QString());
    EXPECT_EQ(editorTitle, QStringLiteral("Change Promo Price"));
    EXPECT_EQ(editorAmount, QStringLiteral("20")) << "the row's percentage in its box";
    QList<PromoPriceRecord> rows = promos();
    EXPECT_EQ(rows[1].PriceChange, Money::fromWhole(25));
    EXPECT_EQ(rows[0].PriceChange, Money::fromWhole(1)) << "the other promo is untouched";
    ASSERT_EQ(rows.size(), 2);

    // A single store's delete is written as the suite writes it, and finds no row.
    g.selectWholeRow(3 - later);
    boxes.answer(MsgAnswer::Yes);
    QTest::keyClick(form.get(), Qt::Key_D);
    EXPECT_EQ(promos().size(), 2);
    EXPECT_EQ(boxes.shown().size(), 1) << "the question only";
}

// Another station removes the listed promo: Change and Delete say so, and the table's first
// row, where a set left by the failed read stands, keeps its values.
TEST_F(DeptPromos, APromoRemovedMeanwhileIsToldAndTheFirstRowKeepsItsValues)
{
    gCommon.MultiStore = QStringLiteral("H");
    addPromo(kDairy, kToday, kToday.addDays(5), kChangeBy, Money::fromWhole(1), 1);
    addPromo(kCanned, kToday.addDays(1), kToday.addDays(8), kChangeByPercent, Money::fromWhole(20), 2);
    addPromo(kCanned, kToday.addDays(2), kToday.addDays(9), kChangeByPercent, Money::fromWhole(30), 3);
    auto form = openOn(kCanned);
    FlexGrid &g = grid(*form);
    ASSERT_EQ(g.Rows(), 3);
    auto rowOf = [&](const QDate &start) {
        for (int row = 1; row < g.Rows(); ++row)
            if (g.TextMatrix(row, 0) == shortDate(start))
                return row;
        return 0;
    };
    const QList<PromoPriceRecord> before = promos();
    auto station2 = db.connect();
    ASSERT_TRUE(station2->execute(QStringLiteral("DELETE FROM PromoPrices WHERE UniqueID = 2")));
    ASSERT_TRUE(station2->execute(QStringLiteral("DELETE FROM PromoPrices WHERE UniqueID = 3")));

    g.selectWholeRow(rowOf(kToday.addDays(1)));
    edit([&] { QTest::keyClick(form.get(), Qt::Key_C); }, 2, QStringLiteral("25"), QString(), QString());
    ASSERT_EQ(boxes.texts().size(), 1);
    EXPECT_TRUE(boxes.texts()[0].startsWith(QStringLiteral("Promo not updated"))) << boxes.texts()[0].toStdString();
    EXPECT_TRUE(editorStayedOpen);

    boxes.clear();
    g.selectWholeRow(rowOf(kToday.addDays(2)));
    boxes.answer(MsgAnswer::Yes);
    QTest::keyClick(form.get(), Qt::Key_D);
    EXPECT_EQ(boxes.texts().value(1), QStringLiteral("Unable to delete promo"));

    const QList<PromoPriceRecord> after = promos();
    ASSERT_EQ(after.size(), 1);
    EXPECT_EQ(after[0].UniqueID, 1);
    EXPECT_EQ(after[0].Dept, kDairy);
    EXPECT_EQ(after[0].PriceChange, Money::fromWhole(1));
    EXPECT_EQ(after[0].ChangeType, kChangeBy);
    EXPECT_EQ(after[0].StartDate, before[0].StartDate);
    EXPECT_EQ(after[0].EndDate, before[0].EndDate);
}

TEST_F(DeptPromos, HeadOfficeDeleteMarksATombstoneAndPurgeAllRemovesPolledTombstonesOnly)
{
    gCommon.MultiStore = QStringLiteral("H");
    addPromo(kCanned, kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1, QStringLiteral(" "));
    addPromo(kCanned, kToday.addDays(-20), kToday.addDays(-10), kChangeBy, Money::fromWhole(2), 2);
    addPromo(kDairy, kToday.addDays(-20), kToday.addDays(-1), kChangeBy, Money::fromWhole(3), 3, QStringLiteral(" "));
    addPromo(kDairy, kToday.addDays(-5), kToday.addDays(5), kChangeBy, Money::fromWhole(4), 4, QStringLiteral(" "));
    gfiDB_Execute(QStringLiteral("UPDATE PromoPrices SET ChangeType=99 WHERE UniqueID=4"));
    auto form = openOn(kCanned);
    grid(*form).selectWholeRow(1);
    boxes.answer(MsgAnswer::Yes);
    QTest::keyClick(form.get(), Qt::Key_D);
    QList<PromoPriceRecord> rows = promos();
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[0].ChangeType, kChangeDeleted);
    EXPECT_EQ(rows[0].Poll, QStringLiteral("Y"));
    EXPECT_TRUE(grid(*form).TextMatrix(1, 0).isEmpty()) << "the tombstone has left the list";

    cmd(*form, QStringLiteral("CmdPurge(0)"))->click();
    ASSERT_EQ(grid(*form).Rows(), 3) << "every department's expired promos";
    boxes.clear();
    cmd(*form, QStringLiteral("CmdPurge(1)"))->click();
    EXPECT_TRUE(boxes.shown().isEmpty());
    rows = promos();
    ASSERT_EQ(rows.size(), 3) << "the polled tombstone went";
    EXPECT_EQ(rows[0].UniqueID, 1);
    EXPECT_EQ(rows[1].ChangeType, kChangeBy) << "expired promos stay as they were";
    EXPECT_EQ(rows[1].Poll, QStringLiteral("Y"));
    EXPECT_EQ(rows[2].ChangeType, kChangeBy);
    EXPECT_TRUE(db.readFile(QStringLiteral("PVSW.log")).contains(QStringLiteral("UPDATE & dbuaTable(itable).sSqlFile & set changetype =99")));
}

TEST_F(DeptPromos, PurgeAllTakesTheHeadOfficeWayForAStoreMarkedN)
{
    gCommon.MultiStore = QStringLiteral("N");
    addPromo(kCanned, kToday.addDays(-30), kToday.addDays(-20), kChangeBy, Money::fromWhole(2), 1);
    auto form = openOn(kCanned);
    cmd(*form, QStringLiteral("CmdPurge(0)"))->click();
    cmd(*form, QStringLiteral("CmdPurge(1)"))->click();
    EXPECT_TRUE(boxes.shown().isEmpty());
    ASSERT_EQ(promos().size(), 1) << "the refused statement leaves the expired promo";
    EXPECT_EQ(promos()[0].ChangeType, kChangeBy);
}

TEST_F(DeptPromos, PurgesOfASingleStore)
{
    addPromo(kCanned, kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1);
    auto form = openOn(kCanned);
    cmd(*form, QStringLiteral("CmdPurge(0)"))->click();
    cmd(*form, QStringLiteral("CmdPurge(1)"))->click();
    EXPECT_TRUE(boxes.shown().isEmpty()) << "nothing expired: Purge All says nothing";
    cmd(*form, QStringLiteral("CmdPurge(2)"))->click();
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("0Records Purged"));

    addPromo(kCanned, kToday.addDays(-30), kToday.addDays(-20), kChangeBy, Money::fromWhole(2), 2);
    addPromo(kCanned, kToday.addDays(-10), kToday.addDays(-2), kChangeBy, Money::fromWhole(3), 3);
    addPromo(kDairy, kToday.addDays(-10), kToday.addDays(-2), kChangeBy, Money::fromWhole(4), 4);
    cmd(*form, QStringLiteral("CmdPurge(0)"))->click();
    FlexGrid &g = grid(*form);
    ASSERT_EQ(g.Rows(), 4);
    EXPECT_EQ(g.TextMatrix(0, 6), QStringLiteral("Delete"));
    markDelete(*form, 1);
    markDelete(*form, 1);
    EXPECT_EQ(g.TextMatrix(1, 6), QStringLiteral("X")) << "a second click does not clear the mark";
    boxes.clear();
    cmd(*form, QStringLiteral("CmdPurge(2)"))->click();
    EXPECT_EQ(boxes.texts().value(0), QStringLiteral("2Records Purged")) << "every expired promo of the marked department";
    QList<PromoPriceRecord> rows = promos();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[1].Dept, kDairy);

    // The seventh column stays in a normal view, and a mark there still purges.
    QTest::keyClick(form.get(), Qt::Key_F3);
    EXPECT_EQ(g.Cols(), 7);
    EXPECT_TRUE(g.TextMatrix(0, 6).isEmpty());
    child<QCheckBox>(*form, QStringLiteral("chkExpired"))->click();
    ASSERT_EQ(g.Rows(), 3);
    markDelete(*form, 2);
    boxes.clear();
    cmd(*form, QStringLiteral("CmdPurge(2)"))->click();
    EXPECT_EQ(boxes.texts().value(0), QStringLiteral("1Records Purged"));

    boxes.clear();
    addPromo(kDairy, kToday.addDays(-10), kToday.addDays(-2), kChangeBy, Money::fromWhole(4), 5);
    cmd(*form, QStringLiteral("CmdPurge(1)"))->click();
    EXPECT_EQ(boxes.texts().value(0), QStringLiteral("1Records Purged"));
    EXPECT_EQ(promos().size(), 1);
}

TEST_F(DeptPromos, EditorChecksDatesAndAmountsAndKeepsItsQuirks)
{
    auto form = openOn(QString());
    pick(*form, 2);
    // F10 with an empty end: Accept is disabled, the check runs anyway.
    edit([&] { cmd(*form, QStringLiteral("cmdEdit(0)"))->click(); }, 1, QStringLiteral("2"), shortDate(kToday), QString());
    EXPECT_FALSE(acceptEnabled);
    EXPECT_TRUE(editorStayedOpen);
    EXPECT_EQ(boxes.texts().value(0), QStringLiteral("'Ending Date' Is Not Valid\r\rEnter date using the 'mm-dd-yyyy' format."));
    EXPECT_TRUE(promos().isEmpty());

    boxes.clear();
    edit([&] { cmd(*form, QStringLiteral("cmdEdit(0)"))->click(); }, 1, QStringLiteral("2"), QStringLiteral("soon"), shortDate(kToday));
    EXPECT_EQ(boxes.texts().value(0).section(QLatin1Char('\r'), 0, 0), QStringLiteral("'Starting Date' Is Not Valid"));

    boxes.clear();
    edit([&] { cmd(*form, QStringLiteral("cmdEdit(0)"))->click(); }, 1, QStringLiteral("abc"), shortDate(kToday), shortDate(kToday));
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_TRUE(boxes.texts()[0].startsWith(QStringLiteral("'abc' is not a valid amount.")));
    EXPECT_TRUE(editorStayedOpen);
    EXPECT_TRUE(promos().isEmpty());

    // The percentage box lets no letter through, and an empty percentage is refused.
    boxes.clear();
    QString percentTyped;
    {
        ScopedModalScript script([&](QDialog &editor) {
            child<QRadioButton>(editor, QStringLiteral("Option1(2)"))->click();
            typeInto(txtEdit(editor, 5), QStringLiteral("a1b.5c"));
            percentTyped = txtEdit(editor, 5)->text();
            typeInto(txtEdit(editor, 5), QStringLiteral("abc"));
            typeInto(txtEdit(editor, 1), shortDate(kToday));
            typeInto(txtEdit(editor, 2), shortDate(kToday));
            QTest::keyClick(&editor, Qt::Key_F10);
        });
        cmd(*form, QStringLiteral("cmdEdit(0)"))->click();
    }
    EXPECT_EQ(percentTyped, QStringLiteral("1.5"));
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_TRUE(boxes.texts()[0].startsWith(QStringLiteral("'' is not a valid amount.")));
    EXPECT_TRUE(promos().isEmpty());

    // Reversed dates are saved without a word; the amount is rewritten on leaving its box.
    boxes.clear();
    QString shownAmount;
    {
        ScopedModalScript script([&](QDialog &editor) {
            typeInto(txtEdit(editor, 4), QStringLiteral(".5"));
            QFocusEvent left(QEvent::FocusOut);
            QCoreApplication::sendEvent(txtEdit(editor, 4), &left);
            typeInto(txtEdit(editor, 1), shortDate(kToday.addDays(5)));
            shownAmount = txtEdit(editor, 4)->text();
            typeInto(txtEdit(editor, 2), shortDate(kToday));
            QTest::keyClick(txtEdit(editor, 2), Qt::Key_Return);
        });
        cmd(*form, QStringLiteral("cmdEdit(0)"))->click();
    }
    EXPECT_EQ(shownAmount, QStringLiteral(".50"));
    EXPECT_TRUE(boxes.shown().isEmpty());
    ASSERT_EQ(promos().size(), 1);
    EXPECT_EQ(promos()[0].EndDate.date(), kToday);
    EXPECT_EQ(promos()[0].ChangeType, kChangeBy);

    // A percentage promo changed to an amount saves the empty amount box: refused, nothing changed.
    gfiDB_Execute(QStringLiteral("UPDATE PromoPrices SET ChangeType=2, PriceChange=30"));
    child<QCheckBox>(*form, QStringLiteral("chkExpired"))->click();
    grid(*form).selectWholeRow(1);
    boxes.clear();
    edit([&] { QTest::keyClick(form.get(), Qt::Key_C); }, 1, QString(), QString(), QString());
    EXPECT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(promos()[0].PriceChange, Money::fromWhole(30));
}

TEST_F(DeptPromos, BadInputGetsOneClearMessageAndChangesNothing)
{
    addPromo(kCanned, kToday, kToday.addDays(3), kChangeBy, Money::fromWhole(1), 1);
    for (const QString &code : {QStringLiteral("002.001.00'"), QStringLiteral("002.001")}) {
        boxes.clear();
        auto form = openOn(code);
        EXPECT_EQ(boxes.shown().size(), 1) << code.toStdString();
        EXPECT_TRUE(boxes.texts().value(0).contains(QStringLiteral("is not valid")));
        EXPECT_TRUE(grid(*form).TextMatrix(1, 0).isEmpty());
        EXPECT_TRUE(gDept.DeptCode.isEmpty()) << "the code never reached a statement";
    }
    boxes.clear();
    auto form = openOn(QString());
    FlexGrid &g = grid(*form);
    QTest::mouseDClick(g.view()->viewport(), Qt::LeftButton, {}, cellPoint(g, 1, 0));
    EXPECT_EQ(boxes.shown().size(), 1) << "an empty grid has no promo to change";
    EXPECT_EQ(promos().size(), 1);
}
