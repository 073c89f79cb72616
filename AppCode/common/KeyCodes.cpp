#include "common/KeyCodes.h"

#include "common/Numbers.h"

namespace qln {

int gfiKeyCode_fromQt(int qtKey)
{
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return KeyCode::Key_F1 + (qtKey - Qt::Key_F1);
    if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9))
        return qtKey; // the same codes on both sides
    switch (qtKey) {
    case Qt::Key_Backspace: return KeyCode::Key_Backspace;
    case Qt::Key_Tab: return KeyCode::Key_Tab;
    case Qt::Key_Return:
    case Qt::Key_Enter: return KeyCode::Key_Return;
    case Qt::Key_Escape: return KeyCode::Key_Escape;
    case Qt::Key_Space: return KeyCode::Key_Space;
    case Qt::Key_PageUp: return KeyCode::Key_PageUp;
    case Qt::Key_PageDown: return KeyCode::Key_PageDown;
    case Qt::Key_End: return KeyCode::Key_End;
    case Qt::Key_Home: return KeyCode::Key_Home;
    case Qt::Key_Left: return KeyCode::Key_Left;
    case Qt::Key_Up: return KeyCode::Key_Up;
    case Qt::Key_Right: return KeyCode::Key_Right;
    case Qt::Key_Down: return KeyCode::Key_Down;
    case Qt::Key_Insert: return KeyCode::Key_Insert;
    case Qt::Key_Delete: return KeyCode::Key_Delete;
    default: return 0;
    }
}

int gfiShift_fromQt(Qt::KeyboardModifiers modifiers)
{
    return (modifiers & Qt::ShiftModifier ? 1 : 0) | (modifiers & Qt::ControlModifier ? 2 : 0)
        | (modifiers & Qt::AltModifier ? 4 : 0);
}

int gfiCaption_FKey(const QString &caption)
{
    if (caption.size() < 2 || caption.at(0) != QLatin1Char('F') || !caption.at(1).isDigit())
        return 0;
    // The number runs to the first blank, or to the first carriage return when there is none,
    // and is read as the platform reads a number.
    qsizetype end = caption.indexOf(QLatin1Char(' '), 1);
    if (end < 0)
        end = caption.indexOf(QLatin1Char('\r'), 1);
    return int(gfdNumber_value(caption.mid(1, end < 0 ? -1 : end - 1)));
}

QChar gfcCaption_AltKey(const QString &caption)
{
    const qsizetype amp = caption.indexOf(QLatin1Char('&'));
    return amp >= 0 && amp + 1 < caption.size() ? caption.at(amp + 1).toUpper() : QChar();
}

} // namespace qln
