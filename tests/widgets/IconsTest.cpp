#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QImage>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

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
    const char* names[] = {
        "play",       "pause",     "stop",       "next",      "previous", "mute",      "unmute",
        "headphones", "fade-left", "fade-right", "automatic", "shuffle",  "play-next", "play-next-removed",
        "played",     "search",    "folder",     "import",    "tag",      "trash",     "undo",
        "wish",       "sampler",   "jingle",     "chart",     "settings", "record",    "refresh",
        "tree",       "add",       "check",      "close",     "warning",  "error",     "drop-down",
        "unfold",     "note"};
    const QColor colour(0xdc, 0x10, 0x29);
    for (const char* name : names)
        EXPECT_EQ(InkOf(Icons::Pixmap(QString::fromLatin1(name), colour, 48)), colour) << name;
}

TEST(IconsTest, PixmapsAreSharpAndKept) {
    const auto play = [](const QColor& colour, int size) {
        return Icons::Pixmap(QStringLiteral("play"), colour, size, 2.0);
    };
    const QPixmap fine = play(Qt::black, 24);
    EXPECT_EQ(fine.size(), QSize(48, 48));
    EXPECT_EQ(fine.deviceIndependentSize(), QSizeF(24, 24));
    EXPECT_EQ(play(Qt::black, 24).cacheKey(), fine.cacheKey());
    EXPECT_NE(play(Qt::white, 24).cacheKey(), fine.cacheKey());
    EXPECT_TRUE(play(Qt::black, 0).isNull());
    EXPECT_TRUE(Icons::Pixmap(QStringLiteral("nothing"), Qt::black, 24).isNull());
}

TEST(IconsTest, AnIconFollowsTheSkin) {
    const QIcon icon = Icons::Icon(QStringLiteral("folder"));
    const QIcon fixed = Icons::Icon(QStringLiteral("folder"), QColor(1, 2, 3));
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
