#include "config/frmSM_DATAPATH2.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "config/DataPath.h"
#include "config/frmSMFILE_PATH.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <exception>

namespace qln {

frmSM_DATAPATH2::frmSM_DATAPATH2(clsDataPath &dataPath, QWidget *parent) : QDialog(parent), m_dp(dataPath)
{
    setObjectName(QStringLiteral("frmSM_DATAPATH2"));
    setWindowTitle(m_dp.Title.isEmpty() ? QStringLiteral("Set Data Path") : m_dp.Title);
    auto field = [this](const QString &name) {
        auto *box = new QLineEdit(this);
        box->setObjectName(name);
        return box;
    };
    txtDataPath = field(QStringLiteral("txtDataPath"));
    txtStationPath = field(QStringLiteral("txtStationPath"));
    txtStation = field(QStringLiteral("txtStation"));
    txtStation->setMaxLength(5);
    lblStation = gfForm_label(this, QStringLiteral("lblStation"));
    chkTraining = new QCheckBox(QStringLiteral("Training"), this);
    chkTraining->setObjectName(QStringLiteral("chkTraining"));
    QPushButton *browse = gfCommand_button(this, QStringLiteral("cmdBrowse"), QStringLiteral("&Browse..."));
    QPushButton *ok = gfCommand_button(this, QStringLiteral("cmdOK"), QStringLiteral("OK"));
    QPushButton *cancel = gfCommand_button(this, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    QPushButton *help = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("F1 Help"));

    auto *layout = new QGridLayout(this);
    layout->addWidget(gfForm_label(this, QStringLiteral("lblDataPath"), QStringLiteral("Data Path")), 0, 0);
    layout->addWidget(txtDataPath, 0, 1);
    layout->addWidget(browse, 0, 2);
    layout->addWidget(gfForm_label(this, QStringLiteral("lblStationPath"), QStringLiteral("Station Path")), 1, 0);
    layout->addWidget(txtStationPath, 1, 1);
    layout->addWidget(lblStation, 2, 0);
    layout->addWidget(txtStation, 2, 1, Qt::AlignLeft);
    layout->addWidget(chkTraining, 3, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton *b : {ok, cancel, help})
        buttons->addWidget(b);
    layout->addLayout(buttons, 4, 0, 1, 3);
    layout->setColumnStretch(1, 1);
    resize(560, sizeHint().height());

    connect(ok, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cancel, &QPushButton::clicked, this, [this] {
        m_dp.Cancelled = true;
        reject();
    });
    connect(browse, &QPushButton::clicked, this, [this] { cmdBrowse_Click(); });
    connect(help, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });
    connect(chkTraining, &QCheckBox::clicked, this, [this] { chkTraining_Click(); });
    connect(txtStation, &QLineEdit::textChanged, this, [this] { mpStation_label(); });
    gpFormKeys_install(this, cancel);
    gpFont_normalise(this);
    mpForm_load();
}

void frmSM_DATAPATH2::mpForm_load()
{
    m_dp.Cancelled = true; // until OK
    txtDataPath->setText(m_dp.DataPath);
    txtStationPath->setText(m_dp.StationPath);
    txtStationPath->setEnabled(m_dp.StationPathEnabled);
    txtStation->setText(m_dp.Station);
    txtStation->setEnabled(m_dp.StationNumberEnabled);
    chkTraining->setChecked(m_dp.TestPath == QLatin1String("Y"));
    mpStation_label();
}

void frmSM_DATAPATH2::mpStation_label()
{
    const QString kept = m_dp.Station;
    m_dp.Station = txtStation->text();
    lblStation->setText(m_dp.StationLabel());
    m_dp.Station = kept;
}

void frmSM_DATAPATH2::cmdOK_Click()
{
    try {
        cmdOK_run();
    } catch (const std::exception &) {
        gfiMsgBox(QStringLiteral("Unexpected Error"), MsgButtons::OK, MsgIcon::Critical, windowTitle());
    }
}

void frmSM_DATAPATH2::cmdOK_run()
{
    m_dp.DataPath = gfsPath_closing_drop(txtDataPath->text());
    m_dp.StationPath = txtStationPath->text();
    m_dp.Station = txtStation->text();
    m_dp.TestPath = chkTraining->isChecked() ? QStringLiteral("Y") : QStringLiteral(" ");
    if (m_dp.Validate()) {
        if (m_dp.StationPath.trimmed().isEmpty())
            m_dp.StationPath = m_dp.DataPath;
        m_dp.Save();
        m_dp.Cancelled = false;
        accept();
        return;
    }
    QLineEdit *field = m_dp.FieldKey() == QLatin1String("STATION")    ? txtStation
                       : m_dp.FieldKey() == QLatin1String("DATAPATH") ? txtDataPath
                                                                      : txtStationPath;
    field->setFocus();
    field->selectAll();
}

void frmSM_DATAPATH2::cmdBrowse_Click()
{
    const QString chosen = gfsPath_browse(txtDataPath->text(), this);
    if (!chosen.isEmpty())
        txtDataPath->setText(chosen);
}

void frmSM_DATAPATH2::chkTraining_Click()
{
    gfiMsgBox(QStringLiteral("Checking this box does not set up a traning directory or change your data path \r"
                             "It is a manual switch that turns on or off the training flag on the main screen "),
              MsgButtons::OK, MsgIcon::Exclamation, QStringLiteral("Caution"));
}

void frmSM_DATAPATH2::cmdHelp_Click()
{
    const QStringList lines = {
        QStringLiteral("A valid data path is necessary before an application can run."),
        QStringLiteral("A path is also sometimes refered to as a folder or a directory."),
        QStringLiteral("DATA PATH - The location of the ZOR database files, usually C:\\MV."),
        QStringLiteral("You can type in the path or use the Browser to select its folder."),
        QStringLiteral("STATION PATH - Location of the station's file, STA##.ZOR."),
        QStringLiteral("* May be disabled, if not used by an application."),
        QStringLiteral("STATION - When running on a network, you can select the station"),
        QStringLiteral("number being used to access the network."),
        QStringLiteral("BROWSER - Select an existing path by first, selecting the"),
        QStringLiteral("Drive from the drop-down listbox. Then, Double-Click on the"),
        QStringLiteral("folder to be selected as your path."),
        QStringLiteral("HELP - Shows this help box."),
        QStringLiteral("OK - Saves changes and exits."),
        QStringLiteral("CANCEL - Discards changes and exits."),
    };
    gfiMsgBox(lines.join(QLatin1Char('\r')), MsgButtons::OK, MsgIcon::Information, QStringLiteral("Station and Data Path Help"));
}

void gpDataPath_window_install()
{
    gpDataPath_window_show = [](clsDataPath &dp) {
        frmSM_DATAPATH2 form(dp);
        gfiForm_show_modal(form);
    };
}

} // namespace qln
