#include "widgets/Skin.h"
#include "widgets/FontUnits.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QLabel>
#include <QRegularExpression>
#include <cmath>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

TEST(Skins, EveryTextCanBeReadAndEdgesStandOut) {
    const QStringList names{QStringLiteral("Dark Blue"), QStringLiteral("Light Blue"), QStringLiteral("Light Green"),
                            QStringLiteral("Grey"), QStringLiteral("Light Grey")};
    EXPECT_EQ(Skins::Names().size(), names.size());
    for (const QString& name : names) {
        const Skin skin = Skins::Named(name);
        ASSERT_EQ(skin.name, name);
        const auto expect = [&name](double contrast, const QList<QColor>& inks, const QList<QColor>& fills) {
            for (const QColor& ink : inks) {
                for (const QColor& fill : fills)
                    EXPECT_GE(Contrast(ink, fill), contrast) << name.toStdString() << ": " << ink.name().toStdString()
                                                             << " on " << fill.name().toStdString();
            }
        };
        expect(4.5, {skin.text, skin.dim}, {skin.window, skin.panel, skin.base, skin.alt, skin.button});
        expect(4.5, {skin.cued, skin.warning, skin.p1, skin.p2}, {skin.panel, skin.base});
        expect(4.5, {skin.text}, {skin.mark, skin.line});
        const std::pair<QColor, QColor> pairs[] = {
            {skin.highlightText, skin.highlight},    {skin.onAirInk, skin.onAir}, {skin.cuedInk, skin.cued},
            {skin.warningFillInk, skin.warningFill}, {skin.p1Ink, skin.p1},       {skin.p2Ink, skin.p2}};
        for (const auto& [ink, fill] : pairs)
            expect(4.5, {ink}, {fill});
        expect(4.5, {skin.warning}, {skin.button});
        expect(3, {skin.edge}, {skin.button, skin.panel});
        expect(3, {skin.onAir}, {skin.window});
        expect(3, {skin.highlight}, {skin.base});
        expect(3, {skin.meterLow, skin.meterHigh}, {skin.waveBack});
    }
    EXPECT_EQ(Skins::Named(QStringLiteral("Pink")).name, QStringLiteral("Light Green"));
}

TEST(FontUnitsTest, SizesFollowFontButtonsAndResolution) {
    struct Case {
        const char* schriftgrad;
        const char* buttongroesse;
        double dpi;
        int f, g, button, bigButton, row;
    };
    const Case cases[] = {{"klein", "klein", 96, 13, 4, 27, 44, 23},  {"mittel", "gross", 96, 15, 5, 36, 60, 26},
                          {"groß", "klein", 96, 18, 6, 38, 61, 32},   {"riesig", "riesig", 96, 13, 4, 27, 44, 23},
                          {"klein", "klein", 192, 26, 8, 55, 88, 46}, {"klein", "klein", 0, 13, 4, 27, 44, 23}};
    for (const Case& c : cases) {
        const FontUnits units(QString::fromUtf8(c.schriftgrad), QString::fromLatin1(c.buttongroesse), c.dpi);
        EXPECT_THAT((std::vector{units.F(), units.G(), units.Button(), units.BigButton(), units.TableRow()}),
                    ::testing::ElementsAre(c.f, c.g, c.button, c.bigButton, c.row));
    }
}

TEST(LayoutModeTest, ABigFontFoldsLikeASmallScreen) {
    EXPECT_EQ(LayoutModeFor(800, 13), LayoutMode::Narrow);
    EXPECT_EQ(LayoutModeFor(1280, 13), LayoutMode::Normal);
    EXPECT_EQ(LayoutModeFor(1280, 18), LayoutMode::Narrow);
    EXPECT_EQ(LayoutModeFor(1920, 15), LayoutMode::Wide);
    EXPECT_EQ(LayoutModeFor(1280, 18, 800), LayoutMode::Narrow);
    EXPECT_EQ(LayoutModeFor(1024, 13, 600), LayoutMode::Narrow) << "too low for what the width has room for";
    EXPECT_EQ(LayoutModeFor(1920, 18, 768), LayoutMode::Low);
}

TEST(SkinStyleTest, SwitchesLive) {
    QWidget window;
    QLabel label(&window);
    window.show();
    int size = 13;
    for (const QString& name : Skins::Names()) {
        size = size == 13 ? 15 : 13;
        SkinStyle::Apply(*qApp, name, size == 13 ? QStringLiteral("klein") : QStringLiteral("mittel"), {});
        QApplication::processEvents();
        EXPECT_EQ(SkinStyle::Colours().name, name);
        EXPECT_EQ(label.palette().color(QPalette::Window), Skins::Named(name).window);
        EXPECT_EQ(label.palette().color(QPalette::Disabled, QPalette::Text), Skins::Named(name).dim);
        EXPECT_EQ(label.font().pixelSize(), size);
        EXPECT_FALSE(qApp->styleSheet().contains(QRegularExpression(QStringLiteral("[$@]|solid ;"))));
    }
}

} // namespace
} // namespace kalvo
