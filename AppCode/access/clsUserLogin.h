#pragma once
#include <QString>

// The login object: checks a sales code and its password against SalesCode, counts
// failures, and logs each try.
namespace qln {

// At least 7 characters trimmed, with a digit and another printable character (codes 33 to
// 47 or 58 to 126).
bool gfb_PwdStandardMet(const QString &sText);

class clsUserLogin {
public:
    int TableIndex = 0;    // carried for the caller; the table is always SalesCode's slot
    QString Application;   // shown in the login window's title
    QString StoreNumber;
    QString UserID;        // the code typed, replaced by the real code when a shortcut was typed
    QString Password;      // typed
    bool Cancel = false;
    QString TableID;       // carried for the caller
    QString StrongPwdRequired; // "Yes" turns the strong rule on
    int FieldIndex = 0;    // the box that needs correcting
    bool Valid = false;

    int FailureCount() const { return m_failures; }
    QString CaptionUserID() const;
    void setCaptionUserID(const QString &caption) { m_captionUserID = caption; }
    QString CaptionPassword() const;
    void setCaptionPassword(const QString &caption) { m_captionPassword = caption; }
    // A box of the check asked for a new password: the caller offers the password window.
    bool PasswordSetupWanted() const { return m_setupWanted; }

    // Checks UserID and Password; sets Valid and FieldIndex, counts failures, tells the user
    // what failed and logs it.
    void Validate();
    // Appends the try to "Login.zor" in the data path and writes its row in LogInSec.
    void Login_Log(const QString &sDetail, const QString &sResult, const QString &sCode);

private:
    bool mfbFindUser();
    bool mfbCheckPassword();
    bool mfbValidateFields(int iStep, QString &sTitle, QString &sText);

    int m_failures = 0;
    bool m_hasPassword = false;
    bool m_setupWanted = false;
    QString m_captionUserID, m_captionPassword;
};

// The program's file description, as the failure rows name it.
QString gfsLogin_Detail_failed();

} // namespace qln
