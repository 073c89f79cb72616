#include "common/FormKeys.h"

#include "common/Buttons.h"
#include "common/KeyCodes.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPointer>

namespace qln {
namespace {

// Watches the form itself, so it sees each key once: sent to the form, or passed up by the
// control that had the focus and didn't want it.
class FormKeys final : public QObject {
public:
    FormKeys(QWidget *form, QAbstractButton *cancel) : QObject(form), m_form(form), m_cancel(cancel)
    {
        form->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != m_form || event->type() != QEvent::KeyPress)
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        int keyCode = gfiKeyCode_fromQt(key->key());
        if (keyCode != 0 && gfiKeyDown_dispatch(m_form, keyCode, gfiShift_fromQt(key->modifiers())) == 0)
            return true;
        if (key->key() == Qt::Key_Escape && m_cancel) {
            m_cancel->click();
            return true;
        }
        const QString text = key->text();
        if (text.size() != 1 || !text.at(0).isPrint())
            return false;
        int keyAscii = text.at(0).unicode();
        return gfiAltKey_dispatch(m_form, keyAscii) == 0;
    }

private:
    QWidget *m_form;
    QPointer<QAbstractButton> m_cancel;
};

} // namespace

void gpFormKeys_install(QWidget *form, QAbstractButton *cancel) { new FormKeys(form, cancel); }

} // namespace qln
