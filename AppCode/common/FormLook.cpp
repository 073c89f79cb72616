#include "common/FormLook.h"

#include "common/TabOrder.h"

#include <QApplication>
#include <QWidget>

#include <cmath>

namespace qln {

namespace {

// 1440 twips to the inch, widened by a ninth: a cell here keeps 3 pixels of margin each side
// where the original kept 1, and its widths held their texts with nothing to spare.
constexpr int kTwipsPerInch = 1296;

int dpiOf(const QWidget *widget) { return widget ? widget->logicalDpiX() : 96; }

} // namespace

QFont gfFormFont()
{
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(kFormFontPoints);
    return font;
}

void gpFormLook_install()
{
    QApplication::setFont(gfFormFont());
    gpTabOrder_install();
}

int gfiTwips_toPixels(int twips, const QWidget *widget)
{
    return int(std::lround(double(twips) * dpiOf(widget) / kTwipsPerInch));
}

int gfiPixels_toTwips(int pixels, const QWidget *widget)
{
    return int(std::lround(double(pixels) * kTwipsPerInch / dpiOf(widget)));
}

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
