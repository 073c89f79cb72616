#include "common/FormLook.h"

#include <QWidget>

namespace qln {

void gpFont_normalise(QWidget *form)
{
    const QString arial = QStringLiteral("Arial");
    if (gsFontName.isEmpty())
        gsFontName = arial;
    const QList<QWidget *> controls = form->findChildren<QWidget *>();
    for (QWidget *control : controls) {
        QFont font = control->font();
        if (font.family() == arial || font.family() == QLatin1String("MS Sans Serif"))
            continue;
        font.setFamily(gsFontName);
        control->setFont(font);
    }
}

} // namespace qln
