#include "access/EncryptionOps.h"
#include "access/SalesCode.h"
#include "access/clsUserLogin.h"
#include "access/frmSM_USER_LOGIN.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "platform/Recordset.h"
#include "platform/Settings.h"
#include "store/StoreFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace qln;
using namespace qln::test;

namespace {

QLineEdit *edit(QDialog &form, const char *name) { return form.findChild<QLineEdit *>(QString::fromLatin1(name)); }
QPushButton *button(QDialog &form, const char *name) { return form.findChild<QPushButton *>(QString::fromLatin1(name)); }

// Types into the focused box and presses Enter, as a user does.
void typeEnter(const QString &text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
}

class LoginWindow : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gsStore = QStringLiteral("1");
        gsStation = QStringLiteral("2");
        Clock::setFixed(QDateTime(QDate(2026, 11, 23), QTime(10, 30)));
        ASSERT_TRUE(gfbAccess_tables_open());
        gpSalesCode_clear();
        gSalesCode.UserID = 1;
        gSalesCode.SalesCode = gfsSalesCode_fitted(QStringLiteral("ANNA"));
        gSalesCode.StoreNumber = 1;
        gSalesCode.Password = gfsEncrypt_Text(QStringLiteral("pass123"),
                                              gfsRowKey_current(QStringLiteral("ANNA"), QStringLiteral("1"), QString()));
        gSalesCode.ResetPwdDate = QDateTime(QDate(2026, 11, 1), QTime(0, 0));
        ASSERT_TRUE(gfbDB_RecordOp(kSalesCodeTable, kOpInsert));
        login.Application = QStringLiteral("Quillon");
        login.StoreNumber = QStringLiteral("1");
    }
    void TearDown() override
    {
        Clock::setFixed(QDateTime());
        ConnectedStore::TearDown();
    }
    static QString value(const char *sql)
    {
        Recordset rs;
        EXPECT_TRUE(rs.open(dbConnection(), QString::fromUtf8(sql)));
        return rs.recordCount() ? rs.value(0).toString().trimmed() : QString();
    }

    clsUserLogin login;
};

} // namespace

TEST_F(LoginWindow, EnterWalksTheBoxesAndARightPasswordLogsIn)
{
    ScopedModalScript user([](QDialog &form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Login: Quillon"));
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        EXPECT_EQ(edit(form, "ctxtEdit(0)")->text(), QStringLiteral("Y")) << "the default code's first letter";
        EXPECT_EQ(edit(form, "ctxtEdit(1)")->echoMode(), QLineEdit::Password);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        EXPECT_FALSE(button(form, "cmdOkCancel(0)")->isEnabled()) << "no code, no Accept";
        typeEnter(QStringLiteral("anna"));
        EXPECT_EQ(QApplication::focusWidget(), edit(form, "ctxtEdit(1)"));
        typeEnter(QStringLiteral("pass123"));
    });
    EXPECT_TRUE(gfbLogin_run(login));
    EXPECT_FALSE(login.Cancel);
    EXPECT_EQ(login.UserID, QStringLiteral("ANNA"));
    EXPECT_EQ(GetSetting(kZorSettings, QStringLiteral("Login"), QStringLiteral("User ID")), QStringLiteral("ANNA"));
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("ZOR Help"));
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(QLatin1String("LOGIN\r\n\r\nEnter your sales code.")));
}

TEST_F(LoginWindow, SixFailuresLockTheCodeAndEndTheLogin)
{
    ScopedModalScript user([](QDialog &form) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        // An empty password box on a code with a password: back to the boxes, no message.
        edit(form, "ctxtEdit(0)")->setText(QStringLiteral("ANNA"));
        QTest::mouseClick(button(form, "cmdOkCancel(0)"), Qt::LeftButton);
        EXPECT_TRUE(form.isVisible());
        for (int i = 0; i < 5 && form.isVisible(); ++i) {
            QTest::keyClicks(edit(form, "ctxtEdit(0)"), QStringLiteral("ANNA"));
            edit(form, "ctxtEdit(1)")->setFocus();
            typeEnter(QStringLiteral("wrong"));
            if (form.isVisible()) {
                EXPECT_TRUE(edit(form, "ctxtEdit(0)")->text().isEmpty()) << "both boxes emptied for the next try";
            }
        }
    });
    EXPECT_FALSE(gfbLogin_run(login));
    EXPECT_TRUE(login.Cancel);
    EXPECT_EQ(value("SELECT Status FROM SalesCode WHERE SalesCode = 'ANNA'"), QStringLiteral("I"));
    EXPECT_EQ(value("SELECT COUNT(*) FROM LogInSec WHERE Result = 'F'"), QStringLiteral("6")) << "five wrong and the first row";
    EXPECT_EQ(value("SELECT Detail FROM LogInSec WHERE Result = 'I'"), QStringLiteral("Log in Marvane"));
    EXPECT_TRUE(db.readFile(QStringLiteral("Login.zor")).endsWith(QStringLiteral("\tLog in Marvane\tI\tANNA\r\n")));
    ASSERT_FALSE(boxes.shown().isEmpty());
    EXPECT_EQ(boxes.shown().last().title, QStringLiteral("Login Failure"));
    EXPECT_EQ(boxes.shown().last().text, QStringLiteral("You have failed to log in 6 times. \r\nApplication will be closed"));

    // The right password no longer opens a locked code.
    ScopedModalScript again([](QDialog &form) {
        edit(form, "ctxtEdit(0)")->setText(QStringLiteral("ANNA"));
        edit(form, "ctxtEdit(1)")->setText(QStringLiteral("pass123"));
        button(form, "cmdOkCancel(0)")->click();
    });
    clsUserLogin next;
    next.StoreNumber = QStringLiteral("1");
    EXPECT_FALSE(gfbLogin_run(next));
    EXPECT_EQ(boxes.shown().last().text, QStringLiteral("You have been locked due to log in Failure. Application will be closed"));
}

TEST_F(LoginWindow, AnExpiredPasswordUnderTheStrongRuleIsReplacedThroughThePasswordWindow)
{
    login.StrongPwdRequired = QStringLiteral("Yes");
    int shown = 0;
    ScopedModalScript user([&](QDialog &form) {
        ++shown;
        if (form.objectName() == QLatin1String("frmSM_USER_LOGIN")) {
            edit(form, "ctxtEdit(0)")->setText(QStringLiteral("ANNA"));
            edit(form, "ctxtEdit(1)")->setText(QStringLiteral("pass123"));
            button(form, "cmdOkCancel(0)")->click();
            return;
        }
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Reset Password"));
        EXPECT_FALSE(button(form, "cmdKeypad")->isVisible());
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        auto attempt = [&](const char *first, const char *second) {
            edit(form, "txtFirst")->setFocus();
            typeEnter(QString::fromUtf8(first));
            EXPECT_EQ(QApplication::focusWidget(), edit(form, "txtSecond"));
            QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(second));
            QTest::mouseClick(button(form, "cmdOkCancel(0)"), Qt::LeftButton);
        };
        attempt("new1234", "new1235");
        EXPECT_EQ(boxes.shown().last().title, QStringLiteral("Password confirmmation"));
        EXPECT_TRUE(edit(form, "txtFirst")->text().isEmpty());
        attempt("letters", "letters");
        EXPECT_EQ(boxes.shown().last().text, QStringLiteral("Minimum 7 characters combining digits and letters."));
        attempt("abcdefghij123456", "abcdefghij123456");
        EXPECT_EQ(boxes.shown().last().text, QStringLiteral("Maximum 14 characters."));
        attempt("new1234", "new1234");
    });
    EXPECT_TRUE(gfbLogin_run(login));
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Password Setup")) << "expired";
    gSalesCode.SalesCode = gfsSalesCode_fitted(QStringLiteral("ANNA"));
    gSalesCode.StoreNumber = 1;
    ASSERT_TRUE(gfbDB_RecordOp(kSalesCodeTable, kOpEqual, 1));
    EXPECT_EQ(gfsPassword_Decode(gSalesCode.Password), QStringLiteral("new1234"));
    EXPECT_EQ(gfaPassword_History().first(), QStringLiteral("pass123"));

    // The old password is now in the history and is refused.
    frmPasswordEnter again(gfaPassword_History());
    ScopedModalScript retry([](QDialog &form) {
        edit(form, "txtFirst")->setText(QStringLiteral("pass123"));
        edit(form, "txtSecond")->setText(QStringLiteral("pass123"));
        button(form, "cmdOkCancel(0)")->click();
        EXPECT_TRUE(form.isVisible());
        button(form, "cmdOkCancel(1)")->click();
    });
    gfiForm_show_modal(again);
    EXPECT_EQ(boxes.shown().last().text, QStringLiteral("You cannot use the same last 4 passwords. Please try another."));
    EXPECT_TRUE(again.result().isEmpty());
}
