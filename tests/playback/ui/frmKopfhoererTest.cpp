#include "playback/ui/frmKopfhoerer.h"

#include "base/Settings.h"
#include "playback/FakeCards.h"
#include "playlists/CueText.h"
#include "support/PartOf.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTest>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using test::Part;

constexpr auto kHeadphones = audio::Output::Headphones;

struct frmKopfhoererTest : ::testing::Test {
    frmKopfhoererTest() {
        layer.InitAudio(2, 1024);
        window = std::make_unique<frmKopfhoerer>(layer, settings);
        QObject::connect(window.get(), &frmKopfhoerer::CueWanted, [this](const auto& title, const QString& cue) {
            wanted.append(u"%1:%2"_s.arg(title.entry).arg(cue));
        });
    }
    void Listen(int source) {
        settings.PutNumber(u"Soundkarte"_s, u"Device"_s, 3);
        window->show();
        window->Listen({u"Nachtfahrt"_s, u"Mara Lind"_s, folder.Write(u"a-60"_s, "x"), source, 7});
    }
    QString Text(const char* name) { return Part<QLabel>(*window, name)->text(); }
    QPushButton& Button(const char* name) { return *Part<QPushButton>(*window, name); }
    void Press(const char* name) { Q_EMIT Button(name).pressed(); }
    void Release(const char* name) { Q_EMIT Button(name).released(); }

    test::TestFolder folder;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    std::unique_ptr<test::FakeCards> library = std::make_unique<test::FakeCards>();
    test::FakeCards& cards = *library;
    AudioLayer layer{std::move(library)};
    std::unique_ptr<frmKopfhoerer> window;
    QStringList wanted;
};

TEST_F(frmKopfhoererTest, PlaysAndFindsACuePoint) {
    Listen(2);
    EXPECT_EQ(Text("lblStatus"), u"play"_s);
    EXPECT_FALSE(Button("Command10").isEnabled() || Button("Command9").isEnabled()) << "no cue point yet";
    cards.Advance(8.3);
    EXPECT_TRUE(test::WaitUntil([this] { return Text("Label9") == u"8.3"_s; }));
    Press("Command6");
    EXPECT_EQ(Text("Label9"), u"8.4"_s);
    EXPECT_TRUE(test::WaitUntil([this] { return Text("Label9").toDouble() > 8.55; })) << "repeats while it is held";
    Release("Command6");
    EXPECT_EQ(Text("lblStatus"), u"play"_s);
    Button("Command8").click();
    const double found = Text("Label9").toDouble();
    Press("Command5");
    Release("Command5");
    EXPECT_EQ(Text("Label9"), CueText::Write(found - 0.1));
    EXPECT_EQ(Text("lblStatus"), u"pause"_s);
    Button("Command3").click();
    EXPECT_EQ(wanted, QStringList(u"7:"_s + CueText::Write(found - 0.1)));
    window->ShowCue(5.2);
    Button("Command10").click();
    EXPECT_EQ(Text("Label9"), u"5.2"_s);
    Button("Command9").click();
    EXPECT_EQ(wanted.last(), u"7:"_s);
}

TEST_F(frmKopfhoererTest, ATitleOfTheArchiveHasNoPlaceForACue) {
    Listen(0);
    EXPECT_FALSE(Button("Command3").isEnabled() || Button("Command9").isEnabled());
    EXPECT_EQ(Text("lblTitel"), u"Nachtfahrt"_s);
    Press("Command7");
    EXPECT_EQ(Text("lblStatus"), u"0,5 speed"_s);
    const audio::Attributes& attributes = cards.streams.begin()->second.attributes;
    EXPECT_EQ(attributes.frequency, 499) << "22000 of 44100, of this title's 1000";
    Release("Command7");
    EXPECT_EQ(attributes.frequency, 1000);
    EXPECT_EQ(Text("lblStatus"), u"pause"_s);
    QTest::keyClick(window.get(), Qt::Key_Space);
    EXPECT_EQ(Text("lblStatus"), u"play"_s);
    Button("Command1").click();
    EXPECT_EQ(Text("lblStatus"), u"stop"_s);
}

TEST_F(frmKopfhoererTest, RemembersItsVolume) {
    Listen(1);
    EXPECT_EQ(cards.volumes[kHeadphones], 50);
    Part<QSlider>(*window, "VScroll1")->setValue(73);
    EXPECT_EQ(cards.volumes[kHeadphones], 73);
    EXPECT_EQ(Text("lblLautstaerke"), u"73 %"_s);
    window.reset();
    EXPECT_EQ(settings.GetNumber(u"Soundkarte"_s, u"Volume"_s, 0), 73);
    window = std::make_unique<frmKopfhoerer>(layer, settings);
    Listen(1);
    EXPECT_EQ(cards.volumes[kHeadphones], 73);
}

} // namespace
} // namespace kalvo
