#include "config/frmSMFILE_PATH.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"

#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStorageInfo>

namespace qln {

namespace {

const QString kUp = QStringLiteral("..");

// Drives are mount points here; the root stands for "C:".
QStringList mountPoints()
{
    QStringList points{QDir::rootPath()};
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes())
        if (!points.contains(volume.rootPath()))
            points << volume.rootPath();
    return points;
}

} // namespace

frmSMFILE_PATH::frmSMFILE_PATH(const QString &sStartPath, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSMFILE_PATH"));
    setWindowTitle(QStringLiteral("Path Browser"));
    drvDrive = new QComboBox(this);
    drvDrive->setObjectName(QStringLiteral("drvDrive"));
    drvDrive->addItems(mountPoints());
    lblFolder = gfForm_label(this, QStringLiteral("lblFolder"));
    dirFolders = new QListWidget(this);
    dirFolders->setObjectName(QStringLiteral("dirFolders"));
    filFiles = new QListWidget(this);
    filFiles->setObjectName(QStringLiteral("filFiles"));
    filFiles->setSelectionMode(QAbstractItemView::NoSelection);
    QPushButton *ok = gfCommand_button(this, QStringLiteral("cmdOK"), QStringLiteral("OK"));
    QPushButton *cancel = gfCommand_button(this, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    QPushButton *help = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("F1 Help"));

    auto *layout = new QGridLayout(this);
    layout->addWidget(drvDrive, 0, 0);
    layout->addWidget(lblFolder, 1, 0, 1, 2);
    layout->addWidget(dirFolders, 2, 0);
    layout->addWidget(filFiles, 2, 1);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {ok, cancel, help})
        buttons->addWidget(b);
    layout->addLayout(buttons, 3, 0, 1, 2);
    resize(520, 360);

    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, [this] {
        msFolder.clear();
        reject();
    });
    connect(help, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });
    connect(drvDrive, &QComboBox::activated, this, [this](int index) { mpDrive_change(index); });
    auto enter = [this](QListWidgetItem *item) {
        mpFolder_show(item->text() == kUp ? QFileInfo(msFolder).dir().absolutePath() : QDir(msFolder).filePath(item->text()));
    };
    connect(dirFolders, &QListWidget::itemDoubleClicked, this, enter);
    connect(dirFolders, &QListWidget::itemActivated, this, enter);
    gpFormKeys_install(this, cancel);
    gpFont_normalise(this);
    mpFolder_show(sStartPath.trimmed().isEmpty() ? QDir::rootPath() : sStartPath);
}

void frmSMFILE_PATH::mpDrive_change(int index)
{
    const QString drive = drvDrive->itemText(index);
    if (!QDir(drive).isReadable()) {
        lblFolder->setText(QStringLiteral("Drive Letter Not Found"));
        dirFolders->clear();
        filFiles->clear();
        return;
    }
    mpFolder_show(drive);
}

void frmSMFILE_PATH::mpFolder_show(const QString &folder)
{
    QDir dir(folder);
    if (!dir.exists() || !dir.isReadable())
        dir = QDir(QDir::rootPath());
    msFolder = QDir::cleanPath(dir.absolutePath());
    lblFolder->setText(msFolder);
    dirFolders->clear();
    if (!dir.isRoot())
        dirFolders->addItem(kUp);
    dirFolders->addItems(dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase));
    filFiles->clear();
    filFiles->addItems(dir.entryList({QStringLiteral("*")}, QDir::Files, QDir::Name | QDir::IgnoreCase));
}

void frmSMFILE_PATH::cmdHelp_Click()
{
    const QStringList lines = {
        QStringLiteral("A path is sometimes refered to as a folder or a directory."),
        QStringLiteral("Only a folder that contains the required data files can be"),
        QStringLiteral("set as your path."),
        QStringLiteral("ZOR database files are usually located in C:\\MV."),
        QStringLiteral("You select a path by first, selecting the Drive"),
        QStringLiteral("from the drop-down listbox. Then, Double-Click on"),
        QStringLiteral("the folder to be used as your path."),
        QStringLiteral("HELP - Shows this help box."),
        QStringLiteral("OK - Sets the chosen Path and exits."),
        QStringLiteral("CANCEL - Discards changes and exits."),
    };
    gfiMsgBox(lines.join(QLatin1Char('\r')), MsgButtons::OK, MsgIcon::Information, QStringLiteral("Path Browser Help"));
}

QString gfsPath_browse(const QString &sStartPath, QWidget *parent)
{
    frmSMFILE_PATH browser(sStartPath, parent);
    if (gfiForm_show_modal(browser) != QDialog::Accepted)
        return QString();
    return browser.ChosenPath();
}

} // namespace qln
