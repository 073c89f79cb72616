#include "promo/PromoEditor.h"

#include "common/Calendar.h"
#include "common/FormControls.h"
#include "common/ProcessState.h"
#include "platform/Messages.h"
#include "promo/PromoList.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

namespace qln {

QHBoxLayout *gfPromoEditor_buttons(QDialog *form, QPushButton *(&cmdAcceptCancel)[2], QPushButton *&cmdCalendar,
                                   QPushButton *&cmdHelp)
{
    cmdAcceptCancel[0] = gfCommand_button(form, QStringLiteral("cmdAcceptCancel(0)"), QStringLiteral("F10 Accept"));
    cmdAcceptCancel[1] = gfCommand_button(form, QStringLiteral("cmdAcceptCancel(1)"), QStringLiteral("Esc Cancel"));
    cmdCalendar = gfCommand_button(form, QStringLiteral("cmdCalendar"), QStringLiteral("F2  Calendar"));
    cmdHelp = gfCommand_button(form, QStringLiteral("cmdHelp"), QStringLiteral("F1 Help"));
    auto *row = new QHBoxLayout;
    for (QPushButton *b : {cmdHelp, cmdCalendar, cmdAcceptCancel[0], cmdAcceptCancel[1]})
        row->addWidget(b);
    return row;
}

void gpPromoEditor_dates_chain(QLineEdit *start, QLineEdit *end, QPushButton *accept)
{
    QObject::connect(start, &QLineEdit::returnPressed, end, [end] { end->setFocus(); });
    QObject::connect(end, &QLineEdit::returnPressed, accept, [accept] {
        if (accept->isEnabled())
            accept->click();
    });
}

bool gfbPromoEditor_calendar(QLineEdit *start, QLineEdit *end)
{
    QDate first = gfdDate_parse(start->text()).value_or(QDate());
    QDate last = gfdDate_parse(end->text()).value_or(QDate());
    if (!gfbCalendar_get(first, last))
        return false;
    start->setText(gfsPromo_date_text(QDateTime(first, QTime(0, 0))));
    end->setText(gfsPromo_date_text(QDateTime(last, QTime(0, 0))));
    return true;
}

std::optional<PromoEditorFault> gfPromoEditor_date_fault(const QString &text, const QString &caption)
{
    if (gfdDate_parse(text))
        return std::nullopt;
    return PromoEditorFault{QLatin1Char('\'') + caption + QStringLiteral("' Is Not Valid"),
                            QStringLiteral("Enter date using the 'mm-dd-yyyy' format.")};
}

std::optional<Money> gfcPromoEditor_amount(const QString &text)
{
    std::optional<Money> amount = Money::parse(text);
    if (!amount)
        gfiMsgBox(QLatin1Char('\'') + text + QStringLiteral("' is not a valid amount.\r\rEnter the amount as a number, for example 12.50."),
                  MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
    return amount;
}

} // namespace qln
