#include "lookup/frm_Lookup.h"

#include "lookup/FlexGrid.h"
#include "lookup/InventoryPick.h"
#include "lookup/LookupFixture.h"
#include "platform/ModalRunner.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace qln;
using namespace qln::test;

namespace {

QLineEdit *edit(QWidget &form, const char *name) { return form.findChild<QLineEdit *>(QString::fromLatin1(name)); }
FlexGrid *grid(QWidget &form) { return form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")); }
QString selectedDescription(QWidget &form) { return grid(form)->TextMatrix(grid(form)->Row(), iFirstCol).trimmed(); }

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

} // namespace

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
