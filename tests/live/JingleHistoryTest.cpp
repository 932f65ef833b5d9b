#include "live/JingleHistory.h"

#include "live/WallClock.h"
#include "playback/FakeDesk.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(JingleHistoryTest, EachJingleIsWrittenWithTheSecondsItWasHeard) {
    test::FakeDesk desk;
    const test::TestFolder folder;
    test::WallClock clock(test::WallClock::At(2026, 11, 21, 20, 0, 0).addMSecs(400));
    EveningLog evening(folder.Path(u"Verlauf"_s));
    JinglePlayer player(desk.mixer);
    const auto run = [&](int seconds) {
        for (int tick = 0; tick < seconds * 20; ++tick) {
            desk.fake.Advance(0.05);
            desk.mixer.Dispatch();
            player.Tick();
            clock.Set(clock.Now().addMSecs(50));
        }
    };
    {
        const JingleHistory history(player, evening, clock);
        player.Add({u"/kennung-2"_s});
        player.Add({u"/werbung-9"_s});
        run(3);
    } // the desk is closed
    const QList<PlayedTitle> titles = evening.Read({2026, 11, 21});
    ASSERT_EQ(titles.size(), 2);
    EXPECT_EQ(titles[0].title, u"kennung-2"_s);
    EXPECT_EQ(titles[0].origin, PlayOrigin::Jingle);
    EXPECT_EQ(titles[0].player, 0);
    EXPECT_EQ(titles[0].start.time(), QTime(20, 0));
    EXPECT_EQ(titles[0].length, 2);
    EXPECT_EQ(titles[0].played, 2);
    EXPECT_EQ(titles[1].path, u"/werbung-9"_s);
    EXPECT_EQ(titles[1].played, 1) << "cut off";
}

} // namespace
} // namespace kalvo
