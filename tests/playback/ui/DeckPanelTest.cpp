#include "playback/ui/DeckPanel.h"
#include "support/PartOf.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QPaintEvent>
#include <QSlider>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using test::Part;

DeckView OnAir() {
    DeckView view;
    view.signal = DeckSignal::OnAir;
    view.artist = u"Nordlicht Kapelle"_s;
    view.title = u"Sommer in der Stadt"_s;
    view.remaining = u"\u221200:11"_s;
    view.position = 0.5;
    view.lengthSeconds = 200;
    view.playing = true;
    return view;
}

TEST(DeckPanelTest, EachButtonTellsItsOwnSignal) {
    const struct {
        const char* names[2];
        void (DeckPanel::*told)();
    } cases[] = {{{"cmdPlay1", "cmdPlay2"}, &DeckPanel::PlayClicked},
                 {{"cmdPause1", "cmdPause2"}, &DeckPanel::PauseClicked},
                 {{"cmdStop1", "cmdStop2"}, &DeckPanel::StopClicked},
                 {{"Command1", "Command3"}, &DeckPanel::NextClicked},
                 {{"Command2", "Command4"}, &DeckPanel::MuteClicked},
                 {{"cmdAnfang1", "cmdAnfang2"}, &DeckPanel::ToStartClicked}};
    for (const int number : {1, 2}) {
        DeckPanel deck(number);
        for (const auto& c : cases) {
            int told = 0;
            QObject::connect(&deck, c.told, &deck, [&told] { ++told; });
            auto* button = Part<QPushButton>(deck, c.names[number - 1]);
            button->click();
            EXPECT_EQ(told, 1) << c.names[number - 1];
            EXPECT_TRUE(button->accessibleName().startsWith(u"Player %1: "_s.arg(number)));
            EXPECT_GE(std::min(button->sizeHint().width(), button->sizeHint().height()), 44) << "for fingers";
        }
    }
}

TEST(DeckPanelTest, OnlyTheUserChangesThePitchAloud) {
    DeckPanel deck(1);
    std::vector<int> told;
    QObject::connect(&deck, &DeckPanel::PitchChanged, &deck, [&](int permille) { told.push_back(permille); });
    DeckView view = OnAir();
    view.pitchPermille = -15;
    deck.SetView(view);
    EXPECT_EQ(Part<QSlider>(deck, "HScroll2")->value(), -15);
    EXPECT_EQ(Part<QLabel>(deck, "lblPitch1")->text(), u"\u22121,5 %"_s);
    Part<QSlider>(deck, "HScroll2")->setValue(20);
    EXPECT_THAT(told, ::testing::ElementsAre(20));
}

TEST(DeckPanelTest, RedBelongsToTheDeckOnAirAlone) {
    SkinStyle::Apply(*qApp, u"Dark Blue"_s, {}, {});
    const Skin& skin = SkinStyle::Colours();
    const struct {
        DeckSignal shown;
        QColor frame, head;
    } cases[] = {{DeckSignal::OnAir, skin.onAir, skin.onAir},  {DeckSignal::Muted, skin.onAir, skin.warningFill},
                 {DeckSignal::Running, skin.line, skin.panel}, {DeckSignal::Paused, skin.line, skin.panel},
                 {DeckSignal::Ready, skin.line, skin.panel},   {DeckSignal::None, skin.line, skin.panel}};
    DeckPanel deck(1);
    deck.resize(480, 318);
    for (const auto& c : cases) {
        DeckView view = OnAir();
        view.signal = c.shown;
        deck.SetView(view);
        const QImage image = deck.grab().toImage();
        EXPECT_EQ(image.pixelColor(1, image.height() / 2), c.frame) << int(c.shown);
        EXPECT_EQ(image.pixelColor(SkinStyle::Units().Of(3.4), 5), c.head) << int(c.shown);
    }
}

/** Counts the area that is painted anew. */
class PaintCounter : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            for (const QRect& rect : static_cast<QPaintEvent*>(event)->region())
                pixels += rect.width() * rect.height();
        }
        return false;
    }
    int pixels = 0;
};

TEST(DeckPanelTest, ATickRepaintsOnlyWhatMoved) {
    DeckPanel deck(1);
    deck.resize(480, 318);
    deck.show();
    DeckView view = OnAir();
    const auto show = [&] {
        deck.SetView(view);
        QApplication::processEvents();
    };
    show();
    PaintCounter position, title;
    Part(deck, "SPos1")->installEventFilter(&position);
    Part(deck, "LSong1")->installEventFilter(&title);
    show();
    EXPECT_EQ(position.pixels, 0);
    view.position += 0.005;
    show();
    const QSize whole = Part(deck, "SPos1")->size();
    EXPECT_GT(position.pixels, 0);
    EXPECT_LT(position.pixels, whole.width() * whole.height() / 6);
    EXPECT_EQ(title.pixels, 0);
}

} // namespace
} // namespace kalvo
