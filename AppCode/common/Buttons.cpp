#include "common/Buttons.h"

#include "common/KeyCodes.h"

#include <QPushButton>

namespace qln {
namespace {

// Presses the first enabled command button of the form that `binds` names; false if none does.
template <typename Binds>
bool pressFirst(QWidget *form, Binds binds)
{
    const QList<QPushButton *> buttons = form->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->window() == form && button->isEnabled() && binds(button->text())) {
            button->click();
            return true;
        }
    }
    return false;
}

} // namespace

int gfiKeyDown_dispatch(QWidget *form, int &keyCode, int shift)
{
    if (shift == 0 && pressFirst(form, [&](const QString &caption) {
            const int number = gfiCaption_FKey(caption);
            return number > 0 && number + KeyCode::kFKeyBase == keyCode;
        }))
        keyCode = 0;
    return keyCode;
}

int gfiAltKey_dispatch(QWidget *form, int &keyAscii)
{
    const QChar key = QChar(char16_t(keyAscii)).toUpper();
    if (pressFirst(form, [&](const QString &caption) {
            const QChar letter = gfcCaption_AltKey(caption);
            return !letter.isNull() && letter == key;
        }))
        keyAscii = 0;
    return keyAscii;
}

void gpAcceptButton_follow(const QString &sText, QAbstractButton *button)
{
    button->setEnabled(!sText.trimmed().isEmpty());
}

} // namespace qln
