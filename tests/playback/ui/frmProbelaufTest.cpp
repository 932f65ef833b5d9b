#include "playback/ui/frmProbelauf.h"

#include "audio/AudioLibraryImpl.h"
#include "base/Clock.h"
#include "base/Settings.h"
#include "playback/FakeDesk.h"
#include "support/PartOf.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"
#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using test::Part;

/** Three titles in two lists of a desk that makes no sound; the rehearsal's own library renders them. */
struct frmProbelaufTest : ::testing::Test {
    void Rehearse() {
        test::SoundSpec spec;
        spec.seconds = 30;
        spec.rate = 8000;
        spec.channels = 1;
        for (int i = 0; i < 3; ++i) {
            const QString name = u"t%1-30"_s.arg(i);
            const QString path = test::MakeSound(data.Path(), name + u".wav"_s, spec);
            (i == 1 ? desk.list2 : desk.list1).Append({{name, {}, {}, {}, {}, path}});
        }
        rehearsal.Start();
        window.show();
        ASSERT_TRUE(test::WaitUntil([this] { return !rehearsal.IsRunning(); }));
    }
    QPushButton& Button(const char* name) { return *Part<QPushButton>(window, name); }
    QString Text(const char* label) { return Part<QLabel>(window, label)->text(); }
    int Row() { return Part<QTableView>(window, "Uebergaenge")->currentIndex().row(); }
    std::size_t Sounding() const { return desk.fake.streams.size(); }

    test::FakeDesk desk;
    test::TestFolder data;
    Settings settings{data.Path(u"kalvo.ini"_s)};
    SystemClock clock;
    Rehearsal rehearsal{{[this] { return DeskMoment::Of(desk.mixer, desk.list1, desk.list2); },
                         [] { return RehearsalSettings(); },
                         [] { return std::make_unique<audio::AudioLibraryImpl>(); }}};
    frmProbelauf window{{rehearsal, desk.mixer, settings, clock, [](const QString&) { return 120.0; }}};
};

TEST_F(frmProbelaufTest, JointsAreHeardOneByOneOrAllInTurn) {
    Rehearse();
    EXPECT_EQ(Text("lblStand"), u"2 Übergänge"_s);
    EXPECT_EQ(Text("lblUebergang"), u"t0-30 → t1-30"_s);
    QTimer yes; // to the main output, since there is one card
    QObject::connect(&yes, &QTimer::timeout, [] {
        if (auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget()))
            box->findChild<QPushButton*>(u"Command1"_s)->click();
    });
    yes.start(5);
    Button("cmdAlle").click();
    ASSERT_TRUE(test::WaitUntil([this] { return Sounding() == 1; }));
    EXPECT_EQ(Row(), 0);
    desk.fake.Advance(1e9);
    ASSERT_TRUE(test::WaitUntil([this] { return Row() == 1 && Sounding() == 1; })) << "the next one by itself";
    desk.fake.Advance(1e9);
    ASSERT_TRUE(test::WaitUntil([this] { return Sounding() == 0; })) << "and after the last one nothing";
    Button("cmdVorheriger").click();
    EXPECT_EQ(Row(), 0);
    ASSERT_TRUE(test::WaitUntil([this] { return Sounding() == 1; }));
    EXPECT_EQ(Button("cmdAnhoeren").text(), u"Stop"_s);
    Button("cmdAnhoeren").click();
    EXPECT_EQ(Sounding(), 0U);
    EXPECT_EQ(desk.mixer.OnAirPlayer(), 0);
}

TEST_F(frmProbelaufTest, WhatIsLookedAtIsRenderedAndMeasured) {
    QStringList chosen;
    QObject::connect(&window, &frmProbelauf::JointChosen, [&chosen](const QStringList& paths) { chosen = paths; });
    Rehearse();
    EXPECT_EQ(chosen, (QStringList{data.Path(u"t0-30.wav"_s), data.Path(u"t1-30.wav"_s)})) << "the first one by itself";
    Part<QTableView>(window, "Uebergaenge")->selectRow(1);
    EXPECT_EQ(rehearsal.Wanted(), 1);
    EXPECT_EQ(chosen, (QStringList{data.Path(u"t1-30.wav"_s), data.Path(u"t2-30.wav"_s)}));
}

} // namespace
} // namespace kalvo
