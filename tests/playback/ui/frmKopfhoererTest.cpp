#include "playback/ui/frmKopfhoerer.h"

#include "base/Settings.h"
#include "playback/FakeAudio.h"
#include "playlists/CueText.h"
#include "support/PartOf.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <gtest/gtest.h>

namespace kalvo {

namespace {

/** Two cards: 1 plays the music, 2 is for the headphones. */
class TwoCards : public test::FakeAudio {
public:
    explicit TwoCards(int& volume) : volume_(volume) {}
    std::string GetDeviceDescription(int device) override {
        return device == 0 ? "Kein Ton" : device < 3 ? "Karte " + std::to_string(device) : "";
    }
    bool Init(audio::Output, int device, int, int) override { return device < 3; }
    bool GetInfo(audio::Output output, audio::OutputInfo& info) const override {
        info.device = output == audio::Output::Main ? 1 : 2;
        info.deviceName = "Karte " + std::to_string(info.device);
        return true;
    }
    bool SetVolume(audio::Output output, int volume) override {
        volume_ = output == audio::Output::Headphones ? volume : volume_;
        return true;
    }

private:
    int& volume_;
};

struct frmKopfhoererTest : ::testing::Test {
    frmKopfhoererTest() {
        layer.InitAudio(1, 1024);
        window = std::make_unique<frmKopfhoerer>(layer, settings);
        QObject::connect(window.get(), &frmKopfhoerer::CueWanted,
                         [this](const HeadphoneTitle& title, const QString& cue) {
                             wanted.append(QStringLiteral("%1:%2").arg(title.entry).arg(cue));
                         });
    }
    void Listen(int source, double cue = -1) {
        settings.PutNumber(QStringLiteral("Soundkarte"), QStringLiteral("Device"), 2);
        window->show();
        window->Listen({QStringLiteral("Nachtfahrt"), QStringLiteral("Mara Lind"),
                        folder.Write(QStringLiteral("a-60"), "x"), source, 7, cue});
    }
    QString Text(const char* name) { return test::Part<QLabel>(*window, name)->text(); }
    QPushButton& Button(const char* name) { return *test::Part<QPushButton>(*window, name); }
    void Press(const char* name) { Q_EMIT Button(name).pressed(); }
    void Release(const char* name) { Q_EMIT Button(name).released(); }

    test::TestFolder folder;
    int volume = -1;
    Settings settings{folder.Path(QStringLiteral("kalvo.ini"))};
    std::unique_ptr<TwoCards> library = std::make_unique<TwoCards>(volume);
    TwoCards& cards = *library;
    AudioLayer layer{std::move(library)};
    std::unique_ptr<frmKopfhoerer> window;
    QStringList wanted;
};

} // namespace

TEST_F(frmKopfhoererTest, WithoutACardItSaysSoAndStays) {
    QString said;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&said] {
        if (auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget())) {
            for (const QLabel* label : box->findChildren<QLabel*>())
                said += label->text();
            box->accept();
        }
    });
    answer.start(5);
    window->show();
    window->Listen({QStringLiteral("Nachtfahrt"), {}, folder.Write(QStringLiteral("a-60"), "x")});
    EXPECT_TRUE(test::WaitUntil([&said] { return said.contains(HeadphonePlayer::NoCardText()); }));
    EXPECT_EQ(Text("lblMeldung"), HeadphonePlayer::NoCardText());
    EXPECT_EQ(Text("lblStatus"), QStringLiteral("stop"));
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(Button("Command2").isEnabled());
}

TEST_F(frmKopfhoererTest, PlaysAndFindsACuePoint) {
    Listen(2);
    EXPECT_EQ(Text("lblStatus"), QStringLiteral("play"));
    EXPECT_FALSE(Button("Command10").isEnabled() || Button("Command9").isEnabled()) << "no cue point yet";
    cards.Advance(8.3);
    EXPECT_TRUE(test::WaitUntil([this] { return Text("Label9") == QStringLiteral("8.3"); }));
    Press("Command6");
    EXPECT_EQ(Text("Label9"), QStringLiteral("8.4"));
    EXPECT_TRUE(test::WaitUntil([this] { return Text("Label9").toDouble() > 8.55; })) << "repeats while it is held";
    Release("Command6");
    EXPECT_EQ(Text("lblStatus"), QStringLiteral("play"));
    Button("Command8").click();
    const double found = Text("Label9").toDouble();
    Press("Command5");
    Release("Command5");
    EXPECT_EQ(Text("Label9"), CueText::Write(found - 0.1));
    EXPECT_EQ(Text("lblStatus"), QStringLiteral("pause"));
    Button("Command3").click();
    EXPECT_EQ(wanted, QStringList(QStringLiteral("7:") + CueText::Write(found - 0.1)));
    window->ShowCue(5.2);
    Button("Command10").click();
    EXPECT_EQ(Text("Label9"), QStringLiteral("5.2"));
    Button("Command9").click();
    EXPECT_EQ(wanted.last(), QStringLiteral("7:"));
}

TEST_F(frmKopfhoererTest, ATitleOfTheArchiveHasNoPlaceForACue) {
    Listen(0);
    EXPECT_FALSE(Button("Command3").isEnabled() || Button("Command9").isEnabled());
    EXPECT_EQ(Text("lblTitel"), QStringLiteral("Nachtfahrt"));
    Press("Command7");
    EXPECT_EQ(Text("lblStatus"), QStringLiteral("0,5 speed"));
    Release("Command7");
    EXPECT_EQ(Text("lblStatus"), QStringLiteral("pause"));
    QTest::keyClick(window.get(), Qt::Key_Space);
    EXPECT_EQ(Text("lblStatus"), QStringLiteral("play"));
    Button("Command1").click();
    EXPECT_EQ(Text("lblStatus"), QStringLiteral("stop"));
    EXPECT_EQ(Text("Label9"), QStringLiteral("0.0"));
    EXPECT_EQ(Button("Command6").toolTip(), QStringLiteral("vorwärts"));
}

TEST_F(frmKopfhoererTest, RemembersItsVolume) {
    Listen(1);
    EXPECT_EQ(volume, 50);
    test::Part<QSlider>(*window, "VScroll1")->setValue(73);
    EXPECT_EQ(volume, 73);
    EXPECT_EQ(Text("lblLautstaerke"), QStringLiteral("73 %"));
    window.reset();
    EXPECT_EQ(settings.GetNumber(QStringLiteral("Soundkarte"), QStringLiteral("Volume"), 0), 73);
    window = std::make_unique<frmKopfhoerer>(layer, settings);
    Listen(1);
    EXPECT_EQ(volume, 73);
}

} // namespace kalvo
