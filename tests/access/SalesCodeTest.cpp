#include "access/EncryptionOps.h"
#include "access/LogInSec.h"
#include "access/SalesCode.h"
#include "access/clsUserLogin.h"
#include "lookup/GridSetUpBackOffice.h"
#include "platform/Clock.h"
#include "platform/Recordset.h"
#include "store/StoreFixture.h"

using namespace qln;
using namespace qln::test;

namespace {

class SalesCodes : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gsStore = QStringLiteral("1");
        giStore = 1;
        gsStation = QStringLiteral("3");
        Clock::setFixed(QDateTime(QDate(2026, 11, 23), QTime(10, 30)));
        ASSERT_TRUE(gfbAccess_tables_open()) << boxes.texts().join(QLatin1Char('|')).toStdString()
                                             << db.readFile(QStringLiteral("PVSW.log")).toStdString();
    }
    void TearDown() override
    {
        Clock::setFixed(QDateTime());
        gsSalesCode.clear();
        ConnectedStore::TearDown();
    }

    // A row whose password is enciphered under the given key; the current form when none.
    static void addUser(int id, const char *code, const char *shortCut, const QString &password, const QString &rights = {},
                        QString key = {})
    {
        gpSalesCode_clear();
        gSalesCode.UserID = id;
        gSalesCode.SalesCode = gfsSalesCode_fitted(QString::fromUtf8(code));
        gSalesCode.ShortCut = gfsSalesCode_fitted(QString::fromUtf8(shortCut));
        gSalesCode.StoreNumber = 1;
        gSalesCode.Permissions = rights.leftJustified(250);
        if (key.isEmpty())
            key = gfsRowKey_current(QString::fromUtf8(code), QStringLiteral("1"), QString::fromUtf8(shortCut));
        if (!password.isEmpty())
            gSalesCode.Password = gfsEncrypt_Text(password, key).leftJustified(65);
        gSalesCode.ResetPwdDate = QDateTime(QDate(2027, 1, 1), QTime(0, 0));
        ASSERT_TRUE(gfbDB_RecordOp(kSalesCodeTable, kOpInsert)) << gsDBLastError.toStdString();
    }
    static QString column(const char *sql)
    {
        Recordset rs;
        EXPECT_TRUE(rs.open(dbConnection(), QString::fromUtf8(sql)));
        return rs.recordCount() ? rs.value(0).toString().trimmed() : QString();
    }
    clsUserLogin login(const char *code, const char *password)
    {
        clsUserLogin user;
        user.StoreNumber = QStringLiteral("1");
        user.UserID = QString::fromUtf8(code);
        user.Password = QString::fromUtf8(password);
        return user;
    }
};

} // namespace

TEST_F(SalesCodes, RightsAreReadAfreshAndAShortOrMissingRowRefuses)
{
    QString rights(46, QLatin1Char('N'));
    rights[45] = QLatin1Char('Y');
    addUser(1, "ANNA", "AN", QString(), rights);
    addUser(2, "BEN", "B", QString(), QStringLiteral("YYY"));
    gsSalesCode = QStringLiteral("ANNA");
    EXPECT_TRUE(gfbSalesCode_Permission(46));
    EXPECT_FALSE(gfbSalesCode_Permission(45));
    EXPECT_FALSE(gfbSalesCode_Permission(46, QStringLiteral("BEN"))) << "a rights string shorter than the right";
    EXPECT_TRUE(gfbSalesCode_Permission(3, QStringLiteral("ben")));
    EXPECT_FALSE(gfbSalesCode_Permission(1, QStringLiteral("NOBODY")));
    EXPECT_FALSE(gfbSalesCode_Permission(1, QStringLiteral("O'NEIL"))) << "a quote in the code reads no row";

    // The cost column follows the right as it stands now.
    gLookupSettings = LookupSettings();
    gLookupSettings.bCostSecurity = true;
    gfbGridSetUp_Inventory();
    EXPECT_EQ(gfiDataGrid_ColumnOf(9, 2) >= 0, true) << "ANNA has right 46";
    gfiDB_Execute(QStringLiteral("UPDATE SalesCode SET Permissions = 'YYY' WHERE SalesCode = 'ANNA'"));
    gfbGridSetUp_Inventory();
    EXPECT_EQ(gfiDataGrid_ColumnOf(9, 2), -1) << "a right withdrawn elsewhere counts at once";
    gLookupSettings.bCostSecurity = false;
    gfbGridSetUp_Inventory();
    EXPECT_GE(gfiDataGrid_ColumnOf(9, 2), 0) << "without cost security everybody sees cost";
    gLookupSettings = LookupSettings();
}

TEST_F(SalesCodes, AnOlderKeyIsUpgradedOnceAtLogin)
{
    addUser(1, "ANNA", "AN", QStringLiteral("pass123"), {}, gfsRowKey_plain(QStringLiteral("ANNA"), QStringLiteral("1"), QStringLiteral("AN")));
    addUser(2, "OLD", "", QStringLiteral("old4567"), {}, QStringLiteral("OLD"));
    const QString before = column("SELECT Password FROM SalesCode WHERE SalesCode = 'ANNA'");

    clsUserLogin anna = login("ANNA", "pass123");
    anna.Validate();
    EXPECT_TRUE(anna.Valid);
    const QString after = column("SELECT Password FROM SalesCode WHERE SalesCode = 'ANNA'");
    EXPECT_NE(after, before);
    EXPECT_EQ(gfsDecrypt_Text(after, gfsRowKey_current(QStringLiteral("ANNA"), QStringLiteral("1"), QStringLiteral("AN"))),
              QStringLiteral("pass123"));
    const QString log = db.readFile(QStringLiteral("PVSW.log"));
    EXPECT_TRUE(log.isEmpty()) << log.toStdString();

    anna = login("ANNA", "pass123");
    anna.Validate();
    EXPECT_TRUE(anna.Valid);
    EXPECT_EQ(column("SELECT Password FROM SalesCode WHERE SalesCode = 'ANNA'"), after) << "the second login takes the current key";

    clsUserLogin old = login("old", "old4567");
    old.Validate();
    EXPECT_TRUE(old.Valid) << "the oldest key, the code alone";
    gSalesCode.SalesCode = gfsSalesCode_fitted(QStringLiteral("OLD"));
    EXPECT_EQ(gfsDecrypt_Text(column("SELECT Password FROM SalesCode WHERE SalesCode = 'OLD'"),
                              gfsRowKey_current(QStringLiteral("OLD"), QStringLiteral("1"), QString())),
              QStringLiteral("old4567"));
}

TEST_F(SalesCodes, ValidationFindsByCodeOrShortcutAndLogsEachFailure)
{
    addUser(1, "ANNA", "BEN", QStringLiteral("pass123"));
    addUser(2, "BEN", "B", QStringLiteral("ben4567"));

    clsUserLogin user = login("BEN", "ben4567");
    user.Validate();
    EXPECT_TRUE(user.Valid) << "the code wins over another user's shortcut";
    EXPECT_EQ(user.UserID, QStringLiteral("BEN"));

    user = login("B", "ben4567");
    user.Validate();
    EXPECT_TRUE(user.Valid);
    EXPECT_EQ(user.UserID, QStringLiteral("BEN")) << "a shortcut gives the real code";
    EXPECT_TRUE(boxes.shown().isEmpty());

    user = login("ANNA", "wrong");
    user.Validate();
    EXPECT_FALSE(user.Valid);
    EXPECT_EQ(user.FieldIndex, 1);
    EXPECT_EQ(user.FailureCount(), 1);
    EXPECT_TRUE(user.UserID.isEmpty());
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Validation"));
    EXPECT_EQ(boxes.shown()[0].icon, MsgIcon::Critical);
    EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("INVALID PASSWORD\r\n\r\nThe 'Password' you entered does not exist.\r\n\r\n"
                                                    "You must correct this before you can login - Try Again."));
    user.UserID = QStringLiteral("ZED");
    user.Validate();
    EXPECT_EQ(user.FieldIndex, 0);
    EXPECT_EQ(user.FailureCount(), 2);
    EXPECT_TRUE(boxes.shown().last().text.startsWith(QLatin1String("INVALID USER ID")));
    user.UserID.clear();
    user.Validate();
    EXPECT_TRUE(boxes.shown().last().text.startsWith(QLatin1String("USER ID MISSING!")));
    EXPECT_EQ(user.FailureCount(), 0) << "an empty code resets the count";

    const QString file = db.readFile(QStringLiteral("Login.zor"));
    const QStringList lines = file.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4) << file.toStdString();
    EXPECT_EQ(lines[0], QStringLiteral("11/23/2026\tInitial Login Created"));
    EXPECT_EQ(lines[1], QStringLiteral("11/23/2026\tLog in Quillon\tF\tANNA"));
    EXPECT_EQ(lines[2], QStringLiteral("11/23/2026\tLog in Quillon\tF\tZED"));
    EXPECT_EQ(column("SELECT COUNT(*) FROM LogInSec"), QStringLiteral("4"));
    EXPECT_EQ(column("SELECT Detail FROM LogInSec WHERE ID = 1"), QStringLiteral("Initial Login Create")) << "cut to the column";
    EXPECT_EQ(column("SELECT SalesCode FROM LogInSec WHERE ID = 2"), QStringLiteral("ANNA"));
    EXPECT_EQ(column("SELECT Result FROM LogInSec WHERE ID = 3"), QStringLiteral("F"));
    EXPECT_EQ(column("SELECT Station FROM LogInSec WHERE ID = 3"), QStringLiteral("3"));
}

TEST_F(SalesCodes, StrongRuleAndExpiryOnlyAskForANewPassword)
{
    EXPECT_FALSE(gfb_PwdStandardMet(QStringLiteral("abcdefg")));
    EXPECT_TRUE(gfb_PwdStandardMet(QStringLiteral("abc1234")));
    EXPECT_FALSE(gfb_PwdStandardMet(QStringLiteral("1234567")));
    EXPECT_TRUE(gfb_PwdStandardMet(QStringLiteral("ab 12345")));
    EXPECT_FALSE(gfb_PwdStandardMet(QStringLiteral("1234 567")));
    EXPECT_FALSE(gfb_PwdStandardMet(QStringLiteral("  ab12  ")));

    addUser(1, "ANNA", "", QStringLiteral("pass123"));
    gfiDB_Execute(QStringLiteral("UPDATE SalesCode SET ResetPwdDate = '20261123 00:00:00'"));
    clsUserLogin user = login("ANNA", "pass123");
    user.Validate();
    EXPECT_TRUE(user.Valid);
    EXPECT_FALSE(user.PasswordSetupWanted()) << "expiry says nothing with the strong rule off";
    EXPECT_TRUE(boxes.shown().isEmpty());
    user.StrongPwdRequired = QStringLiteral("Yes");
    user.Password = QStringLiteral("pass123");
    user.Validate();
    EXPECT_TRUE(user.Valid);
    EXPECT_TRUE(user.PasswordSetupWanted());
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Password Setup"));

    addUser(2, "NOPW", "", QString());
    clsUserLogin none = login("NOPW", "");
    none.StrongPwdRequired = QStringLiteral("Yes");
    boxes.answer(MsgAnswer::Cancel);
    none.Validate();
    EXPECT_FALSE(none.Valid);
    EXPECT_EQ(boxes.shown().last().title, QStringLiteral("Log In Password required"));
    none.UserID = QStringLiteral("NOPW");
    none.Validate();
    EXPECT_TRUE(none.Valid) << "OK goes on to set a password";
    EXPECT_TRUE(none.PasswordSetupWanted());
}

TEST_F(SalesCodes, NewPasswordsKeepTheHistoryAndTooLongOnesAreRefused)
{
    addUser(1, "ANNA", "AN", QStringLiteral("first12"));
    ASSERT_TRUE(gfbSalesCode_Password_set(QStringLiteral("ANNA"), QStringLiteral("1"), QStringLiteral("second12")));
    ASSERT_TRUE(gfbSalesCode_Password_set(QStringLiteral("ANNA"), QStringLiteral("1"), QStringLiteral("third123")));
    EXPECT_EQ(gfaPassword_History().mid(0, 2), QStringList({QStringLiteral("second12"), QStringLiteral("first12")}));
    EXPECT_EQ(gSalesCode.ResetPwdDate.date(), QDate(2027, 2, 21));
    const QString stored = column("SELECT Password FROM SalesCode");
    EXPECT_FALSE(gfbSalesCode_Password_set(QStringLiteral("ANNA"), QStringLiteral("1"), QString(200, QLatin1Char('a'))));
    EXPECT_EQ(column("SELECT Password FROM SalesCode"), stored) << "nothing stored";
    clsUserLogin user = login("ANNA", "third123");
    user.Validate();
    EXPECT_TRUE(user.Valid);
}

TEST_F(SalesCodes, GarbageStoredPasswordAndOddCodesFailWithoutHarm)
{
    addUser(1, "ANNA", "", QString());
    gfiDB_Execute(QStringLiteral("UPDATE SalesCode SET Password = 'not a cipher at all'"));
    clsUserLogin user = login("ANNA", "anything");
    user.Validate();
    EXPECT_FALSE(user.Valid);
    EXPECT_TRUE(boxes.shown().last().text.startsWith(QLatin1String("INVALID PASSWORD")));
    EXPECT_EQ(column("SELECT Password FROM SalesCode"), QStringLiteral("not a cipher at all"));

    addUser(2, "O'NE", "", QStringLiteral("quote12"));
    addUser(3, "ÄÖÜ", "", QStringLiteral("umlaut1"));
    for (const char *code : {"O'NE", "ÄÖÜ"}) {
        clsUserLogin odd = login(code, code[0] == 'O' ? "quote12" : "umlaut1");
        odd.Validate();
        EXPECT_TRUE(odd.Valid) << code;
    }
    clsUserLogin longOne = login("ANNA", "");
    longOne.Password = QString(200, QLatin1Char('x'));
    longOne.Validate();
    EXPECT_FALSE(longOne.Valid);
}

TEST_F(SalesCodes, AnEmptyTableFindsNobodyAndLockingChangesNoRow)
{
    clsUserLogin user = login("ANNA", "x");
    user.Validate();
    EXPECT_FALSE(user.Valid);
    EXPECT_TRUE(boxes.shown().last().text.startsWith(QLatin1String("INVALID USER ID")));
    gpSalesCode_lock(QStringLiteral("ANNA"), QStringLiteral("1"));
    EXPECT_EQ(column("SELECT COUNT(*) FROM SalesCode"), QStringLiteral("0"));
    EXPECT_TRUE(db.readFile(QStringLiteral("PVSW.log")).isEmpty());
}
