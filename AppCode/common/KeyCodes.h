#pragma once
#include <QChar>
#include <QString>
#include <QtCore/qnamespace.h>

namespace qln {

// Key codes as the platform's key events give them, named after Qt's keys. A function key's
// code is its number plus 111: F1 is 112.
namespace KeyCode {
constexpr int kFKeyBase = 111;
enum : int {
    Key_Backspace = 8,
    Key_Tab = 9,
    Key_Return = 13,
    Key_Escape = 27,
    Key_Space = 32,
    Key_PageUp = 33,
    Key_PageDown = 34,
    Key_End = 35,
    Key_Home = 36,
    Key_Left = 37,
    Key_Up = 38,
    Key_Right = 39,
    Key_Down = 40,
    Key_Insert = 45,
    Key_Delete = 46,
    Key_F1 = kFKeyBase + 1,
};
} // namespace KeyCode

// The platform's code of a Qt key: the keys above, letters and digits; 0 for any other.
int gfiKeyCode_fromQt(int qtKey);
// The platform's shift argument: 1 Shift, 2 Ctrl, 4 Alt.
int gfiShift_fromQt(Qt::KeyboardModifiers modifiers);

// The function key that a button's caption binds: "F5 Delete" gives 5, "F11  Print List" 11.
// 0 for a caption that doesn't start with "F" and a digit ("Esc Cancel").
int gfiCaption_FKey(const QString &caption);
// The letter behind the caption's "&", in upper case; a null character when there is none.
QChar gfcCaption_AltKey(const QString &caption);

} // namespace qln
