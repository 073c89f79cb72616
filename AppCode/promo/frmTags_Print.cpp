#include "promo/frmTags_Print.h"

#include "common/Calendar.h"
#include "common/DateEntry.h"
#include "common/DateForms.h"
#include "common/Files.h"
#include "common/FocusSelect.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"
#include "output/PrintFlexGrid.h"
#include "platform/Clock.h"
#include "platform/Help.h"
#include "platform/Messages.h"
#include "promo/TagLink.h"
#include "store/Common.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace qln {

namespace {

constexpr int kListPoints = 8;

} // namespace

frmTags_Print::frmTags_Print(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmTags_Print"));
    setWindowTitle(QStringLiteral("Labrix Link"));

    auto *panel = new QGroupBox(QStringLiteral("Enter Date Range  (no date range shows all promos)"), this);
    auto *dates = new QGridLayout(panel);
    const char *captions[2] = {"Start Date", "End Date"};
    for (int i = 0; i < 2; ++i) {
        lblEdit[i] = new QLabel(QString::fromLatin1(captions[i]), panel);
        lblEdit[i]->setObjectName(QStringLiteral("lblEdit(%1)").arg(i));
        txtEdit[i] = new QLineEdit(panel);
        txtEdit[i]->setObjectName(QStringLiteral("txtEdit(%1)").arg(i));
        dates->addWidget(lblEdit[i], 0, i);
        dates->addWidget(txtEdit[i], 1, i);
    }
    cmdCalendar = gfCommand_button(panel, QStringLiteral("cmdCalendar"), QStringLiteral("F2 Calendar"));
    cmdAccept = gfCommand_button(panel, QStringLiteral("cmdAccept"), QStringLiteral("&Accept"));
    SSCheck1 = new QCheckBox(QStringLiteral("Include Post Dated Promos"), panel);
    SSCheck1->setObjectName(QStringLiteral("SSCheck1"));
    dates->addWidget(cmdCalendar, 1, 2);
    dates->addWidget(cmdAccept, 1, 3);
    dates->addWidget(SSCheck1, 2, 0, 1, 4);

    lstPromos = new QListWidget(this);
    lstPromos->setObjectName(QStringLiteral("lstPromos"));
    lstPromos->setSelectionMode(QAbstractItemView::MultiSelection);
    prgRecords = new QProgressBar(this);
    prgRecords->setObjectName(QStringLiteral("prgRecords"));
    prgRecords->setTextVisible(false);

    cmdPrint = gfCommand_button(this, QStringLiteral("cmdPrint"), QStringLiteral("F5  Labrix"));
    cmdPrintList = gfCommand_button(this, QStringLiteral("cmdPrintList"), QStringLiteral("F9  Print List"));
    cmdExit = gfCommand_button(this, QStringLiteral("cmdExit"), QStringLiteral("Esc Cancel"));
    cmdHelp = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("&Help"));
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {cmdPrint, cmdPrintList, cmdHelp, cmdExit})
        buttons->addWidget(button);

    auto *form = new QVBoxLayout(this);
    form->addWidget(panel);
    form->addWidget(lstPromos, 1);
    form->addWidget(prgRecords);
    form->addLayout(buttons);

    connect(txtEdit[0], &QLineEdit::returnPressed, txtEdit[1], [this] { txtEdit[1]->setFocus(); });
    connect(txtEdit[1], &QLineEdit::returnPressed, cmdAccept, &QPushButton::click);
    connect(cmdAccept, &QPushButton::clicked, this, [this] { cmdAccept_Click(); });
    connect(cmdCalendar, &QPushButton::clicked, this, [this] { cmdCalendar_Click(); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] { cmdPrint_Click(); });
    connect(cmdPrintList, &QPushButton::clicked, this, [this] { cmdPrintList_Click(); });
    connect(cmdExit, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdHelp, &QPushButton::clicked, this, [this] { gpHelp_guides_open(objectName()); });

    gpFormKeys_install(this, cmdExit);
    gpFocusSelect_install(this);
    mpPrint_enable(false);
    gpFont_normalise(this);
    // The lines are columns of text: they line up only in a fixed pitch.
    lstPromos->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
}

frmTags_Print::~frmTags_Print()
{
    if (!msTagFile.isEmpty())
        gfbFile_delete(msTagFile);
}

void frmTags_Print::mpPrint_enable(bool bEnabled)
{
    cmdPrint->setEnabled(bEnabled);
    cmdPrintList->setEnabled(bEnabled);
}

void frmTags_Print::cmdAccept_Click()
{
    if (SSCheck1->isChecked()) {
        mbActiveOnly = true;
        mpPrint_enable(mfbList_fill());
        return;
    }
    if (!mfbDates_check())
        return;
    mpPrint_enable(false);
    mdTo = mfdBox_date(1);
    mpPrint_enable(mfbList_fill());
    if (cmdPrint->isEnabled())
        cmdPrint->setFocus();
    else
        txtEdit[0]->setFocus();
}

bool frmTags_Print::mfbDates_check()
{
    return mfbDate_check(0) && mfbDate_check(1);
}

bool frmTags_Print::mfbDate_check(int index)
{
    QLineEdit *box = txtEdit[index];
    if (box->text().trimmed().isEmpty())
        return true;
    const QString &usEurope = gCommon.USEurope;
    const std::optional<QDate> date = gfdDate_typed(box->text(), usEurope);
    if (!date) {
        gfiMsgBox(QStringLiteral("'") + lblEdit[index]->text() +
                  QStringLiteral("' Is Invalid\r\rReenter the date using the 'mm/dd/yyyy' format."));
        box->setFocus();
        return false;
    }
    box->setText(gfsDate_retyped(*date, usEurope));
    return true;
}

// An empty box is today.
QDate frmTags_Print::mfdBox_date(int index) const
{
    return gfdDate_typed(txtEdit[index]->text(), gCommon.USEurope).value_or(Clock::today());
}

bool frmTags_Print::mfbList_fill()
{
    lstPromos->clear();
    prgRecords->setRange(0, 0);
    for (const QString &text : gfTagLines_read(mbActiveOnly, mdTo, Clock::today())) {
        auto *line = new QListWidgetItem(text, lstPromos);
        line->setSelected(true);
        lstPromos->scrollToItem(line);
    }
    prgRecords->setRange(0, 1);
    prgRecords->reset();
    return lstPromos->count() > 0;
}

void frmTags_Print::cmdCalendar_Click()
{
    QDate start = gfdDate_typed(txtEdit[0]->text(), gCommon.USEurope).value_or(QDate());
    QDate end = gfdDate_typed(txtEdit[1]->text(), gCommon.USEurope).value_or(QDate());
    if (!gfbCalendar_get(start, end))
        return;
    txtEdit[0]->setText(gfsDate_short(start, gCommon.USEurope));
    txtEdit[1]->setText(gfsDate_short(end, gCommon.USEurope));
    cmdAccept->click();
}

void frmTags_Print::cmdPrint_Click()
{
    msTagFile = gfsTagFile_name();
    QList<qint32> items;
    for (int i = 0; i < lstPromos->count(); ++i)
        if (lstPromos->item(i)->isSelected())
            items << gflTagLine_item(lstPromos->item(i)->text());
    if (const std::optional<QString> error = gfsTagFile_write(msTagFile, items)) {
        gfiMsgBox(*error, MsgButtons::OK, MsgIcon::Critical, kProgramName);
        return;
    }
    gpTagProgram_run(msTagFile);
}

void frmTags_Print::cmdPrintList_Click()
{
    const QString from = txtEdit[0]->text().trimmed();
    const QString to = txtEdit[1]->text().trimmed();
    QString subtitle = QStringLiteral("All Dates");
    if (!from.isEmpty() && !to.isEmpty())
        subtitle = from + QStringLiteral(" to ") + to;
    else if (!from.isEmpty() || !to.isEmpty())
        subtitle = from + to;
    QStringList lines;
    for (int i = 0; i < lstPromos->count(); ++i)
        lines << lstPromos->item(i)->text();
    gpPrint_Lines(lines, gfPrintHead_store(QStringLiteral("Promos"), subtitle), kListPoints, this);
}

} // namespace qln
