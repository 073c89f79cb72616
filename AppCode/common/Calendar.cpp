#include "common/Calendar.h"

#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"

#include <QCalendarWidget>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace qln {
namespace {
QCalendarWidget *calendar(const QString &name, const QDate &date, QWidget *parent)
{
    auto *widget = new QCalendarWidget(parent);
    widget->setObjectName(name);
    widget->setSelectedDate(date.isValid() ? date : Clock::today());
    return widget;
}
} // namespace

frmSM_2CALENDAR::frmSM_2CALENDAR(const QDate &start, const QDate &end, QWidget *parent)
    : QDialog(parent),
      m_start(calendar(QStringLiteral("calDate(0)"), start, this)),
      m_end(calendar(QStringLiteral("calDate(1)"), end, this))
{
    setObjectName(QStringLiteral("frmSM_2CALENDAR"));
    setWindowTitle(QStringLiteral("Select Dates"));

    auto *ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto *cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    connect(ok, &QPushButton::clicked, this, [this] {
        m_cancelled = false;
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *grid = new QGridLayout(this);
    grid->addWidget(new QLabel(QStringLiteral("Start Date"), this), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("End Date"), this), 0, 1);
    grid->addWidget(m_start, 1, 0);
    grid->addWidget(m_end, 1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    grid->addLayout(buttons, 2, 0, 1, 2);

    gpFormKeys_install(this, cancel);
    gpFont_normalise(this);
}

QDate frmSM_2CALENDAR::startDate() const { return m_start->selectedDate(); }

QDate frmSM_2CALENDAR::endDate() const { return m_end->selectedDate(); }

bool gfbCalendar_get(QDate &start, QDate &end)
{
    frmSM_2CALENDAR form(start, end);
    gfiForm_show_modal(form);
    if (form.cancelled())
        return false;
    start = form.startDate();
    end = form.endDate();
    return true;
}

} // namespace qln
