#include "widgets/FontUnits.h"

#include <QStringList>

namespace kalvo {

namespace {

double PointsOf(const QString& schriftgrad) {
    if (schriftgrad == QStringLiteral("groß"))
        return 13.5;
    return schriftgrad == QStringLiteral("mittel") ? 11.25 : 9.75;
}

/** With figures of one width, which Qt 6.4 cannot ask a font for: times must not dance. */
QStringList Families() {
    return {QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans")};
}

} // namespace

FontUnits::FontUnits(const QString& schriftgrad, const QString& buttongroesse, double logicalDpi)
    : f_(qRound(PointsOf(schriftgrad) * (logicalDpi > 0 ? logicalDpi : 96) / 72)),
      g_(qRound(0.31 * f_)),
      bigButtons_(buttongroesse == QStringLiteral("gross")) {}

int FontUnits::ConsoleHeight(LayoutMode mode) const {
    switch (mode) {
    case LayoutMode::Low:
        return Of(14.5);
    case LayoutMode::Narrow:
        return Of(19);
    case LayoutMode::Wide:
        return Of(27);
    case LayoutMode::Normal:
        break;
    }
    return Of(24.5);
}

QFont FontUnits::Font(double times, bool bold) const {
    QFont font;
    font.setFamilies(Families());
    font.setPixelSize(Of(times));
    font.setBold(bold);
    return font;
}

} // namespace kalvo
