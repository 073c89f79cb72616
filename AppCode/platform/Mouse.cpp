#include "platform/Mouse.h"

#include <QCursor>
#include <QGuiApplication>

namespace qln {

void gpMouse_busy()
{
    if (QGuiApplication::overrideCursor())
        QGuiApplication::changeOverrideCursor(QCursor(Qt::WaitCursor));
    else
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

void gpMouse_normal()
{
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
}

} // namespace qln
