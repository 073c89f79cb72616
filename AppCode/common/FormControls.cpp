#include "common/FormControls.h"

#include <QLabel>
#include <QPushButton>

namespace qln {

QPushButton *gfCommand_button(QWidget *form, const QString &name, const QString &caption)
{
    auto *button = new QPushButton(caption, form);
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
