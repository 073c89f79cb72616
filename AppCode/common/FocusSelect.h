#pragma once

class QWidget;

namespace qln {

// Every text box of the form selects its whole text when it gets the focus.
void gpFocusSelect_install(QWidget *form);

} // namespace qln
