// The editor of a group's shared promo values, driven as a user drives it.
#include "promo/FrmEdit_GroupPromo.h"

#include "promo/PromoPricing.h"
#include "store/Common.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

class GroupPromoEditor : public ::testing::Test {
protected:
    void SetUp() override
    {
        gCommon.USEurope = QStringLiteral("N");
        gpPromo_clear();
        gGroupPromo = PromoPriceRecord();
        gGroupPromo.GroupID = 12;
        gGroupPromo.ChangeType = kChangeByPercent;
        gGroupPromo.PriceChange = Money::fromWhole(15);
        gGroupPromo.StartDate = QDateTime(QDate(2025, 6, 1), QTime(0, 0));
        gGroupPromo.EndDate = QDateTime(QDate(2025, 6, 30), QTime(0, 0));
    }
    template <typename T> static T *child(QWidget &form, const QString &name) { return form.findChild<T *>(name); }
    static QLineEdit *box(QWidget &form, int i) { return child<QLineEdit>(form, QStringLiteral("txtEdit(%1)").arg(i)); }
    static void type(QLineEdit *edit, const QString &text)
    {
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }

    ScriptedMessages boxes;
};

} // namespace

TEST_F(GroupPromoEditor, ShowsTheGroupsValuesAndAcceptWithoutAChangeLeavesChangedFalse)
{
    FrmEdit_GroupPromo form(QStringLiteral("Summer Sale"));
    form.Mode = FrmEdit_GroupPromo::kModeChange;
    form.show();
    EXPECT_EQ(child<QLabel>(form, QStringLiteral("lblEdit(1)"))->text(), QStringLiteral("Summer Sale"));
    EXPECT_TRUE(child<QRadioButton>(form, QStringLiteral("Option1(2)"))->isChecked());
    EXPECT_TRUE(box(form, 5)->isVisible());
    EXPECT_FALSE(box(form, 3)->isVisible());
    EXPECT_EQ(box(form, 5)->text(), QStringLiteral("15"));
    EXPECT_EQ(box(form, 1)->text(), QStringLiteral("06/01/2025"));
    EXPECT_EQ(box(form, 2)->text(), QStringLiteral("06/30/2025"));
    QTest::keyClick(&form, Qt::Key_F10);
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(form.Changed);
    EXPECT_FALSE(form.Cancelled);
    EXPECT_EQ(gGroupPromo.PriceChange, Money::fromWhole(15));
}

TEST_F(GroupPromoEditor, TheChosenKindAndAmountGoTogetherAndReversedDatesPass)
{
    FrmEdit_GroupPromo form(QStringLiteral("Summer Sale"));
    form.show();
    child<QRadioButton>(form, QStringLiteral("Option1(0)"))->click();
    EXPECT_TRUE(box(form, 3)->isVisible());
    EXPECT_FALSE(box(form, 5)->isVisible());
    type(box(form, 3), QStringLiteral("7.49"));
    type(box(form, 1), QStringLiteral("07/10/2025"));
    type(box(form, 2), QStringLiteral("07/01/2025"));
    child<QPushButton>(form, QStringLiteral("cmdAcceptCancel(0)"))->click();
    EXPECT_TRUE(form.Changed);
    EXPECT_EQ(gGroupPromo.ChangeType, kChangeTo);
    EXPECT_EQ(gGroupPromo.PriceChange, Money::parse(QStringLiteral("7.49")).value());
    EXPECT_EQ(gGroupPromo.StartDate.date(), QDate(2025, 7, 10)) << "the editor never compares the two dates";
    EXPECT_EQ(gGroupPromo.EndDate.date(), QDate(2025, 7, 1));
    EXPECT_TRUE(boxes.shown().isEmpty());
}

TEST_F(GroupPromoEditor, TextThatIsNoDateOrAmountIsToldAndNothingIsTaken)
{
    const PromoPriceRecord before = gGroupPromo;
    FrmEdit_GroupPromo form(QStringLiteral("Summer Sale"));
    form.show();
    type(box(form, 2), QStringLiteral("13/45/2025"));
    QTest::keyClick(&form, Qt::Key_F10);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(boxes.texts(), strings({"'Ending Date' Is Not Valid\r\rEnter date using the 'mm-dd-yyyy' format."}));
    type(box(form, 2), QStringLiteral("06/30/2025"));
    type(box(form, 5), QStringLiteral("1x"));
    QTest::keyClick(&form, Qt::Key_F10);
    EXPECT_TRUE(form.isVisible());
    EXPECT_TRUE(boxes.texts().value(1).startsWith(QStringLiteral("'1x' is not a valid amount.\r\r")));
    EXPECT_EQ(gGroupPromo.PriceChange, before.PriceChange);

    type(box(form, 5), QStringLiteral("20"));
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_TRUE(form.Cancelled);
    EXPECT_FALSE(form.Changed);
    EXPECT_EQ(gGroupPromo.PriceChange, before.PriceChange) << "cancel takes nothing";
}

// The window's close button, and a caller's reject, are a cancel as much as Esc is.
TEST_F(GroupPromoEditor, ClosingTheWindowCountsAsCancel)
{
    const PromoPriceRecord before = gGroupPromo;
    for (const bool byClose : {true, false}) {
        FrmEdit_GroupPromo form(QStringLiteral("Summer Sale"));
        form.Mode = FrmEdit_GroupPromo::kModeChange;
        form.show();
        type(box(form, 5), QStringLiteral("20"));
        if (byClose)
            form.close();
        else
            form.reject();
        EXPECT_FALSE(form.isVisible());
        EXPECT_TRUE(form.Cancelled) << byClose;
        EXPECT_FALSE(form.Changed) << byClose;
    }
    EXPECT_EQ(gGroupPromo.PriceChange, before.PriceChange);
}
