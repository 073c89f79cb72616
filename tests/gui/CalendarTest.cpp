#include "common/Calendar.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"

#include "support/QtPrinters.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;

namespace {

QCalendarWidget *calendar(QDialog &form, int index)
{
    return form.findChild<QCalendarWidget *>(QStringLiteral("calDate(%1)").arg(index));
}

// Moves a calendar's day with the arrow keys, as a user does.
void stepDays(QCalendarWidget *widget, Qt::Key key, int times)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(widget->window()));
    widget->setFocus();
    for (int i = 0; i < times; ++i)
        QTest::keyClick(QApplication::focusWidget(), key);
}

class CalendarTest : public ::testing::Test {
protected:
    void SetUp() override { Clock::setFixed(QDateTime(QDate(2026, 11, 22), QTime(9, 0))); }
    void TearDown() override { Clock::setFixed(QDateTime()); }
};

} // namespace

TEST_F(CalendarTest, OkReturnsBothChosenDates)
{
    QDate start(2026, 12, 1), end(2026, 12, 24);
    ScopedModalScript user([](QDialog &form) {
        EXPECT_EQ(form.objectName(), QStringLiteral("frmSM_2CALENDAR"));
        EXPECT_EQ(calendar(form, 0)->selectedDate(), QDate(2026, 12, 1));
        stepDays(calendar(form, 0), Qt::Key_Right, 2);
        stepDays(calendar(form, 1), Qt::Key_Down, 1);
        QTest::mouseClick(form.findChild<QPushButton *>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    EXPECT_TRUE(gfbCalendar_get(start, end));
    EXPECT_EQ(start, QDate(2026, 12, 3));
    EXPECT_EQ(end, QDate(2026, 12, 31));
}

TEST_F(CalendarTest, CancelOrEscLeavesTheDatesAlone)
{
    QDate start(2026, 12, 1), end(2026, 12, 24);
    ScopedModalScript user([](QDialog &form) {
        stepDays(calendar(form, 0), Qt::Key_Right, 3);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_FALSE(gfbCalendar_get(start, end));
    EXPECT_EQ(start, QDate(2026, 12, 1));
    EXPECT_EQ(end, QDate(2026, 12, 24));
}

TEST_F(CalendarTest, EmptyDatesStartOnTodayOfTheProgramClock)
{
    QDate start, end;
    ScopedModalScript user([](QDialog &form) {
        QTest::mouseClick(form.findChild<QPushButton *>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    EXPECT_TRUE(gfbCalendar_get(start, end));
    EXPECT_EQ(start, QDate(2026, 11, 22));
    EXPECT_EQ(end, QDate(2026, 11, 22));
}
