#pragma once
#include <QString>

class QWidget;

namespace qln {

// The font name of all forms; "Arial" when nobody set one.
inline QString gsFontName;

// Run at each form's load: every control in a font other than "Arial" or "MS Sans Serif"
// takes gsFontName, keeping its size and style.
void gpFont_normalise(QWidget *form);

} // namespace qln
