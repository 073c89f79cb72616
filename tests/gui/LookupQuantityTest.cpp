// The quantity box of the list-building lookup while the rows move under it.
#include "lookup/frm_Lookup.h"

#include "common/ItemNumber.h"
#include "lookup/FlexGrid.h"
#include "lookup/LookupFixture.h"
#include "support/ScriptedMessages.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace qln;
using namespace qln::test;

namespace {

class LookupQuantity : public LookupStore {
protected:
    void SetUp() override
    {
        LookupStore::SetUp();
        addNumbered(60);
        gpLookupState_reset(true, 1);
    }
    static QString slOf(int row) { return gfsItemID_key(gaGridText[row].value(gfiDataGrid_ColumnOf(0, 4)).trimmed()); }
    static FlexGrid &grid(QWidget &form) { return *form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")); }
    static QLineEdit *box(QWidget &form) { return form.findChild<QLineEdit *>(QStringLiteral("TxtText")); }
    // The rows on screen that show a quantity, as "SL=qty".
    static QStringList shown(QWidget &form)
    {
        QStringList cells;
        for (int row = 1; row < iGridRows && row < grid(form).Rows(); ++row)
            if (!grid(form).TextMatrix(row, 0).isEmpty())
                cells << slOf(row) + QLatin1Char('=') + grid(form).TextMatrix(row, 0);
        return cells;
    }
    static QStringList entries()
    {
        QStringList list;
        for (const LookupEntry &e : std::as_const(gaLookupEntries))
            list << e.sSL + QLatin1Char('=') + e.sQty;
        return list;
    }

    ScriptedMessages boxes;
};

} // namespace

TEST_F(LookupQuantity, ShrinkingTheWindowWhileTheBoxIsOpenKeepsTheQuantityOnItsItem)
{
    frm_Lookup form;
    form.resize(form.width(), 800);
    form.show();
    const int last = iGridRows - 1;
    ASSERT_GT(last, 8);
    const QString wanted = slOf(last);
    emit grid(form).cellClicked(last, 1);
    ASSERT_TRUE(box(form)->isVisible());
    QTest::keyClicks(box(form), QStringLiteral("7"));

    form.resize(form.width(), 350);
    ASSERT_LT(iGridRows - 1, last) << "the item's row is gone from the window";
    QTest::keyClick(box(form), Qt::Key_Return);
    EXPECT_EQ(entries(), QStringList{wanted + QStringLiteral("=7")});
    EXPECT_TRUE(shown(form).isEmpty()) << shown(form).join(QLatin1Char(' ')).toStdString();

    form.resize(form.width(), 800);
    EXPECT_EQ(shown(form), QStringList{wanted + QStringLiteral("=7")}) << "the quantity is back on its item";

    // Smaller while the item stays in sight: the box follows the item, and Enter moves on.
    emit grid(form).cellClicked(2, 1);
    const QString second = slOf(2);
    QTest::keyClicks(box(form), QStringLiteral("3"));
    form.resize(form.width(), 500);
    QTest::keyClick(box(form), Qt::Key_Return);
    EXPECT_EQ(shown(form), QStringList{second + QStringLiteral("=3")});
    EXPECT_EQ(grid(form).Row(), 3);
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();
}

TEST_F(LookupQuantity, PagingWhileTheBoxIsOpenGivesNoQuantityToTheItemNowOnThatRow)
{
    frm_Lookup form;
    form.show();
    const QString wanted = slOf(2);
    emit grid(form).cellClicked(2, 1);
    QTest::keyClicks(box(form), QStringLiteral("4"));
    QTest::keyClick(box(form), Qt::Key_PageDown);
    ASSERT_NE(slOf(2), wanted) << "the page moved";
    EXPECT_TRUE(box(form)->isVisible()) << "the box stays open for its item";
    QTest::keyClick(box(form), Qt::Key_Return);
    EXPECT_EQ(entries(), QStringList{wanted + QStringLiteral("=4")});
    EXPECT_TRUE(shown(form).isEmpty());

    // Down again with the button, and a quantity for an item there.
    form.findChild<QPushButton *>(QStringLiteral("cmdPage(1)"))->click();
    const QString other = slOf(1);
    emit grid(form).cellClicked(1, 1);
    QTest::keyClicks(box(form), QStringLiteral("5"));
    form.findChild<QPushButton *>(QStringLiteral("cmdPage(0)"))->click();
    QTest::keyClick(box(form), Qt::Key_Return);
    form.findChild<QPushButton *>(QStringLiteral("cmdPage(0)"))->click();
    EXPECT_EQ(shown(form), QStringList{wanted + QStringLiteral("=4")});
    EXPECT_EQ(entries(), (QStringList{wanted + QStringLiteral("=4"), other + QStringLiteral("=5")}));
}
