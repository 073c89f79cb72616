#pragma once
#include <QFont>
#include <QString>

class QWidget;

namespace qln {

// The font name of all forms; "Arial" when nobody set one.
inline QString gsFontName;

// The forms were laid out for Arial at 8.25 points (11 pixels at 96 dots to the inch); their
// widths in twips only hold their text in a font of those metrics. "Arial" resolves to a
// metric-compatible face where the fonts the install script brings are present.
constexpr double kFormFontPoints = 8.25;
QFont gfFormFont();

// Sets the forms' font as the application's, before any window is made, and has Tab follow
// each window's layout.
void gpFormLook_install();

// A twip is 1/1440 of a logical inch, widened by a ninth for the cells' wider margins here,
// and a widget's logical DPI is what its fonts are sized by, so widths keep their proportions
// to the text on a screen set to larger fonts (13.5 twips to a pixel at 96 DPI). Device
// scaling on high-DPI screens is below this, in Qt.
int gfiTwips_toPixels(int twips, const QWidget *widget);
int gfiPixels_toTwips(int pixels, const QWidget *widget);

// Run at each form's load: every control in a font other than "Arial" or "MS Sans Serif"
// takes gsFontName, keeping its size and style.
void gpFont_normalise(QWidget *form);

} // namespace qln
