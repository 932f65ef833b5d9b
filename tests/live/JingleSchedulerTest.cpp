#include "live/JingleScheduler.h"

#include "live/WallClock.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo::test {

struct JingleSchedulerTest : ::testing::Test {
    void Schedule(std::size_t record, const std::vector<JingleSlot>& slots, bool active = true) {
        JingleRecords records = file.Read();
        std::copy(slots.begin(), slots.end(), records.at(record).slots.begin());
        records.at(record).path = u"/j%1.mp3"_s.arg(record);
        records.at(record).active = active;
        ASSERT_TRUE(file.Write(records));
        scheduler.Reload();
    }
    /** Looks twice a minute for so many hours; what became due: "2. 07:30:00 /j0.mp3". */
    QStringList Run(double hours) {
        QStringList due;
        for (qint64 second = 0; second < qint64(hours * 3600); second += 30, clock.Pass(30)) {
            for (const DueJingle& jingle : scheduler.Check())
                due.append(clock.Now().toString(u"d. HH:mm:ss "_s) + jingle.path);
        }
        return due;
    }

    TestFolder folder;
    WallClock clock; // Monday, 2 March 2026, 07:00
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    JingleFile file{folder.Path(u"TerminPlayNeu.dll"_s), settings, clock};
    JingleScheduler scheduler{file, clock};
};

const JingleSlot kMonday{u"Wöchentlich"_s, u"Montag"_s, u"07:30"_s};

TEST_F(JingleSchedulerTest, AWeekPlaysEachDayOnceAndEachWeekdayOnce) {
    Schedule(0, {kMonday, {u"Deaktiviert"_s, {}, u"09:00"_s}});
    Schedule(1, {{u"Täglich"_s, u"Freitag"_s, u"00:00"_s}});
    Schedule(2, {{u"Täglich"_s, {}, u"07:30"_s}}, false);
    Schedule(3, {{u"Wöchentlich"_s, u"Sonntag"_s, u"23:59"_s}, {u"Wöchentlich"_s, {}, u"08:00"_s}});
    EXPECT_EQ(Run(7 * 24), (QStringList{u"2. 07:30:00 /j0.mp3"_s, u"3. 00:00:00 /j1.mp3"_s, u"4. 00:00:00 /j1.mp3"_s,
                                        u"5. 00:00:00 /j1.mp3"_s, u"6. 00:00:00 /j1.mp3"_s, u"7. 00:00:00 /j1.mp3"_s,
                                        u"8. 00:00:00 /j1.mp3"_s, u"8. 23:59:00 /j3.mp3"_s, u"9. 00:00:00 /j1.mp3"_s}));
}

TEST_F(JingleSchedulerTest, ARecordIsDueOnceInItsMinuteWhateverItsSlotsSay) {
    const JingleSlot daily{u"Täglich"_s, u"Montag"_s, u"07:30"_s};
    Schedule(0, {kMonday, daily, daily});
    Schedule(1, {kMonday});
    clock.Pass(30 * 60);
    const std::vector<DueJingle> due = scheduler.Check();
    ASSERT_EQ(due.size(), 2U) << "both records, one after the other";
    EXPECT_EQ(due[0].Caption(), u"Täglicher Termin Play: /j0.mp3"_s);
    EXPECT_EQ(due[1].Caption(), u"Wöchentlicher Termin Play: /j1.mp3"_s);
    Schedule(2, {kMonday});
    EXPECT_EQ(Run(0.5), QStringList{u"2. 07:30:00 /j2.mp3"_s}) << "entered during its minute; the others had theirs";
}

TEST_F(JingleSchedulerTest, BothChangesOfSummerTimeFollowTheClockOnTheWall) {
    Schedule(0, {{u"Täglich"_s, {}, u"02:30"_s}, {u"Täglich"_s, {}, u"03:00"_s}});
    clock.Set(WallClock::At(2026, 3, 29, 1, 0, 0));
    EXPECT_EQ(Run(3), QStringList{u"29. 03:00:00 /j0.mp3"_s}) << "02:30 does not exist";
    clock.Set(WallClock::At(2026, 10, 25, 1, 0, 0));
    EXPECT_EQ(Run(4), (QStringList{u"25. 02:30:00 /j0.mp3"_s, u"25. 03:00:00 /j0.mp3"_s})) << "02:30 comes twice";
}

TEST_F(JingleSchedulerTest, SleepIsNotMadeUpForAndAClockSetBackPlaysNothingTwice) {
    Schedule(0, {{u"Täglich"_s, {}, u"07:30"_s}, {u"Täglich"_s, {}, u"09:00"_s}});
    EXPECT_EQ(Run(0.25), QStringList());
    clock.Pass(3600); // the computer slept from 07:15 to 08:15
    EXPECT_EQ(Run(1), QStringList{u"2. 09:00:00 /j0.mp3"_s});
    clock.Set(WallClock::At(2026, 3, 2, 8, 55, 0));
    EXPECT_EQ(Run(1), QStringList());
    clock.Set(WallClock::At(2026, 3, 3, 7, 30, 59)); // wakes in the last second of a minute
    EXPECT_EQ(Run(1), QStringList{u"3. 07:30:59 /j0.mp3"_s});
}

TEST_F(JingleSchedulerTest, TellsWhatComesNextAndWhen) {
    const auto next = [this] {
        scheduler.Check();
        const std::optional<ComingJingle>& coming = scheduler.Next();
        return coming ? coming->Name() + u' ' + coming->WhenText(clock.Now()) : u"nichts"_s;
    };
    EXPECT_EQ(next(), u"nichts"_s);
    Schedule(0, {kMonday, {u"Wöchentlich"_s, u"Donnerstag"_s, u"06:15"_s}});
    Schedule(1, {{u"Täglich"_s, {}, u"07:10"_s}}, false);
    Schedule(2, {{u"Deaktiviert"_s, {}, u"07:05"_s}, {u"Täglich"_s, {}, u"99:99"_s}});
    EXPECT_EQ(next(), u"j0 in 00:30:00"_s) << "neither the inactive one nor times that mean nothing";
    clock.Pass(1800);
    EXPECT_EQ(next(), u"j0 Do 06:15"_s) << "it is playing";
    Schedule(3, {{u"Täglich"_s, {}, u"02:30"_s}});
    clock.Set(WallClock::At(2026, 3, 28, 2, 30, 0));
    EXPECT_EQ(next(), u"j3 Mo 02:30"_s) << "on Sunday the clock leaves 02:30 out";
}

} // namespace kalvo::test
