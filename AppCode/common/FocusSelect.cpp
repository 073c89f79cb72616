#include "common/FocusSelect.h"

#include <QEvent>
#include <QLineEdit>

namespace qln {
namespace {

class FocusSelect final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::FocusIn)
            static_cast<QLineEdit *>(watched)->selectAll();
        return false;
    }
};

} // namespace

void gpFocusSelect_install(QWidget *form)
{
    auto *selector = new FocusSelect(form);
    const QList<QLineEdit *> boxes = form->findChildren<QLineEdit *>();
    for (QLineEdit *box : boxes)
        box->installEventFilter(selector);
}

} // namespace qln
