#include "lookup/frm_Lookup.h"

#include "DemoData.h"
#include "lookup/FlexGrid.h"
#include "lookup/InventoryPick.h"
#include "lookup/LookupFixture.h"
#include "platform/ModalRunner.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace qln;
using namespace qln::test;

namespace {

QLineEdit *edit(QWidget &form, const char *name) { return form.findChild<QLineEdit *>(QString::fromLatin1(name)); }
FlexGrid *grid(QWidget &form) { return form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")); }
QString selectedDescription(QWidget &form) { return grid(form)->TextMatrix(grid(form)->Row(), iFirstCol).trimmed(); }
QPushButton *command(QWidget &form, const char *name) { return form.findChild<QPushButton *>(QString::fromLatin1(name)); }

class LookupWindow : public LookupStore {
protected:
    void SetUp() override
    {
        LookupStore::SetUp();
        addNumbered(40);
    }
    // Picks an item as the item promos window does, the script playing the user.
    QString pick(const std::function<void(QDialog &)> &user)
    {
        ScopedModalScript script([&](QDialog &form) {
            EXPECT_EQ(form.objectName(), QStringLiteral("frm_Lookup"));
            user(form);
        });
        return gfsInventory_Pick();
    }
};

// A head office's demo set, its ZOR.INI naming the stores it looks into.
class LookupHeadOffice : public ::testing::Test {
protected:
    void SetUp() override
    {
        gpProcess_reset();
        gsAppPath = program.path();
        demo::DemoOptions o = demo::gfDemo_options(db.info(), db.dataPath(), 60);
        o.promos = 0, o.headOffice = true;
        demo::DemoReport report;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(o, report, error)) << error.toStdString();
        gpProcess_reset();
        ASSERT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db.dataPath()));
        ASSERT_TRUE(gZorIni.WriteData(QStringLiteral("LOOKUP"), QStringLiteral("SALESHEAD"),
                                      QStringLiteral("12 Downtown|Uptown| 14 |")));
        gpLookupState_reset(false);
        boxes.clear();
    }
    void TearDown() override
    {
        gpLookupState_reset();
        gpProcess_reset();
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
};

} // namespace

TEST_F(LookupHeadOffice, AnotherStoreChosenRetitlesTheWindowAndReadsTheListAgain)
{
    frm_Lookup form;
    form.show();
    QPushButton *select = command(form, "cmdAction(2)");
    auto *stores = form.findChild<QComboBox *>(QStringLiteral("CboStore"));
    QLineEdit *search = edit(form, "txtEditValue");
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Inventory Lookup Store 1"));
    EXPECT_EQ(select->text(), QStringLiteral("Select Store"));
    EXPECT_TRUE(select->isVisible() && select->isEnabled());
    EXPECT_FALSE(stores->isVisible());

    // A text already on screen only moves the selection; a new store must read the list anew.
    const QString wanted = grid(form)->TextMatrix(5, 0).trimmed();
    QTest::keyClicks(search, wanted);
    ASSERT_NE(grid(form)->TextMatrix(1, 0).trimmed(), wanted);

    select->click();
    ASSERT_TRUE(stores->isVisible());
    QStringList texts;
    QList<int> numbers;
    for (int i = 0; i < stores->count(); ++i)
        texts << stores->itemText(i), numbers << stores->itemData(i).toInt();
    EXPECT_EQ(texts, strings({"12 Downtown", "14", "HUB/*ALL"}));
    EXPECT_EQ(numbers, (QList<int>{12, 14, 1}));
    EXPECT_EQ(stores->currentIndex(), 2) << "the list opens on the home store";

    const quint64 before = dbConnection().statementCount();
    emit stores->activated(2);
    EXPECT_EQ(dbConnection().statementCount(), before) << "the same store again does nothing";
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Inventory Lookup Store 1"));
    EXPECT_TRUE(stores->isVisible());

    QTest::keyClick(stores, Qt::Key_Home);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("12 Lookup Store Quillon"));
    EXPECT_FALSE(stores->isVisible());
    EXPECT_EQ(grid(form)->TextMatrix(1, 0).trimmed(), wanted) << "the list is read again at the search text";
    EXPECT_FALSE(command(form, "cmdAdd")->isEnabled()) << "nothing is added from here, whatever the store";
    QTest::keyClick(search, Qt::Key_F5);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("12 Lookup Store Quillon")) << "a new sort keeps the store";

    select->click();
    EXPECT_EQ(stores->currentIndex(), 0) << "the list opens on the store shown";
    QTest::keyClick(stores, Qt::Key_End);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("1 Lookup Store Quillon"));
    EXPECT_FALSE(command(form, "cmdAdd")->isEnabled());
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(LookupHeadOffice, NoStoreIsChosenWhenFindingAnItemOrOutsideAHeadOffice)
{
    {
        gpLookupState_reset(true);
        frm_Lookup form;
        form.show();
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Find Inventory Item"));
        EXPECT_FALSE(command(form, "cmdAction(2)")->isVisible());
    }
    gCommon.MultiStore = QStringLiteral("N");
    gpLookupState_reset(false);
    frm_Lookup form;
    form.show();
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Inventory Lookup"));
    EXPECT_EQ(command(form, "cmdAction(2)")->text(), QStringLiteral("Pricing Utilities"));
    EXPECT_FALSE(command(form, "cmdAction(2)")->isEnabled());
}

TEST_F(LookupWindow, TypingADescriptionFindsTheItemAndEnterReturnsIt)
{
    const QString sl = pick([](QDialog &form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Find Inventory Item"));
        EXPECT_EQ(form.findChild<QPushButton *>(QStringLiteral("cmdAction(0)"))->text(), QStringLiteral("F10 Accept"));
        EXPECT_EQ(form.findChild<QPushButton *>(QStringLiteral("cmdExit"))->text(), QStringLiteral("Esc Cancel"));
        EXPECT_EQ(grid(form)->TextMatrix(1, 0).trimmed(), QStringLiteral("Item 001"));
        QTest::keyClicks(edit(form, "txtEditValue"), QStringLiteral("item 03"));
        EXPECT_EQ(selectedDescription(form), QStringLiteral("Item 030"));
        QTest::keyClick(edit(form, "txtEditValue"), Qt::Key_Down);
        QTest::keyClick(edit(form, "txtEditValue"), Qt::Key_Down);
        EXPECT_EQ(selectedDescription(form), QStringLiteral("Item 032"));
        QTest::keyClick(edit(form, "txtEditValue"), Qt::Key_Return);
    });
    EXPECT_EQ(sl, QStringLiteral("10000032"));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(LookupWindow, FunctionKeysSortBySLAndItemIdAndTypingFollowsThem)
{
    EXPECT_EQ(pick([](QDialog &form) {
                  QTest::keyClick(edit(form, "txtEditValue"), Qt::Key_F6);
                  EXPECT_EQ(iLookupKey, 1);
                  QTest::keyClicks(edit(form, "txtEditValue"), QStringLiteral("10000027"));
                  EXPECT_EQ(grid(form)->TextMatrix(grid(form)->Row(), 2), QStringLiteral("1000002.7"));
                  QTest::keyClick(&form, Qt::Key_F10);
              }),
              QStringLiteral("10000027"));
    EXPECT_EQ(pick([](QDialog &form) {
                  QTest::keyClick(edit(form, "txtEditValue"), Qt::Key_F7);
                  EXPECT_EQ(iLookupKey, 2);
                  QTest::keyClicks(edit(form, "txtEditValue"), QStringLiteral("id035"));
                  EXPECT_EQ(selectedDescription(form), QStringLiteral("Item 035"));
                  QTest::keyClick(edit(form, "txtEditValue"), Qt::Key_Return);
              }),
              QStringLiteral("10000035"));
}

TEST_F(LookupWindow, EscapeAndAnEmptyListChooseNothing)
{
    EXPECT_TRUE(pick([](QDialog &form) { QTest::keyClick(edit(form, "txtEditValue"), Qt::Key_Escape); }).isEmpty());
    EXPECT_TRUE(pick([](QDialog &form) {
                    QTest::keyClicks(edit(form, "txtEditValue"), QStringLiteral("zzz"));
                    form.findChild<QPushButton *>(QStringLiteral("cmdEdit"))->click();
                    EXPECT_EQ(grid(form)->TextMatrix(1, 0).trimmed(), QStringLiteral("Item 001")) << "Clear opens from the top";
                    EXPECT_TRUE(edit(form, "txtEditValue")->text().isEmpty());
                    QTest::keyClick(&form, Qt::Key_Escape);
                }).isEmpty());
}

// A sort the vendor's list can't take is refused: the header keeps its mark and the list
// is not read again. The grid holds one row past the window.
TEST_F(LookupWindow, ARefusedSortLeavesTheHeaderAndTheList)
{
    sVendorFilter = QStringLiteral("ACME");
    iVendorMode = 0;
    frm_Lookup form;
    ScopedModalScript script([&](QDialog &shown) {
        FlexGrid &g = *grid(shown);
        EXPECT_EQ(g.Rows(), iGridRows + 1);
        auto headerColours = [&] {
            QList<quint32> colours;
            const int row = g.Row(), col = g.Col();
            g.setRow(0);
            for (int c = 0; c < g.Cols(); ++c) {
                g.setCol(c);
                colours << g.CellForeColor();
            }
            g.setRow(row), g.setCol(col);
            return colours;
        };
        const QList<quint32> before = headerColours();
        ASSERT_NE(before.value(0), before.value(1)) << "the description column is marked";
        const quint64 sent = statements();
        QTest::keyClick(edit(shown, "txtEditValue"), Qt::Key_F5);
        EXPECT_EQ(boxes.texts(), strings({"Sort vendors by sub-description is not available"}));
        EXPECT_EQ(headerColours(), before);
        EXPECT_EQ(statements(), sent) << "the list is not read again";
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    gfiForm_show_modal(form);
}

TEST_F(LookupWindow, TheListBuildingLookupReturnsTheItemsGivenQuantities)
{
    gpLookupState_reset(true, 1);
    frm_Lookup form;
    ScopedModalScript script([&](QDialog &shown) {
        FlexGrid &g = *grid(shown);
        QLineEdit *qty = edit(shown, "TxtText");
        EXPECT_EQ(g.TextMatrix(0, 0), QStringLiteral("Qty"));
        emit g.cellClicked(2, 1);
        ASSERT_TRUE(qty->isVisible());
        QTest::keyClicks(qty, QStringLiteral("x"));
        QTest::keyClick(qty, Qt::Key_Return);
        EXPECT_EQ(boxes.texts(), strings({"Please insert a quantity number in this field or leave blank."}));
        qty->clear();
        QTest::keyClicks(qty, QStringLiteral("3"));
        QTest::keyClick(qty, Qt::Key_Return);
        EXPECT_FALSE(qty->isVisible());
        EXPECT_EQ(g.Row(), 3) << "the row below is next";
        emit g.cellClicked(5, 1);
        QTest::keyClicks(qty, QStringLiteral("12"));
        QTest::keyClick(qty, Qt::Key_Return);
        QTest::keyClick(edit(shown, "txtEditValue"), Qt::Key_PageDown);
        QTest::keyClick(edit(shown, "txtEditValue"), Qt::Key_PageDown);
        EXPECT_TRUE(g.TextMatrix(2, 0).isEmpty());
        QTest::keyClick(edit(shown, "txtEditValue"), Qt::Key_PageUp);
        QTest::keyClick(edit(shown, "txtEditValue"), Qt::Key_PageUp);
        EXPECT_EQ(g.TextMatrix(2, 0), QStringLiteral("3")) << "typed quantities survive scrolling";
        EXPECT_EQ(g.TextMatrix(5, 0), QStringLiteral("12"));
        QTest::keyClick(&shown, Qt::Key_F10);
    });
    EXPECT_EQ(gfiForm_show_modal(form), QDialog::Accepted);
    ASSERT_EQ(gaLookupEntries.size(), 2);
    EXPECT_EQ(gaLookupEntries[0].sSL, QStringLiteral("10000002"));
    EXPECT_EQ(gaLookupEntries[0].sQty, QStringLiteral("3"));
    EXPECT_EQ(gaLookupEntries[1].sSL, QStringLiteral("10000005"));
    EXPECT_EQ(gaLookupEntries[1].sQty, QStringLiteral("12"));
}
