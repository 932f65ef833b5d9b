#include "app/FakeWindow.h"
#include "archive/ui/WindowActs.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <array>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** The main window with a title of 40 s in each list; the desk's own library makes no sound, the rehearsal's does. */
struct RehearsalCommandsTest : test::FakeWindow {
    void SetUp() override {
        ASSERT_TRUE(window->Load());
        window->show();
        test::SoundSpec spec;
        spec.seconds = 40;
        spec.rate = 8000;
        spec.channels = 1;
        for (const int list : {1, 2}) {
            const QString path = test::MakeSound(folder.Path(), u"t-%1.wav"_s.arg(list * 40), spec);
            desk->List(list).Append({{u"Titel %1"_s.arg(list), u"Wer"_s, {}, {}, {}, path}});
        }
    }
    void Open() {
        In<QAction>(*window, "Probelauf").trigger();
        ASSERT_TRUE(test::WaitUntil([this] { return In<QLabel>(*window, "lblStand").text() == u"1 Übergang"_s; }));
    }
};

TEST_F(RehearsalCommandsTest, TheDeskIsLeftAsItIs) {
    const std::array<PlaylistState, 2> before{desk->list1.State(), desk->list2.State()};
    int moved = 0;
    QObject::connect(&desk->mixer, &Mixer::TitleStarted, window.get(), [&moved] { ++moved; });
    QObject::connect(&desk->mixer, &Mixer::FaderMoved, window.get(), [&moved] { ++moved; });
    const std::size_t streams = fake->streams.size();
    Open();
    auto& table = In<QTableView>(*window, "Uebergaenge");
    EXPECT_EQ(table.model()->index(0, 1).data().toString(), u"Wer - Titel 1"_s);
    EXPECT_EQ(table.model()->index(0, 2).data().toString(), u"Wer - Titel 2"_s);
    EXPECT_EQ(table.model()->index(0, 4).data().toString(), u"gleichmäßig"_s);
    EXPECT_EQ(desk->list1.State(), before[0]);
    EXPECT_EQ(desk->list2.State(), before[1]);
    EXPECT_EQ(desk->mixer.OnAirPlayer(), 0);
    EXPECT_LE(fake->streams.size(), streams + 2) << "what the desk opens ahead by itself";
    EXPECT_EQ(desk->charts.Size(), 0);
    EXPECT_EQ(moved, 0);
}

TEST_F(RehearsalCommandsTest, WithoutASecondCardItAsksBeforeItUsesTheMainOutput) {
    Open();
    auto& listen = In<QPushButton>(*window, "cmdAnhoeren");
    test::Answers answers({u"Nein"_s, u"OK"_s});
    listen.click();
    ASSERT_TRUE(test::WaitUntil([&] { return answers.Said().size() == 1; }));
    EXPECT_TRUE(answers.Said()[0].contains(u"Sollen die Übergänge auf der Hauptausgabe zu hören sein?"_s));
    ASSERT_TRUE(test::WaitUntil([&] { return listen.text().remove(u'&') == u"Anhören"_s; }));
    desk->mixer.Play(1, -1);
    listen.click();
    ASSERT_TRUE(test::WaitUntil([&] { return answers.Said().size() == 2; }));
    EXPECT_TRUE(answers.Said()[1].contains(u"Solange Musik auf Sendung ist"_s));
    EXPECT_TRUE(test::WaitUntil([&] { return listen.text().remove(u'&') == u"Anhören"_s; }));
}

} // namespace
} // namespace kalvo
