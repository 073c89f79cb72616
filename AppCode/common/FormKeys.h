#pragma once

class QAbstractButton;
class QWidget;

namespace qln {

// Gives a form the keys of all windows: a function key or a letter behind "&" presses the
// button whose caption names it (Buttons.h), and Esc presses `cancel`. Keys that no button
// takes, and letters that the focused control wants, go on as before.
void gpFormKeys_install(QWidget *form, QAbstractButton *cancel = nullptr);

} // namespace qln
