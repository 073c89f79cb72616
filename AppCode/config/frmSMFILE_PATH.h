#pragma once
#include <QDialog>

class QComboBox;
class QLabel;
class QListWidget;

namespace qln {

// The path browser: a drive list (the mount points of this machine), the folders of the
// current folder and its files. OK sets the chosen path.
class frmSMFILE_PATH final : public QDialog {
public:
    explicit frmSMFILE_PATH(const QString &sStartPath, QWidget *parent = nullptr);

    const QString &ChosenPath() const { return msFolder; }

private:
    void mpFolder_show(const QString &folder);
    void mpDrive_change(int index);
    void cmdHelp_Click();

    QComboBox *drvDrive;
    QLabel *lblFolder;
    QListWidget *dirFolders;
    QListWidget *filFiles;
    QString msFolder;
};

// The chosen folder, or an empty text when the browser was cancelled.
QString gfsPath_browse(const QString &sStartPath, QWidget *parent = nullptr);

} // namespace qln
