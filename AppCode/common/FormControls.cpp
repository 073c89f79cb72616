#include "common/FormControls.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace qln {

namespace {

class CommandButton final : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!enter || event->modifiers() & ~Qt::KeypadModifier) {
            QPushButton::keyPressEvent(event);
            return;
        }
        click();
    }
};

} // namespace

QPushButton *gfCommand_button(QWidget *form, const QString &name, const QString &caption)
{
    auto *button = new CommandButton(caption, form);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

QLabel *gfForm_label(QWidget *form, const QString &name, const QString &caption)
{
    auto *label = new QLabel(caption, form);
    label->setObjectName(name);
    return label;
}

} // namespace qln
