#include "promo/frmEdit_DeptPromo.h"

#include "common/Buttons.h"
#include "common/FocusSelect.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/NumberFormat.h"
#include "common/Numbers.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Help.h"
#include "platform/Messages.h"
#include "promo/PromoEditor.h"
#include "promo/PromoList.h"
#include "promo/PromoPricing.h"
#include "promo/PromoSave.h"
#include "store/Common.h"
#include "store/Departments.h"
#include "store/RecordOps.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace qln {

namespace {

constexpr int kStartBox = 1, kEndBox = 2, kMoneyBox = 4, kPercentBox = 5;
constexpr int kMoneyUnit = 7, kPercentUnit = 8;
constexpr int kOptionMoney = 1, kOptionPercent = 2;

} // namespace

frmEdit_DeptPromo::frmEdit_DeptPromo(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmEdit_DeptPromo"));
    const std::pair<int, const char *> labels[] = {{0, "Department"}, {1, ""},  {2, "Starting Date"},
                                                   {3, "Ending Date"}, {7, "$"}, {8, "%"}};
    for (const auto &[i, caption] : labels)
        lblEdit[i] = gfForm_label(this, QStringLiteral("lblEdit(%1)").arg(i), QString::fromLatin1(caption));
    lblEdit[1]->setFrameShape(QFrame::Panel);
    lblEdit[1]->setFrameShadow(QFrame::Sunken);
    for (int i : {kStartBox, kEndBox, kMoneyBox, kPercentBox}) {
        txtEdit[i] = new QLineEdit(this);
        txtEdit[i]->setObjectName(QStringLiteral("txtEdit(%1)").arg(i));
        connect(txtEdit[i], &QLineEdit::textChanged, this, [this, i] { mpAccept_state(i); });
    }
    txtEdit[kMoneyBox]->installEventFilter(this);
    txtEdit[kPercentBox]->installEventFilter(this);
    Option1[kOptionMoney] = new QRadioButton(QStringLiteral("Decrease Price by $"), this);
    Option1[kOptionPercent] = new QRadioButton(QStringLiteral("Change Price by %"), this);
    for (int i : {kOptionMoney, kOptionPercent}) {
        Option1[i]->setObjectName(QStringLiteral("Option1(%1)").arg(i));
        connect(Option1[i], &QRadioButton::clicked, this, [this, i] { mpOption_choose(i); });
    }
    QHBoxLayout *buttons = gfPromoEditor_buttons(this, cmdAcceptCancel, cmdCalendar, cmdHelp);
    connect(cmdAcceptCancel[0], &QPushButton::clicked, this, [this] { cmdAccept_Click(); });
    connect(cmdAcceptCancel[1], &QPushButton::clicked, this, [this] {
        Cancelled = true;
        reject();
    });
    connect(cmdCalendar, &QPushButton::clicked, this, [this] { cmdCalendar_Click(); });
    connect(cmdHelp, &QPushButton::clicked, this, [] { gpHelp_guides_open(QStringLiteral("promoprices.htm")); });
    gpPromoEditor_dates_chain(txtEdit[kStartBox], txtEdit[kEndBox], cmdAcceptCancel[0]);
    for (int i : {kMoneyBox, kPercentBox})
        connect(txtEdit[i], &QLineEdit::returnPressed, this, [this] { txtEdit[kStartBox]->setFocus(); });

    auto *grid = new QGridLayout(this);
    grid->addWidget(lblEdit[0], 0, 0);
    grid->addWidget(lblEdit[1], 0, 1, 1, 3);
    grid->addWidget(lblEdit[2], 1, 0);
    grid->addWidget(txtEdit[kStartBox], 1, 1);
    grid->addWidget(lblEdit[3], 2, 0);
    grid->addWidget(txtEdit[kEndBox], 2, 1);
    grid->addWidget(Option1[kOptionMoney], 1, 2, 1, 2);
    grid->addWidget(Option1[kOptionPercent], 2, 2, 1, 2);
    grid->addWidget(lblEdit[kMoneyUnit], 3, 2, Qt::AlignRight);
    grid->addWidget(lblEdit[kPercentUnit], 3, 2, Qt::AlignRight);
    grid->addWidget(txtEdit[kMoneyBox], 3, 3);
    grid->addWidget(txtEdit[kPercentBox], 3, 3);
    grid->addLayout(buttons, 4, 0, 1, 4);

    gpFormKeys_install(this, cmdAcceptCancel[1]);
    // Installed last, so it sees the dialog's own keys first: F10 accepts even while the
    // button is disabled.
    installEventFilter(this);
    gpFocusSelect_install(this);
}

void frmEdit_DeptPromo::setDeptText(const QString &text) { lblEdit[1]->setText(text); }

void frmEdit_DeptPromo::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!mbActivated) {
        mbActivated = true;
        mpForm_activate();
    }
}

void frmEdit_DeptPromo::keyPressEvent(QKeyEvent *event)
{
    // Enter goes where the boxes send it, never to a default button.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return;
    QDialog::keyPressEvent(event);
}

void frmEdit_DeptPromo::mpForm_activate()
{
    cmdAcceptCancel[0]->setEnabled(false);
    txtEdit[kStartBox]->setText(StartDateText);
    txtEdit[kEndBox]->setText(EndDateText);
    if (EditMode == kModeAdd) {
        setWindowTitle(QStringLiteral("Add Promo Price"));
        Option1[kOptionMoney]->setChecked(true);
        lblEdit[kMoneyUnit]->hide();
        lblEdit[kPercentUnit]->hide();
        txtEdit[kMoneyBox]->clear();
        txtEdit[kMoneyBox]->show();
        txtEdit[kPercentBox]->clear();
        txtEdit[kPercentBox]->hide();
    } else {
        setWindowTitle(QStringLiteral("Change Promo Price"));
        if (gPromo.ChangeType == kChangeBy) {
            Option1[kOptionMoney]->setChecked(true);
            mpOption_choose(kOptionMoney);
            txtEdit[kMoneyBox]->setText(gPromo.PriceChange.toPlainText());
        } else if (gPromo.ChangeType == kChangeByPercent) {
            Option1[kOptionPercent]->setChecked(true);
            mpOption_choose(kOptionPercent);
            txtEdit[kPercentBox]->setText(gPromo.PriceChange.toPlainText());
        }
    }
    gpFont_normalise(this);
}

void frmEdit_DeptPromo::mpOption_choose(int option)
{
    const bool money = option == kOptionMoney;
    lblEdit[kMoneyUnit]->setVisible(money);
    txtEdit[kMoneyBox]->setVisible(money);
    lblEdit[kPercentUnit]->setVisible(!money);
    txtEdit[kPercentBox]->setVisible(!money);
}

// Applied with the changed box and then with both dates: the ending date decides.
void frmEdit_DeptPromo::mpAccept_state(int changed)
{
    for (int box : {changed, kStartBox, kEndBox})
        gpAcceptButton_follow(txtEdit[box]->text(), cmdAcceptCancel[0]);
}

bool frmEdit_DeptPromo::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == this && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (!(key->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier))) {
            switch (key->key()) {
            case Qt::Key_F1: cmdHelp->click(); return true;
            case Qt::Key_F2:
                if (cmdCalendar->isEnabled())
                    cmdCalendar->click();
                return true;
            case Qt::Key_F10: cmdAccept_Click(); return true;
            default: break;
            }
        }
    }
    if (watched == txtEdit[kPercentBox] && event->type() == QEvent::KeyPress) {
        const QString text = static_cast<QKeyEvent *>(event)->text();
        return text.size() == 1 && text.at(0).isPrint() && gfiNumeric_key(text.at(0).unicode(), false) == 0;
    }
    if (event->type() == QEvent::FocusOut && (watched == txtEdit[kMoneyBox] || watched == txtEdit[kPercentBox])) {
        auto *box = static_cast<QLineEdit *>(watched);
        if (const std::optional<Money> amount = Money::parse(box->text()))
            box->setText(gfsNumber_format(*amount, QStringLiteral("##.00")));
    }
    return QDialog::eventFilter(watched, event);
}

bool frmEdit_DeptPromo::mfbValidate()
{
    const auto fail = [this](int box, const QString &headline, const QString &detail) {
        gfiMsgBox(headline + QStringLiteral("\r\r") + detail, MsgButtons::OK, MsgIcon::Information, kProgramName);
        txtEdit[box]->setFocus();
        return false;
    };
    for (int box : {kStartBox, kEndBox})
        if (const auto fault = gfPromoEditor_date_fault(txtEdit[box]->text(), lblEdit[box + 1]->text()))
            return fail(box, fault->headline, fault->detail);
    if (const auto fault = gfPromoEditor_reversed_fault(*gfdDate_parse(txtEdit[kStartBox]->text()),
                                                        *gfdDate_parse(txtEdit[kEndBox]->text())))
        return fail(kEndBox, fault->headline, fault->detail);
    return true;
}

void frmEdit_DeptPromo::cmdAccept_Click()
{
    if (!mfbValidate())
        return;
    if (!mfbSave()) {
        cmdAcceptCancel[1]->setFocus();
        return;
    }
    Cancelled = false;
    accept();
}

bool frmEdit_DeptPromo::mfbSave()
{
    const bool money = Option1[kOptionMoney]->isChecked();
    const std::optional<Money> amount = gfcPromoEditor_amount(txtEdit[money ? kMoneyBox : kPercentBox]->text());
    if (!amount)
        return false;
    const bool add = EditMode == kModeAdd;
    const bool saved = gfbDeptPromo_save(add, {*gfdDate_parse(txtEdit[kStartBox]->text()), *gfdDate_parse(txtEdit[kEndBox]->text()),
                                               money ? kChangeBy : kChangeByPercent, *amount});
    if (!saved)
        gpPromoSave_tell(PromoSaveEnd::RowRefused, add);
    return saved;
}

void frmEdit_DeptPromo::cmdCalendar_Click()
{
    if (!gfbPromoEditor_calendar(txtEdit[kStartBox], txtEdit[kEndBox]))
        return;
    cmdAcceptCancel[0]->setEnabled(true);
    cmdAcceptCancel[0]->setFocus();
}

} // namespace qln
