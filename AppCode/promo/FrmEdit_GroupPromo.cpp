#include "promo/FrmEdit_GroupPromo.h"

#include "common/FocusSelect.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"
#include "platform/Messages.h"
#include "promo/FrmDailyPromo.h"
#include "promo/PromoEditor.h"
#include "promo/PromoGroups.h"
#include "promo/PromoList.h"
#include "promo/PromoPricing.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace qln {

namespace {
constexpr int kStartBox = 1, kEndBox = 2, kFirstAmountBox = 3;

void mpFault_tell(const PromoEditorFault &fault)
{
    gfiMsgBox(fault.headline + QStringLiteral("\r\r") + fault.detail, MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
}
} // namespace

FrmEdit_GroupPromo::FrmEdit_GroupPromo(const QString &sGroupName, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FrmEdit_GroupPromo"));
    setWindowTitle(kProgramName);
    lblEdit[0] = gfForm_label(this, QStringLiteral("lblEdit(0)"), QStringLiteral("Group"));
    lblEdit[1] = gfForm_label(this, QStringLiteral("lblEdit(1)"), sGroupName);
    for (int i = kStartBox; i < 6; ++i) {
        txtEdit[i] = new QLineEdit(this);
        txtEdit[i]->setObjectName(QStringLiteral("txtEdit(%1)").arg(i));
    }
    static const char *const options[] = {"Change Price to", "Decrease Price by $", "Change Price by %"};
    for (int i = 0; i < 3; ++i) {
        Option1[i] = new QRadioButton(QString::fromLatin1(options[i]), this);
        Option1[i]->setObjectName(QStringLiteral("Option1(%1)").arg(i));
        connect(Option1[i], &QRadioButton::clicked, this, [this, i] { mpOption_choose(i); });
    }
    QHBoxLayout *buttons = gfPromoEditor_buttons(this, cmdAcceptCancel, cmdCalendar, cmdHelp);
    connect(cmdAcceptCancel[0], &QPushButton::clicked, this, [this] { cmdAccept_Click(); });
    connect(cmdAcceptCancel[1], &QPushButton::clicked, this, &FrmEdit_GroupPromo::reject);
    connect(cmdCalendar, &QPushButton::clicked, this, [this] { cmdCalendar_Click(); });

    auto *grid = new QGridLayout(this);
    grid->addWidget(lblEdit[0], 0, 0);
    grid->addWidget(lblEdit[1], 0, 1, 1, 2);
    mlblDate[0] = gfForm_label(this, QStringLiteral("lblEdit(2)"), QStringLiteral("Starting Date"));
    mlblDate[1] = gfForm_label(this, QStringLiteral("lblEdit(3)"), QStringLiteral("Ending Date"));
    grid->addWidget(mlblDate[0], 1, 0);
    grid->addWidget(txtEdit[kStartBox], 1, 1);
    grid->addWidget(mlblDate[1], 2, 0);
    grid->addWidget(txtEdit[kEndBox], 2, 1);
    for (int i = 0; i < 3; ++i) {
        grid->addWidget(Option1[i], 3 + i, 0);
        grid->addWidget(txtEdit[kFirstAmountBox + i], 3 + i, 1);
    }
    grid->addLayout(buttons, 6, 0, 1, 3);

    // The keys of the captions work here as in every other window.
    gpFormKeys_install(this, cmdAcceptCancel[1]);
    gpFocusSelect_install(this);
}

void FrmEdit_GroupPromo::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!mbLoaded) {
        mbLoaded = true;
        if (FrmDailyPromo::mbDailyMode())
            mpDaily_activate();
        else
            mpForm_load();
    }
}

void FrmEdit_GroupPromo::mpForm_load()
{
    const int type = gGroupPromo.ChangeType;
    for (int i = 0; i < 3; ++i)
        txtEdit[kFirstAmountBox + i]->setVisible(i == type);
    if (type >= kChangeTo && type <= kChangeByPercent) {
        Option1[type]->setChecked(true);
        // The item buffer's amount for the first two: after a fill both agree unless the
        // group's rows differ among themselves.
        const Money amount = type == kChangeByPercent ? gGroupPromo.PriceChange : gPromo.PriceChange;
        txtEdit[kFirstAmountBox + type]->setText(amount.toPlainText());
    }
    txtEdit[kStartBox]->setText(gfsPromo_date_text(gGroupPromo.StartDate));
    txtEdit[kEndBox]->setText(gfsPromo_date_text(gGroupPromo.EndDate));
    Cancelled = false;
    gpFont_normalise(this);
}

// Esc and the window's close button end here too, not only the Cancel button.
void FrmEdit_GroupPromo::reject()
{
    Changed = false;
    Cancelled = true;
    QDialog::reject();
}

// A daily promo is a percentage and nothing else.
void FrmEdit_GroupPromo::mpDaily_activate()
{
    Option1[kChangeByPercent]->setChecked(true);
    Option1[kChangeTo]->setEnabled(false);
    Option1[kChangeBy]->setEnabled(false);
    lblEdit[1]->setText(QStringLiteral("Daily Promo"));
    txtEdit[kStartBox]->setText(gfsPromo_date_text(gGroupPromo.StartDate));
    txtEdit[kEndBox]->setText(gfsPromo_date_text(gGroupPromo.EndDate));
    txtEdit[kFirstAmountBox + kChangeTo]->hide();
    txtEdit[kFirstAmountBox + kChangeBy]->setEnabled(false);
    txtEdit[kFirstAmountBox + kChangeByPercent]->show();
    txtEdit[kFirstAmountBox + kChangeByPercent]->setText(gGroupPromo.PriceChange.toPlainText());
    gpFont_normalise(this);
}

int FrmEdit_GroupPromo::mfiOption() const
{
    for (int i = 0; i < 3; ++i)
        if (Option1[i]->isChecked())
            return i;
    return -1;
}

void FrmEdit_GroupPromo::mpOption_choose(int option)
{
    for (int i = 0; i < 3; ++i)
        txtEdit[kFirstAmountBox + i]->setVisible(i == option);
    if (isVisible())
        txtEdit[kFirstAmountBox + option]->setFocus();
}

void FrmEdit_GroupPromo::cmdAccept_Click()
{
    // Typed text is taken as it stands; what can't be a date or an amount is said once and
    // nothing is taken.
    for (int box : {kStartBox, kEndBox}) {
        if (const auto fault = gfPromoEditor_date_fault(txtEdit[box]->text(), mlblDate[box - kStartBox]->text())) {
            mpFault_tell(*fault);
            txtEdit[box]->setFocus();
            return;
        }
    }
    const QDate start = *gfdDate_parse(txtEdit[kStartBox]->text());
    const QDate end = *gfdDate_parse(txtEdit[kEndBox]->text());
    Changed = false;
    PromoPriceRecord taken = gGroupPromo;
    const int option = mfiOption();
    Money amount = taken.PriceChange;
    int type = taken.ChangeType;
    if (option >= 0) {
        const std::optional<Money> typed = gfcPromoEditor_amount(txtEdit[kFirstAmountBox + option]->text());
        if (!typed) {
            txtEdit[kFirstAmountBox + option]->setFocus();
            return;
        }
        if (const auto fault = FrmDailyPromo::mbDailyMode() ? gfPromoEditor_daily_percent_fault(*typed) : std::nullopt) {
            mpFault_tell(*fault);
            txtEdit[kFirstAmountBox + option]->setFocus();
            return;
        }
        amount = *typed;
        type = option;
    }
    Changed = gfbGroupPromo_take(taken, start, end, type, amount);
    gGroupPromo = taken;
    accept();
}

void FrmEdit_GroupPromo::cmdCalendar_Click()
{
    if (!gfbPromoEditor_calendar(txtEdit[kStartBox], txtEdit[kEndBox]))
        return;
    cmdAcceptCancel[0]->setEnabled(true);
    if (const int option = mfiOption(); option >= 0)
        txtEdit[kFirstAmountBox + option]->setFocus();
}

} // namespace qln
