#include "access/clsUserLogin.h"

#include "access/LogInSec.h"
#include "access/SalesCode.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "store/RecordOps.h"
#include "store/StatementLog.h"

#include <QFileInfo>

namespace qln {

namespace {

const QString kInitial = QStringLiteral("Initial Login Created");

bool strongRuleOn(const QString &setting) { return setting.trimmed().compare(QLatin1String("Yes"), Qt::CaseInsensitive) == 0; }

QString dateText() { return Clock::today().toString(QStringLiteral("MM/dd/yyyy")); }

bool insertRow(qint32 id, const QString &sCode, const QString &sDetail, const QString &sResult)
{
    gpLogInSec_clear();
    const QDateTime now = Clock::now();
    gLogInSec.ID = id;
    gLogInSec.SalesCode = sCode.leftJustified(gLogInSec.SalesCode.size(), QLatin1Char(' '), true);
    gLogInSec.aDate = QDateTime(now.date(), QTime(0, 0));
    gLogInSec.aTime = now;
    gLogInSec.Result = sResult.leftJustified(gLogInSec.Result.size(), QLatin1Char(' '), true);
    gLogInSec.Detail = sDetail.leftJustified(gLogInSec.Detail.size(), QLatin1Char(' '), true);
    gLogInSec.Station = qint16(gsStation.toInt());
    return gfbDB_RecordOp(kLogInSecTable, kOpInsert);
}

} // namespace

bool gfb_PwdStandardMet(const QString &sText)
{
    const QString text = sText.trimmed();
    if (text.size() < 7)
        return false;
    bool digit = false, other = false;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u >= '0' && u <= '9')
            digit = true;
        else if ((u >= 58 && u <= 126) || (u >= 33 && u <= 47))
            other = true;
    }
    return digit && other;
}

QString gfsLogin_Detail_failed() { return QStringLiteral("Log in ") + kProgramName; }

QString clsUserLogin::CaptionUserID() const
{
    return m_captionUserID.isEmpty() ? QStringLiteral("User ID") : m_captionUserID;
}

QString clsUserLogin::CaptionPassword() const
{
    return m_captionPassword.isEmpty() ? QStringLiteral("Password") : m_captionPassword;
}

bool clsUserLogin::mfbFindUser()
{
    m_hasPassword = false;
    if (!gfbAccess_tables_open())
        return false;
    gpSalesCode_clear();
    gSalesCode.SalesCode = gfsSalesCode_fitted(UserID);
    gSalesCode.StoreNumber = qint16(StoreNumber.trimmed().toInt());
    bool found = gfbDB_RecordOp(kSalesCodeTable, kOpEqual, 1);
    if (!found) {
        gSalesCode.ShortCut = gfsSalesCode_fitted(UserID);
        found = gfbDB_RecordOp(kSalesCodeTable, kOpEqual, 2);
        if (found)
            UserID = gSalesCode.SalesCode.trimmed();
    }
    if (found)
        m_hasPassword = !gSalesCode.Password.trimmed().isEmpty();
    return found;
}

bool clsUserLogin::mfbCheckPassword()
{
    gSalesCode.SalesCode = gfsSalesCode_fitted(UserID);
    gSalesCode.StoreNumber = qint16(StoreNumber.trimmed().toInt());
    if (!gfbDB_RecordOp(kSalesCodeTable, kOpEqual, 1))
        return false;
    if (gSalesCode.Password.trimmed().isEmpty())
        return true;
    const QString clear = gfsPassword_Decode(gSalesCode.Password);
    if (clear.isEmpty() || clear != Password)
        return false;
    if (strongRuleOn(StrongPwdRequired)) {
        if (!gfb_PwdStandardMet(clear)) {
            gfiMsgBox(QStringLiteral("You should setup new password with at least 7 characters combining digits & alphabets"),
                      MsgButtons::OK, MsgIcon::None, QStringLiteral("Strong password Required"));
            m_setupWanted = true;
        } else if (Clock::today().daysTo(gSalesCode.ResetPwdDate.date()) <= 0) {
            gfiMsgBox(QStringLiteral("Your password has expired. Please setup new Password now."), MsgButtons::OK, MsgIcon::None,
                      QStringLiteral("Password Setup"));
            m_setupWanted = true;
        }
    }
    return true;
}

bool clsUserLogin::mfbValidateFields(int iStep, QString &sTitle, QString &sText)
{
    FieldIndex = iStep;
    if (iStep == 0) {
        if (UserID.trimmed().isEmpty()) {
            sTitle = QStringLiteral("User ID Missing!");
            sText = QStringLiteral("Security requires a 'User ID'");
            return false;
        }
        if (!mfbFindUser()) {
            sTitle = QStringLiteral("Invalid User ID");
            sText = QStringLiteral("The 'User ID' you entered does not exist.");
            return false;
        }
        return true;
    }
    if (m_hasPassword && !Password.isEmpty()) {
        if (mfbCheckPassword())
            return true;
        sTitle = QStringLiteral("Invalid Password");
        sText = QStringLiteral("The 'Password' you entered does not exist.");
        return false;
    }
    if (m_hasPassword) { // nothing typed yet: back to the boxes without a word
        FieldIndex = 0;
        return false;
    }
    if (strongRuleOn(StrongPwdRequired)) {
        if (gfiMsgBox(QStringLiteral("You have not setup a password yet. Click OK to setup a password now"), MsgButtons::OKCancel,
                      MsgIcon::None, QStringLiteral("Log In Password required")) != MsgAnswer::OK)
            return false;
        m_setupWanted = true;
    }
    return true;
}

void clsUserLogin::Validate()
{
    m_setupWanted = false;
    const QString typed = UserID;
    QString title, text;
    Valid = mfbValidateFields(0, title, text) && mfbValidateFields(1, title, text);
    if (!Valid && !title.isEmpty()) {
        gfiMsgBox(title.toUpper() + QStringLiteral("\r\n\r\n") + text + QStringLiteral("\r\n\r\n") +
                      QStringLiteral("You must correct this before you can login - Try Again."),
                  MsgButtons::OK, MsgIcon::Critical, QStringLiteral("Validation"));
        UserID.clear();
        Password.clear();
        Login_Log(gfsLogin_Detail_failed(), QStringLiteral("F"), typed);
    }
    if (!Valid && !typed.trimmed().isEmpty())
        ++m_failures;
    else
        m_failures = 0;
}

void clsUserLogin::Login_Log(const QString &sDetail, const QString &sResult, const QString &sCode)
{
    const QString file = gfsDataPath_file(QStringLiteral("Login.zor"));
    const QString tab = QStringLiteral("\t");
    if (!QFileInfo::exists(file))
        gpFile_append(file, {dateText() + tab + kInitial});
    gpFile_append(file, {dateText() + tab + sDetail + tab + sResult + tab + sCode});

    if (!gfbAccess_tables_open())
        return;
    qint32 next = 1;
    if (gfbDB_RecordOp(kLogInSecTable, kOpGetLast, 1))
        next = gLogInSec.ID + 1;
    else {
        insertRow(next, QString(), kInitial, sResult);
        next = 2;
    }
    if (!insertRow(next, sCode, sDetail, sResult))
        gfiMsgBox(QStringLiteral("record did not insert"));
}

} // namespace qln
