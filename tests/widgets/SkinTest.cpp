#include "widgets/Skin.h"
#include "widgets/FontUnits.h"
#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QtWidgets>
#include <gmock/gmock.h>

#include <cmath>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

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
    const QStringList names = u"Dark Blue|Light Blue|Light Green|Grey|Light Grey"_s.split(u'|');
    EXPECT_EQ(Skins::Names().size(), names.size());
    for (const QString& name : names) {
        const Skin skin = Skins::Named(name);
        ASSERT_EQ(skin.name, name);
        const auto expect = [&name](double contrast, const QList<QColor>& inks, const QList<QColor>& fills) {
            for (const QColor& ink : inks)
                for (const QColor& fill : fills)
                    EXPECT_GE(Contrast(ink, fill), contrast)
                        << (name + u": "_s + ink.name() + u" on "_s + fill.name()).toStdString();
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
    EXPECT_EQ(Skins::Named(u"Pink"_s).name, u"Light Green"_s);
}

TEST(FontUnitsTest, SizesFollowFontButtonsAndResolution) {
    const struct {
        const char* schriftgrad;
        const char* buttongroesse;
        double dpi;
        std::array<int, 5> sizes;
    } cases[] = {{"klein", "klein", 96, {13, 4, 27, 44, 23}},  {"mittel", "gross", 96, {15, 5, 36, 60, 26}},
                 {"groß", "klein", 96, {18, 6, 38, 61, 32}},   {"riesig", "riesig", 96, {13, 4, 27, 44, 23}},
                 {"klein", "klein", 192, {26, 8, 55, 88, 46}}, {"klein", "klein", 0, {13, 4, 27, 44, 23}}};
    for (const auto& [font, buttons, dpi, sizes] : cases) {
        const FontUnits units(QString::fromUtf8(font), QString::fromLatin1(buttons), dpi);
        EXPECT_EQ((std::array{units.F(), units.G(), units.Button(), units.BigButton(), units.TableRow()}), sizes);
    }
}

TEST(LayoutModeTest, ABigFontFoldsLikeASmallScreen) {
    EXPECT_EQ(LayoutModeFor(800, 13), LayoutMode::Narrow);
    EXPECT_EQ(LayoutModeFor(1280, 13), LayoutMode::Normal);
    EXPECT_EQ(LayoutModeFor(1280, 18), LayoutMode::Narrow);
    EXPECT_EQ(LayoutModeFor(1920, 15), LayoutMode::Wide);
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
        SkinStyle::Apply(*qApp, name, size == 13 ? u"klein"_s : u"mittel"_s, {});
        QApplication::processEvents();
        EXPECT_EQ(SkinStyle::Colours().name, name);
        EXPECT_EQ(label.palette().color(QPalette::Window), Skins::Named(name).window);
        EXPECT_EQ(label.palette().color(QPalette::Disabled, QPalette::Text), Skins::Named(name).dim);
        EXPECT_EQ(label.font().pixelSize(), size);
        EXPECT_FALSE(qApp->styleSheet().contains(QRegularExpression(u"[$@]|solid ;"_s)));
    }
}

/** The colour of the picture's most opaque pixel. */
QColor InkOf(const QPixmap& pixmap) {
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    QColor best(0, 0, 0, 0);
    for (int i = 0; i < image.width() * image.height(); ++i) {
        const QColor pixel = image.pixelColor(i % image.width(), i / image.width());
        best = pixel.alpha() > best.alpha() ? pixel : best;
    }
    return best;
}

TEST(IconsTest, EveryIconIsThereAndTakesTheColour) {
    const QColor colour(0xdc, 0x10, 0x29);
    for (const QString& name :
         u"play pause stop next previous mute unmute headphones fade-left fade-right automatic shuffle play-next "
         "play-next-removed played search folder import tag trash undo wish sampler jingle chart settings record "
         "refresh tree add check close warning error drop-down unfold note"_s.split(u' '))
        EXPECT_EQ(InkOf(Icons::Pixmap(name, colour, 48)), colour) << name.toStdString();
}

TEST(IconsTest, PixmapsAreSharpAndKept) {
    const auto play = [](const QColor& colour, int size) { return Icons::Pixmap(u"play"_s, colour, size, 2.0); };
    const QPixmap fine = play(Qt::black, 24);
    EXPECT_EQ(fine.size(), QSize(48, 48));
    EXPECT_EQ(fine.deviceIndependentSize(), QSizeF(24, 24));
    EXPECT_EQ(play(Qt::black, 24).cacheKey(), fine.cacheKey());
    EXPECT_NE(play(Qt::white, 24).cacheKey(), fine.cacheKey());
    EXPECT_TRUE(play(Qt::black, 0).isNull());
    EXPECT_TRUE(Icons::Pixmap(u"nothing"_s, Qt::black, 24).isNull());
}

TEST(IconsTest, AnIconFollowsTheSkin) {
    const QIcon icon = Icons::Icon(u"folder"_s);
    const QIcon fixed = Icons::Icon(u"folder"_s, QColor(1, 2, 3));
    for (const QString& name : Skins::Names()) {
        SkinStyle::Apply(*qApp, name, {}, {});
        const Skin& skin = SkinStyle::Colours();
        EXPECT_EQ(InkOf(icon.pixmap(48)), skin.text);
        EXPECT_EQ(InkOf(icon.pixmap(48, QIcon::Disabled)), skin.dim);
        EXPECT_EQ(InkOf(icon.pixmap(48, QIcon::Selected)), skin.highlightText);
        EXPECT_EQ(InkOf(fixed.pixmap(48)), QColor(1, 2, 3));
    }
}

} // namespace
} // namespace kalvo
