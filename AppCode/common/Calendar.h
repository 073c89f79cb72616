#pragma once
#include <QDate>
#include <QDialog>

class QCalendarWidget;

namespace qln {

// The two-date picker: a start and an end date, OK and Cancel. A form closed any way but
// by OK counts as cancelled.
class frmSM_2CALENDAR final : public QDialog {
    Q_OBJECT
    Q_PROPERTY(bool cancelled READ cancelled)
public:
    // An invalid date starts on today.
    frmSM_2CALENDAR(const QDate &start, const QDate &end, QWidget *parent = nullptr);

    bool cancelled() const { return m_cancelled; }
    QDate startDate() const;
    QDate endDate() const;

private:
    QCalendarWidget *m_start;
    QCalendarWidget *m_end;
    bool m_cancelled = true;
};

// Shows the picker with the two dates; unless it was cancelled both take the chosen dates
// and the result is true.
bool gfbCalendar_get(QDate &start, QDate &end);

} // namespace qln
