#include "promo/frmEdit_Promo.h"

#include "common/Buttons.h"
#include "common/Confirm.h"
#include "common/DateForms.h"
#include "common/FocusSelect.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/NumberFormat.h"
#include "common/Numbers.h"
#include "common/ProcessState.h"
#include "config/Margin.h"
#include "platform/Clock.h"
#include "platform/Help.h"
#include "platform/Messages.h"
#include "promo/PromoEditor.h"
#include "promo/PromoList.h"
#include "promo/PromoPricing.h"
#include "promo/PromoSave.h"
#include "store/Common.h"
#include "store/Inventory.h"
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

constexpr int kStartBox = 1, kEndBox = 2, kFirstAmountBox = 3;
constexpr int kFirstAmountLabel = 6;
const QString kPriceForm = QStringLiteral("##.00");

// The numeric value of a text as the platform reads it ("12x" is 12), in money.
Money mfcValue(const QString &text) { return Money::fromDouble(gfdNumber_value(text)); }

} // namespace

frmEdit_Promo::frmEdit_Promo(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmEdit_Promo"));
    static const char *const captions[] = {"List Price", "Promo Price", "Starting Date", "Ending Date", "Item Cost",
                                           "Margin", "New Price", "Amount Off", "Percent Off"};
    for (int i = 0; i < 9; ++i)
        lblEdit[i] = gfForm_label(this, QStringLiteral("lblEdit(%1)").arg(i), QString::fromLatin1(captions[i]));
    for (int i = 0; i < 5; ++i)
        lblItem[i] = gfForm_label(this, QStringLiteral("lblItem(%1)").arg(i));
    for (int i = 0; i < 6; ++i) {
        txtEdit[i] = new QLineEdit(this);
        txtEdit[i]->setObjectName(QStringLiteral("txtEdit(%1)").arg(i));
        connect(txtEdit[i], &QLineEdit::textChanged, this, [this] { mpAccept_state(); });
    }
    txtEdit[0]->hide(); // the entry of the read-back mode, which no window here uses
    txtEdit[0]->installEventFilter(this);
    static const char *const options[] = {"Change Price to", "Change Price by $", "Change Price by %"};
    for (int i = 0; i < 3; ++i) {
        Option1[i] = new QRadioButton(QString::fromLatin1(options[i]), this);
        Option1[i]->setObjectName(QStringLiteral("Option1(%1)").arg(i));
        connect(Option1[i], &QRadioButton::clicked, this, [this, i] { mpOption_choose(i); });
        txtEdit[kFirstAmountBox + i]->installEventFilter(this);
        connect(txtEdit[kFirstAmountBox + i], &QLineEdit::returnPressed, this, [this] { mpAmount_enter(); });
    }
    QHBoxLayout *buttons = gfPromoEditor_buttons(this, cmdAcceptCancel, cmdCalendar, cmdHelp);
    gpPromoEditor_dates_chain(txtEdit[kStartBox], txtEdit[kEndBox], cmdAcceptCancel[0]);
    connect(cmdAcceptCancel[0], &QPushButton::clicked, this, [this] { cmdAccept_Click(); });
    connect(cmdAcceptCancel[1], &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdCalendar, &QPushButton::clicked, this, [this] { cmdCalendar_Click(); });
    connect(cmdHelp, &QPushButton::clicked, this, [] { gpHelp_guides_open(QStringLiteral("promoprices.htm")); });

    auto *grid = new QGridLayout(this);
    grid->addWidget(lblItem[0], 0, 0, 1, 4);
    const int rows[] = {1, 2, 5, 6, 3, 4}; // list price, promo price, dates, cost, margin
    const int dataOf[] = {1, 4, -1, -1, 2, 3};
    for (int i = 0; i < 6; ++i) {
        grid->addWidget(lblEdit[i], rows[i], 0);
        if (dataOf[i] >= 0)
            grid->addWidget(lblItem[dataOf[i]], rows[i], 1);
    }
    grid->addWidget(txtEdit[kStartBox], 5, 1);
    grid->addWidget(txtEdit[kEndBox], 6, 1);
    for (int i = 0; i < 3; ++i) {
        grid->addWidget(Option1[i], 1 + i, 2);
        grid->addWidget(lblEdit[kFirstAmountLabel + i], 4, 2);
        grid->addWidget(txtEdit[kFirstAmountBox + i], 4, 3);
    }
    grid->addWidget(txtEdit[0], 7, 1);
    grid->addLayout(buttons, 8, 0, 1, 4);

    gpFormKeys_install(this, cmdAcceptCancel[1]);
    gpFocusSelect_install(this);
}

void frmEdit_Promo::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!mbLoaded) {
        mbLoaded = true;
        mpForm_load();
    }
}

void frmEdit_Promo::mpForm_load()
{
    cmdAcceptCancel[0]->setEnabled(false);
    lblItem[0]->setText(msDescription);
    lblItem[1]->setText(gfsNumber_format(mfcValue(msListPrice), QStringLiteral("#######.00")));
    lblItem[2]->setText(gfsNumber_format(mfcValue(msCost), QStringLiteral("######.00")));
    lblItem[4]->setText(msPromoPrice);
    mpMargin_show();
    txtEdit[kStartBox]->setText(msStart);
    txtEdit[kEndBox]->setText(msEnd);
    if (miMode == kModeAdd) {
        setWindowTitle(QStringLiteral("Add Promo Price"));
        Option1[0]->setChecked(true);
        mpOption_choose(0);
        const QString today = gfsPromo_date_text(Clock::now());
        txtEdit[kStartBox]->setText(today);
        txtEdit[kEndBox]->setText(today);
    } else if (miMode == kModeChange) {
        setWindowTitle(QStringLiteral("Change Promo Price"));
        const int option = gPromo.ChangeType >= kChangeTo && gPromo.ChangeType <= kChangeByPercent ? gPromo.ChangeType : 0;
        Option1[option]->setChecked(true);
        mpOption_choose(option);
        txtEdit[kFirstAmountBox + option]->setText(gPromo.PriceChange.toPlainText());
        if (const std::optional<Money> price = gfcPromo_price_get(gInventory.Price, gPromo))
            msPromoPrice = gfsNumber_format(*price, kPriceForm);
    }
    gpFont_normalise(this);
}

int frmEdit_Promo::mfiOption() const
{
    for (int i = 0; i < 3; ++i)
        if (Option1[i]->isChecked())
            return i;
    return 0;
}

void frmEdit_Promo::mpOption_choose(int option)
{
    for (int i = 0; i < 3; ++i) {
        txtEdit[kFirstAmountBox + i]->setVisible(i == option);
        lblEdit[kFirstAmountLabel + i]->setVisible(i == option);
    }
    if (isVisible())
        txtEdit[kFirstAmountBox + option]->setFocus();
    // Kept from the start: the price by percent of whatever the buffer holds; the boxes
    // decide the price at Accept.
    if (option == kChangeBy)
        if (const std::optional<Money> price = gfcPromo_price_get(gInventory.Price, gPromo.PriceChange, kChangeByPercent))
            msPromoPrice = gfsNumber_format(*price, kPriceForm);
}

void frmEdit_Promo::mpAccept_state()
{
    for (int i = 0; i <= kEndBox; ++i)
        gpAcceptButton_follow(txtEdit[i]->text(), cmdAcceptCancel[0]);
}

void frmEdit_Promo::mpAmount_enter()
{
    if (txtEdit[kStartBox]->text().isEmpty())
        txtEdit[kStartBox]->setFocus();
    else
        cmdAcceptCancel[0]->setFocus();
}

bool frmEdit_Promo::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtEdit[0] && event->type() == QEvent::KeyPress) {
        const QString text = static_cast<QKeyEvent *>(event)->text();
        return text.size() == 1 && text.at(0).isPrint() && gfiNumeric_key(text.at(0).unicode(), false) == 0;
    }
    if (event->type() == QEvent::FocusOut) {
        for (int i = kFirstAmountBox; i < 6; ++i) {
            if (watched == txtEdit[i]) {
                mpPromo_price_show(i);
                mpMargin_show();
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmEdit_Promo::mpPromo_price_show(int iBox)
{
    QLineEdit *box = txtEdit[iBox];
    const std::optional<Money> amount = Money::parse(box->text());
    if (iBox == kFirstAmountBox) {
        if (amount)
            box->setText(gfsNumber_format(*amount, kPriceForm));
        lblItem[4]->setText(box->text());
        return;
    }
    if (!amount)
        return;
    const Money price = gInventory.Price;
    const Money promo = iBox == kFirstAmountBox + kChangeBy
                            ? price - *amount
                            : price - Money::fromDouble(price.toDouble() * amount->toDouble() / 100.0);
    lblItem[4]->setText(gfsNumber_format(promo, kPriceForm));
    box->setText(gfsNumber_format(*amount, kPriceForm));
}

void frmEdit_Promo::mpMargin_show()
{
    if (const std::optional<QString> margin = gfsMargin_text_get(mfcValue(lblItem[4]->text()), mfcValue(msCost)))
        lblItem[3]->setText(*margin);
}

bool frmEdit_Promo::mfbValidate_fail(int box, const QString &sFirst, const QString &sSecond)
{
    gfiMsgBox(sFirst + QStringLiteral("\r\r") + sSecond, MsgButtons::OK, MsgIcon::Information, kProgramName);
    // A price failure points at the "to" box; when another option hides it, its own box
    // takes the focus instead.
    QLineEdit *target = txtEdit[box];
    if (target->isHidden())
        target = txtEdit[kFirstAmountBox + mfiOption()];
    target->setFocus();
    return false;
}

bool frmEdit_Promo::mfbValidate()
{
    for (int box = kStartBox; box <= kEndBox; ++box)
        if (const auto fault = gfPromoEditor_date_fault(txtEdit[box]->text(), lblEdit[box + 1]->text()))
            return mfbValidate_fail(box, fault->headline, fault->detail);

    const int chosen = kFirstAmountBox + mfiOption();
    if (!txtEdit[chosen]->text().isEmpty())
        mpPromo_price_show(chosen);
    const Money promo = mfcValue(lblItem[4]->text());
    const QString priceInvalid = QStringLiteral("' Promo Price ' Is Not Valid");
    if (mfcValue(msListPrice) < promo)
        return mfbValidate_fail(kFirstAmountBox, priceInvalid,
                                QStringLiteral("The 'Promo Price ' is higher than the regular price."));
    if (promo <= Money())
        return mfbValidate_fail(kFirstAmountBox, priceInvalid, QStringLiteral("The 'Promo Price ' must be greater than zero."));

    if (const auto fault = gfPromoEditor_reversed_fault(*gfdDate_parse(txtEdit[kStartBox]->text()),
                                                        *gfdDate_parse(txtEdit[kEndBox]->text())))
        return mfbValidate_fail(kStartBox, fault->headline, fault->detail);

    if (mfcValue(msCost) >= promo)
        return gfbConfirm(QStringLiteral("Promo Price Is Below Cost"), QStringLiteral("Is that what you want?"), 256);
    return true;
}

void frmEdit_Promo::cmdAccept_Click()
{
    if (!mfbValidate()) {
        mpMargin_show();
        return;
    }
    if (miMode == kModeReadBack) {
        msPromoPrice = txtEdit[0]->text();
        msStart = txtEdit[kStartBox]->text();
        msEnd = txtEdit[kEndBox]->text();
    } else if (!mfbSave()) {
        cmdAcceptCancel[1]->setFocus();
        mpMargin_show();
        return;
    }
    mbCancelled = false;
    accept();
}

bool frmEdit_Promo::mfbSave()
{
    const int option = mfiOption();
    const std::optional<Money> amount = gfcPromoEditor_amount(txtEdit[kFirstAmountBox + option]->text());
    if (!amount)
        return false;
    const bool add = miMode == kModeAdd;
    const PromoSaveEnd end = gfeItemPromo_save(
        add, {*gfdDate_parse(txtEdit[kStartBox]->text()), *gfdDate_parse(txtEdit[kEndBox]->text()), qint16(option), *amount});
    gpPromoSave_tell(end, add);
    // A row written stays written: the dialog closes, so that a second Accept can't add it twice.
    return end != PromoSaveEnd::RowRefused;
}

void frmEdit_Promo::cmdCalendar_Click()
{
    if (!gfbPromoEditor_calendar(txtEdit[kStartBox], txtEdit[kEndBox]))
        return;
    cmdAcceptCancel[0]->setEnabled(true);
    txtEdit[kFirstAmountBox + mfiOption()]->setFocus();
}

} // namespace qln
