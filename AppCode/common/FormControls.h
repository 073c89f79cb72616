#pragma once
#include <QString>

class QLabel;
class QPushButton;
class QWidget;

namespace qln {

// A command button of a form, named as the form's code knows it. It never acts as the
// default button: Enter in a box goes where the form sends it, not to the nearest button.
// Enter on the focused button presses it, as Space does.
QPushButton *gfCommand_button(QWidget *form, const QString &name, const QString &caption);

// A label of a form, named as the form's code knows it.
QLabel *gfForm_label(QWidget *form, const QString &name, const QString &caption = QString());

} // namespace qln
