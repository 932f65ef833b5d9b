#include "widgets/Skin.h"
#include "widgets/Contrast.h"
#include "widgets/FontUnits.h"
#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QtWidgets>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(Skins, EveryTextCanBeReadAndEdgesStandOut) {
    const QStringList names = u"Dark Blue|Light Blue|Light Green|Grey|Light Grey"_s.split(u'|');
    EXPECT_EQ(Skins::Names().size(), names.size());
    for (const QString& name : names) {
        const Skin skin = Skins::Named(name);
        ASSERT_EQ(skin.name, name);
        const auto expect = [&name](double contrast, const QList<QColor>& inks, const QList<QColor>& fills) {
            for (const QColor& ink : inks)
                for (const QColor& fill : fills)
                    EXPECT_GE(test::Contrast(ink, fill), contrast)
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

TEST(FontUnitsTest, SizesFollowTheResolution) {
    for (const auto& [dpi, height] : {std::pair(96, 13), {192, 26}, {0, 13}})
        EXPECT_EQ(FontUnits(u"klein"_s, u"klein"_s, dpi).F(), height) << dpi;
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

TEST(SkinStyleTest, SwitchesLive) {
    QWidget window;
    QLabel label(&window);
    window.show();
    const QIcon icon = Icons::Icon(u"folder"_s);
    int size = 13;
    for (const QString& name : Skins::Names()) {
        size = size == 13 ? 15 : 13;
        SkinStyle::Apply(*qApp, name, size == 13 ? u"klein"_s : u"mittel"_s, {});
        QApplication::processEvents();
        const Skin& skin = SkinStyle::Colours();
        EXPECT_EQ(skin.name, name);
        EXPECT_EQ(label.palette().color(QPalette::Window), skin.window);
        EXPECT_EQ(label.palette().color(QPalette::Disabled, QPalette::Text), skin.dim);
        EXPECT_EQ(InkOf(icon.pixmap(48)), skin.text);
        EXPECT_EQ(InkOf(icon.pixmap(48, QIcon::Disabled)), skin.dim);
        EXPECT_EQ(InkOf(icon.pixmap(48, QIcon::Selected)), skin.highlightText);
        EXPECT_EQ(label.font().pixelSize(), size);
        EXPECT_FALSE(qApp->styleSheet().contains(QRegularExpression(u"[$@]|solid ;"_s)));
    }
}

} // namespace
} // namespace kalvo
