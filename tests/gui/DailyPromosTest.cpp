// The daily promos window and the daily form of the group promo editor, driven as a user
// drives them.
#include "promo/FrmDailyPromo.h"

#include "DemoData.h"
#include "common/DateForms.h"
#include "common/ProcessState.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "promo/DailyPromos.h"
#include "promo/PromoList.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/RecordOps.h"
#include "support/DemoStore.h"
#include "support/FormFinder.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QHeaderView>
#include <QTableView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2025, 5, 14);

QString shortDate(const QDate &date) { return gfsDate_short(date, QStringLiteral("N")); }
QDateTime midnight(const QDate &date) { return QDateTime(date, QTime(0, 0)); }

QLineEdit *txtEdit(QWidget &f, int i) { return child<QLineEdit>(f, QStringLiteral("txtEdit(%1)").arg(i)); }
QRadioButton *option(QWidget &f, int i) { return child<QRadioButton>(f, QStringLiteral("Option1(%1)").arg(i)); }

// What the editor showed when it opened.
struct EditorFace {
    QString label, start, end, amount;
    bool percentOnly = false;
};

class DailyPromos : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kToday, QTime(10, 30)), 20));
        gCommon.MultiStore = QStringLiteral(" ");
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    static void addRow(qint32 groupId, QDate start, QDate end, qint32 uniqueId, const QString &sl = QString())
    {
        gpPromo_clear();
        gPromo.Store = 1, gPromo.SL = sl, gPromo.GroupID = groupId, gPromo.UniqueID = uniqueId;
        gPromo.Invuid = sl.isEmpty() ? 0 : 12;
        gPromo.StartDate = midnight(start), gPromo.EndDate = midnight(end), gPromo.ChangeDate = midnight(start);
        gPromo.ChangeType = kChangeByPercent, gPromo.PriceChange = Money::fromWhole(20);
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    }
    static QList<PromoPriceRecord> promos()
    {
        QList<PromoPriceRecord> rows;
        EXPECT_TRUE(gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices ORDER BY UniqueID"), rows));
        return rows;
    }
    static FlexGrid &grid(QWidget &form) { return *child<FlexGrid>(form, QStringLiteral("fgrdItems")); }
    static QStringList gridRow(QWidget &form, int row)
    {
        QStringList cells;
        for (int col = 0; col < 5; ++col)
            cells << grid(form).TextMatrix(row, col);
        return cells;
    }

    // Opens the window and lets it come to its first activation; `first` plays the editor
    // should the window open it by itself.
    std::unique_ptr<FrmDailyPromo> open(const ModalScript &first = [](QDialog &e) { QTest::keyClick(&e, Qt::Key_Escape); })
    {
        ScopedModalScript script([&](QDialog &e) {
            ++editorsOpened;
            first(e);
        });
        auto form = std::make_unique<FrmDailyPromo>();
        form->show();
        QCoreApplication::processEvents();
        return form;
    }
    // The editor played: amount, then the dates when given, then F10 (or Esc).
    ModalScript editor(const QString &amount, const QString &start = QString(), const QString &end = QString(),
                       bool accept = true)
    {
        return [=, this](QDialog &e) {
            face.label = child<QLabel>(e, QStringLiteral("lblEdit(1)"))->text();
            face.start = txtEdit(e, 1)->text(), face.end = txtEdit(e, 2)->text(), face.amount = txtEdit(e, 5)->text();
            face.percentOnly = option(e, 2)->isChecked() && !option(e, 0)->isEnabled() && !option(e, 1)->isEnabled() &&
                               !txtEdit(e, 3)->isVisible() && !txtEdit(e, 4)->isEnabled() && txtEdit(e, 5)->isVisible();
            typeInto(txtEdit(e, 5), amount);
            if (!start.isNull())
                typeInto(txtEdit(e, 1), start);
            if (!end.isNull())
                typeInto(txtEdit(e, 2), end);
            QTest::keyClick(&e, accept ? Qt::Key_F10 : Qt::Key_Escape);
            editorStayedOpen = e.isVisible();
            if (editorStayedOpen)
                QTest::keyClick(&e, Qt::Key_Escape);
        };
    }
    void press(QWidget &form, const QString &button, const ModalScript &script)
    {
        ScopedModalScript s(script);
        cmd(form, button)->click();
    }
    static void select(QWidget &form, int row) { grid(form).setRow(row); }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
    EditorFace face;
    int editorsOpened = 0;
    bool editorStayedOpen = false;
};

} // namespace

TEST_F(DailyPromos, ARoadOfTwoDailyPromosAddedChangedAndDeletedInAStore)
{
    addRow(0, kToday, kToday.addDays(3), 40, QStringLiteral("10000001")); // an item promo sorts after the daily ones
    auto form = open(editor(QStringLiteral("10")));
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Daily Promos"));
    EXPECT_EQ(child<QLabel>(*form, QStringLiteral("Label1"))->text(), QStringLiteral("These Promo's apply to ALL Discountable Inventory"));
    EXPECT_EQ(editorsOpened, 1) << "with no daily promo the window asks for one at once";
    EXPECT_EQ(face.label, QStringLiteral("Daily Promo"));
    EXPECT_TRUE(face.percentOnly);
    EXPECT_EQ(face.start, shortDate(kToday));
    EXPECT_EQ(face.end, shortDate(kToday)) << "a one-day promo by default";

    press(*form, QStringLiteral("cmdEdit(0)"), editor(QStringLiteral("5"), shortDate(kToday), shortDate(kToday.addDays(6))));
    QList<PromoPriceRecord> rows = promos();
    ASSERT_EQ(rows.size(), 3);
    for (int i : {1, 2}) {
        const PromoPriceRecord &p = rows[i];
        EXPECT_TRUE(p.SL.trimmed().isEmpty() && p.Dept.trimmed().isEmpty());
        EXPECT_EQ(p.ChangeType, kChangeByPercent);
        EXPECT_TRUE(p.Poll.trimmed().isEmpty()) << "a daily promo is never marked for polling";
        EXPECT_EQ(p.Invuid, 0);
        EXPECT_EQ(p.Store, 1);
        EXPECT_EQ(p.ChangeDate, midnight(kToday));
        EXPECT_EQ(p.StartDate, midnight(kToday));
    }
    EXPECT_EQ(rows[1].GroupID, -1);
    EXPECT_EQ(rows[1].UniqueID, 41);
    EXPECT_EQ(rows[1].PriceChange, Money::fromWhole(10));
    EXPECT_EQ(rows[1].EndDate, midnight(kToday));
    EXPECT_EQ(rows[2].GroupID, -2);
    EXPECT_EQ(rows[2].UniqueID, 42);
    EXPECT_EQ(rows[2].PriceChange, Money::fromWhole(5));
    EXPECT_EQ(rows[2].EndDate, midnight(kToday.addDays(6)));

    ASSERT_EQ(grid(*form).Rows(), 3) << "the item promo is not listed";
    EXPECT_EQ(gridRow(*form, 0), strings({"Starting", "Ending", "Type Change", "Amount", ""}));
    EXPECT_EQ(gridRow(*form, 1), strings({"05/14/2025", "05/20/2025", "By Percent", "5%", "-2"}));
    EXPECT_EQ(gridRow(*form, 2), strings({"05/14/2025", "05/14/2025", "By Percent", "10%", "-1"}));
    EXPECT_EQ(grid(*form).ColWidth(4), 0) << "the number column is hidden";

    Clock::setFixed(QDateTime(kToday.addDays(1), QTime(9, 0)));
    select(*form, 2);
    press(*form, QStringLiteral("cmdEdit(1)"), editor(QStringLiteral("15")));
    EXPECT_EQ(face.amount, QStringLiteral("10"));
    EXPECT_EQ(face.end, QStringLiteral("05/14/2025"));
    rows = promos();
    EXPECT_EQ(rows[1].PriceChange, Money::fromWhole(15));
    EXPECT_EQ(rows[1].ChangeDate, midnight(kToday.addDays(1)));
    EXPECT_TRUE(rows[1].Poll.trimmed().isEmpty());
    EXPECT_EQ(gridRow(*form, 2)[3], QStringLiteral("15%"));

    // A store removes the row at once; the grid keeps it until it is filled again.
    select(*form, 2);
    boxes.answer(MsgAnswer::Yes);
    cmd(*form, QStringLiteral("cmdEdit(2)"))->click();
    EXPECT_EQ(boxes.texts(), strings({"Are you sure you want to delete?\r\rReady To Delete"}));
    rows = promos();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[1].GroupID, -2);
    EXPECT_EQ(grid(*form).Rows(), 3);

    // The deleted row is still shown; a change of it finds no row and writes none.
    boxes.clear();
    select(*form, 2);
    press(*form, QStringLiteral("cmdEdit(1)"), editor(QStringLiteral("20")));
    EXPECT_EQ(boxes.texts(), strings({"Promo not updated"}));
    ASSERT_EQ(promos().size(), 2);
    EXPECT_EQ(promos()[1].PriceChange, Money::fromWhole(5)) << "no other row took the change";

    press(*form, QStringLiteral("cmdEdit(0)"), editor(QStringLiteral("7.5")));
    EXPECT_EQ(promos().last().GroupID, -3) << "one below the lowest, whatever was deleted";
    EXPECT_EQ(gridRow(*form, 1)[3], QStringLiteral("7.5%"));
    EXPECT_EQ(grid(*form).Rows(), 3);
}

TEST_F(DailyPromos, AHeadOfficeKeepsATombstoneThatTheNextFillListsWithoutItsKind)
{
    gCommon.MultiStore = QStringLiteral("H");
    addRow(-1, kToday, kToday.addDays(2), 1);
    addRow(-4, kToday.addDays(-1), kToday.addDays(9), 2);
    auto form = open();
    EXPECT_EQ(editorsOpened, 0) << "rows were listed";
    ASSERT_EQ(grid(*form).Rows(), 3);

    select(*form, 2);
    boxes.answer(MsgAnswer::No);
    cmd(*form, QStringLiteral("cmdEdit(2)"))->click();
    EXPECT_EQ(promos()[0].ChangeType, kChangeByPercent) << "No keeps the row";

    press(*form, QStringLiteral("cmdEdit(1)"), editor(QStringLiteral("30"), shortDate(kToday.addDays(1)), QString()));
    PromoPriceRecord changed = promos()[0];
    EXPECT_EQ(changed.PriceChange, Money::fromWhole(30));
    EXPECT_EQ(changed.StartDate, midnight(kToday.addDays(1)));
    EXPECT_TRUE(changed.Poll.trimmed().isEmpty());

    select(*form, 2);
    boxes.answer(MsgAnswer::Yes);
    cmd(*form, QStringLiteral("cmdEdit(2)"))->click();
    const PromoPriceRecord tomb = promos()[0];
    EXPECT_EQ(tomb.ChangeType, kChangeDeleted);
    EXPECT_EQ(tomb.ChangeDate, midnight(kToday));
    EXPECT_TRUE(tomb.Poll.trimmed().isEmpty()) << "the tombstone is not marked for polling either";
    EXPECT_EQ(grid(*form).RowHeight(2), 0) << "hidden on the grid";
    EXPECT_EQ(promos().size(), 2);

    press(*form, QStringLiteral("cmdEdit(0)"), editor(QStringLiteral("12")));
    ASSERT_EQ(grid(*form).Rows(), 4);
    EXPECT_EQ(gridRow(*form, 1)[4], QStringLiteral("-5"));
    EXPECT_EQ(gridRow(*form, 3), strings({"05/15/2025", "05/16/2025", "", "30%", "-1"})) << "the tombstone";

    // A row that another station removed meanwhile can't be deleted here.
    gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices WHERE GroupID = -4"));
    select(*form, 2);
    boxes.answer(MsgAnswer::Yes);
    cmd(*form, QStringLiteral("cmdEdit(2)"))->click();
    EXPECT_EQ(boxes.shown().last().text, QStringLiteral("Unable to delete promo"));
    EXPECT_EQ(boxes.shown().last().title, QStringLiteral("Error"));
}

TEST_F(DailyPromos, AnExpiredRowSortingFirstKeepsTheListEmptyAtLoad)
{
    addRow(-2, kToday.addDays(-5), kToday.addDays(-1), 1);
    addRow(-1, kToday, kToday.addDays(4), 2);
    auto form = open();
    EXPECT_TRUE(gridRow(*form, 1).join(QString()).isEmpty());
    EXPECT_EQ(editorsOpened, 1) << "an empty list asks for a promo";
    EXPECT_EQ(promos().size(), 2) << "cancel writes nothing";

    // The next fill lists every row before the first of GroupID 0, expired ones too.
    press(*form, QStringLiteral("cmdEdit(0)"), editor(QStringLiteral("3")));
    ASSERT_EQ(grid(*form).Rows(), 4);
    EXPECT_EQ(gridRow(*form, 1)[4], QStringLiteral("-3"));
    EXPECT_EQ(gridRow(*form, 2)[1], shortDate(kToday.addDays(-1)));
}

TEST_F(DailyPromos, BadPercentagesAreToldAndNothingIsWrittenWhileReversedDatesPass)
{
    addRow(-1, kToday, kToday.addDays(2), 1);
    auto form = open();
    for (const char *bad : {"0", "100", "abc", "1e9"}) {
        boxes.clear();
        press(*form, QStringLiteral("cmdEdit(0)"), editor(QString::fromLatin1(bad)));
        EXPECT_TRUE(editorStayedOpen) << bad;
        ASSERT_EQ(boxes.shown().size(), 1) << bad;
        EXPECT_EQ(promos().size(), 1) << bad;
    }
    EXPECT_TRUE(boxes.texts()[0].startsWith(QStringLiteral("'1e9' is not a valid amount.")));
    boxes.clear();
    press(*form, QStringLiteral("cmdEdit(0)"), editor(QStringLiteral("100")));
    EXPECT_EQ(boxes.texts(), strings({"'100%' Is Not a Daily Promo Percentage\r\r"
                                      "A daily promo takes more than 0% and less than 100% off every discountable item."}));

    boxes.clear();
    press(*form, QStringLiteral("cmdEdit(0)"), editor(QStringLiteral("99.99"), shortDate(kToday.addDays(3)), shortDate(kToday)));
    EXPECT_TRUE(boxes.shown().isEmpty()) << "the editor never compares the two dates";
    const PromoPriceRecord reversed = promos().last();
    EXPECT_EQ(reversed.GroupID, -2);
    EXPECT_EQ(reversed.StartDate, midnight(kToday.addDays(3)));
    EXPECT_EQ(reversed.EndDate, midnight(kToday));
}

TEST_F(DailyPromos, NoNumberBelowTheColumnsLowestAndNoRowToChangeAreTold)
{
    addRow(kDailyGroupID_lowest, kToday, kToday.addDays(2), 1);
    auto form = open();
    ASSERT_EQ(grid(*form).Rows(), 2);
    press(*form, QStringLiteral("cmdEdit(0)"), editor(QStringLiteral("10")));
    EXPECT_EQ(promos().size(), 1);
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_TRUE(boxes.texts()[0].startsWith(QStringLiteral("Promo not inserted\r\r")));

    gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
    auto empty = open();
    boxes.clear();
    select(*empty, 1);
    press(*empty, QStringLiteral("cmdEdit(1)"), editor(QStringLiteral("10")));
    cmd(*empty, QStringLiteral("cmdEdit(2)"))->click();
    EXPECT_EQ(boxes.shown().size(), 2);
    EXPECT_TRUE(boxes.texts()[0].startsWith(QStringLiteral("There is no daily promo on this row.")));
    EXPECT_TRUE(promos().isEmpty());
    EXPECT_EQ(editorsOpened, 1) << "only the activation of the empty window opened the editor";
}

TEST_F(DailyPromos, TheButtonsWithNoActionDoNothingAndEscCloses)
{
    addRow(-1, kToday, kToday.addDays(2), 1);
    auto form = open();
    for (const char *name : {"cmdPurge", "cmdPrint", "cmdHelp"})
        cmd(*form, QString::fromLatin1(name))->click();
    QTest::keyClick(form.get(), Qt::Key_F6);
    QTest::keyClick(form.get(), Qt::Key_F9);
    EXPECT_TRUE(boxes.shown().isEmpty());
    EXPECT_EQ(promos().size(), 1);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(cmd(*form, QStringLiteral("cmdPurge"))->text(), QStringLiteral("F6  Purge Expired Daily Promos"));
    EXPECT_EQ(child<QWidget>(*form, QStringLiteral("Frame1"))->property("title").toString(), QStringLiteral("Daily Promo Details"));
    EXPECT_TRUE(FrmDailyPromo::mbDailyMode());
    QTest::keyClick(form.get(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    form.reset();
    EXPECT_FALSE(FrmDailyPromo::mbDailyMode()) << "the group editor takes its own form again";
}

// Captions, dates and amounts read whole at the default sizes; with QUILLON_SHOTS set to a
// folder the window and the editor are saved there as pictures.
TEST_F(DailyPromos, EveryCaptionAndCellReadsWhole)
{
    addRow(-1, kToday, kToday.addDays(6), 1);
    addRow(-2, QDate(2025, 12, 28), QDate(2025, 12, 31), 2);
    gfiDB_Execute(QStringLiteral("UPDATE PromoPrices SET PriceChange = 12.25 WHERE UniqueID = 2"));
    auto form = open();
    const QString shots = qEnvironmentVariable("QUILLON_SHOTS");
    const auto whole = [](QWidget &window) {
        QStringList cut;
        for (QWidget *w : window.findChildren<QWidget *>()) {
            if (!w->isVisible() || !(qobject_cast<QPushButton *>(w) || qobject_cast<QLabel *>(w) ||
                                     qobject_cast<QRadioButton *>(w) || qobject_cast<QLineEdit *>(w)))
                continue;
            if (w->width() < w->minimumSizeHint().width())
                cut << w->objectName();
        }
        return cut;
    };
    EXPECT_EQ(whole(*form), QStringList());
    QTableView *view = grid(*form).view();
    for (int row = 0; row < view->model()->rowCount(); ++row)
        for (int col = 0; col < 4; ++col) {
            const QString text = view->model()->index(row, col).data().toString();
            EXPECT_LE(view->fontMetrics().horizontalAdvance(text) + 6, view->columnWidth(col)) << text.toStdString();
        }
    for (int col = 0; col < 4; ++col) {
        const QString header = grid(*form).TextMatrix(0, col);
        EXPECT_LE(view->horizontalHeader()->fontMetrics().horizontalAdvance(header) + 6, view->columnWidth(col))
            << header.toStdString();
    }
    if (!shots.isEmpty())
        form->grab().save(QDir(shots).filePath(QStringLiteral("daily-promos.png")));
    select(*form, 1);
    press(*form, QStringLiteral("cmdEdit(1)"), [&](QDialog &e) {
        EXPECT_EQ(whole(e), QStringList());
        if (!shots.isEmpty())
            e.grab().save(QDir(shots).filePath(QStringLiteral("daily-promo-editor.png")));
        QTest::keyClick(&e, Qt::Key_Escape);
    });
}
