#pragma once
#include <QDate>
#include <QString>
#include <optional>

#include "common/Money.h"
#include "promo/PromoChecks.h"

class QDialog;
class QHBoxLayout;
class QLineEdit;
class QPushButton;

// What the promo editors (item, department, group, matrix, daily) have alike: their row of
// command buttons, the two date boxes and the calendar that fills them, and the checks of
// typed dates and amounts.
namespace qln {

// cmdAcceptCancel(0) "F10 Accept", (1) "Esc Cancel", cmdCalendar, cmdHelp, made on the form
// and laid out in the order the editors show them.
QHBoxLayout *gfPromoEditor_buttons(QDialog *form, QPushButton *(&cmdAcceptCancel)[2], QPushButton *&cmdCalendar,
                                   QPushButton *&cmdHelp);

// Enter in the start box moves to the end box; Enter in the end box accepts when it may.
void gpPromoEditor_dates_chain(QLineEdit *start, QLineEdit *end, QPushButton *accept);

// The calendar on the dates of the two boxes; when the user takes dates the boxes show them
// and the result is true.
bool gfbPromoEditor_calendar(QLineEdit *start, QLineEdit *end);

// A typed date that is none, named by its box's caption.
std::optional<PromoEditorFault> gfPromoEditor_date_fault(const QString &text, const QString &caption);

// The amount of a box as money; a text that is none is said once and gives nothing.
std::optional<Money> gfcPromoEditor_amount(const QString &text);

} // namespace qln
