#pragma once
#include <QString>

class QAbstractButton;
class QWidget;

namespace qln {

// A key-down of the form: with no shift key down, the first enabled command button whose
// caption binds this function key (KeyCodes.h) is pressed and keyCode becomes 0. Returns
// keyCode as it leaves; a key nobody took goes on to the form.
int gfiKeyDown_dispatch(QWidget *form, int &keyCode, int shift);
// A key press of the form: the first enabled command button with this character, in upper
// case, behind the "&" of its caption is pressed and keyAscii becomes 0. Returns keyAscii.
int gfiAltKey_dispatch(QWidget *form, int &keyAscii);

// Enables the button while the text holds more than blanks.
void gpAcceptButton_follow(const QString &sText, QAbstractButton *button);

} // namespace qln
