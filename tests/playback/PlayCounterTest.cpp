#include "playback/PlayCounter.h"

#include "FakeDesk.h"
#include "archive/Archive.h"

#include <gtest/gtest.h>

namespace kalvo {

namespace {

class EveningClock final : public Clock {
public:
    QDateTime Now() const override { return now; }
    qint64 Milliseconds() const override { return now.toMSecsSinceEpoch(); }
    QDateTime now{QDate(2026, 11, 21), QTime(23, 5, 7, 250)};
};

struct PlayCounterTest : ::testing::Test, test::FakeDesk {
    PlayCounterTest() {
        DataFolder(folder.Path()).CreateAll();
        EXPECT_TRUE(archive.Open(DataFolder(folder.Path())) && archive.WaitForIndex());
        counter =
            std::make_unique<PlayCounter>(mixer, list1, list2, PlayCounter::Books{charts, evening, archive}, clock);
    }
    void Seconds(int seconds) {
        for (int second = 0; second < seconds; ++second) {
            fake.Advance(1);
            mixer.Dispatch();
            clock.now = clock.now.addSecs(1);
            counter->Tick();
        }
    }
    /** Title, plays through 1 and 2 of each record. */
    std::string Charts() const {
        QString text;
        for (const ChartEntry& entry : charts.Entries())
            text += QStringLiteral("%1:%2,%3 ").arg(entry.title).arg(entry.player1).arg(entry.player2);
        return text.toStdString();
    }
    /** Title, origin and seconds of each play. */
    std::string Evening() const {
        QString text;
        for (const PlayedTitle& title : evening.Read(QDate(2026, 11, 21)))
            text += QStringLiteral("%1:%2:%3 ").arg(title.title, OriginText(title.origin)).arg(title.played);
        return text.toStdString();
    }

    EveningClock clock;
    Archive archive{clock};
    ChartsFile charts{folder.Path(QStringLiteral("Charts")), clock};
    EveningLog evening{folder.Path(QStringLiteral("Verlauf"))};
    std::unique_ptr<PlayCounter> counter;
};

} // namespace

TEST_F(PlayCounterTest, ANextTitleCountsAtOnce) {
    Fill(list2, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    TitleRecord title;
    title.Titel = QStringLiteral("A");
    title.Pfad = list2.At(0).path;
    ASSERT_TRUE(archive.AddTitle(title));
    mixer.Next(2);
    EXPECT_EQ(Charts(), "a-60:0,1 ");
    EXPECT_EQ(archive.FindByPath(title.Pfad)->Extra2, QStringLiteral("2026.11.21, 23:05"));
    Seconds(30);
    mixer.Next(2);
    Seconds(5);
    EXPECT_EQ(Charts(), "a-60:0,1 b-60:0,1 ") << "once per load";
    mixer.Stop(2);
    EXPECT_EQ(Evening(), "a-60:Player:30 b-60:Player:5 ");
}

TEST_F(PlayCounterTest, AStartByHandCountsAfterTenSeconds) {
    Fill(list1, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    mixer.PlayRow(1, 0);
    Seconds(3);
    counter->StopTimer3(); // as pre-listening does
    Seconds(20);
    mixer.Stop(1);
    EXPECT_EQ(Charts() + Evening(), "");
    mixer.PlayRow(1, 0);
    Seconds(9);
    mixer.Pause(1);
    Seconds(20);
    EXPECT_EQ(Charts(), "") << "a pause is no sound";
    mixer.Play(1, -1);
    Seconds(1);
    EXPECT_EQ(Charts(), "a-60:1,0 ");
    Seconds(20);
    EXPECT_EQ(Charts(), "a-60:1,0 ");
    mixer.PlayRow(1, 1);
    Seconds(5);
    mixer.PlayRow(1, 0);
    Seconds(11);
    EXPECT_EQ(Charts(), "a-60:2,0 ") << "b was given up before";
}

TEST_F(PlayCounterTest, TheFadeButtonCountsAtOnce) {
    Fill(list1, {QStringLiteral("a-60"), QStringLiteral("b-60")});
    Fill(list2, {QStringLiteral("c-60")});
    list2.SetCurrent(0);
    mixer.PlayRow(1, 0);
    EXPECT_EQ(layer.Record(1).state, PlayState::Empty) << "not counted yet";
    mixer.FadeTo(2, -1);
    EXPECT_EQ(Charts(), "c-60:0,1 ");
    EXPECT_EQ(layer.Record(2).state, PlayState::Counted);
    mixer.FadeTo(2, -1);
    mixer.FadeTo(1, -1);
    EXPECT_EQ(Charts(), "c-60:0,1 a-60:1,0 ") << "once per load";
    Seconds(20);
    EXPECT_EQ(Charts(), "c-60:0,1 a-60:1,0 ");
    mixer.Stop(1);
    EXPECT_EQ(layer.Record(1).state, PlayState::Empty);
    Fill(list1, {QStringLiteral("slow-60")});
    list1.SetCurrent(2);
    mixer.FadeTo(1, -1);
    EXPECT_EQ(charts.Size(), 2);
    Seconds(4);
    EXPECT_EQ(charts.Size(), 3) << "as soon as its file is open";
}

TEST_F(PlayCounterTest, TheHistoryTellsWhoseTitleItWas) {
    Fill(list1, {QStringLiteral("a-5"), QStringLiteral("b-60"), QStringLiteral("c-60")});
    QList<PlaylistEntry> entries = list1.Entries();
    entries[0].origin = EntryOrigin::Wish;
    entries[1].origin = EntryOrigin::Automatic;
    list1.Replace(entries);
    mixer.Next(1);
    Seconds(7);
    EXPECT_EQ(Evening(), "a-5:Wunsch:4 b-60:Automatik:-1 ") << "its end starts the next";
    counter.reset();
    EXPECT_EQ(Evening(), "a-5:Wunsch:4 b-60:Automatik:3 ") << "the end of the program ends it";
}

TEST_F(PlayCounterTest, AFileThatIsMovedWhileItPlaysCountsAtItsNewPlace) {
    Fill(list1, {QStringLiteral("a-60")});
    mixer.PlayRow(1, 0);
    Seconds(5);
    mixer.FollowMove(folder.Path(QStringLiteral("a-60")), QStringLiteral("/neu/a-60"));
    EXPECT_EQ(mixer.Title(1).path, QStringLiteral("/neu/a-60"));
    Seconds(5);
    ASSERT_EQ(charts.Size(), 1);
    EXPECT_EQ(charts.Entries().constFirst().path, QStringLiteral("/neu/a-60"));
}

TEST_F(PlayCounterTest, TellsWhatItCannotWrite) {
    Fill(list1, {QStringLiteral("a-60")});
    folder.Write(QStringLiteral("Verlauf"), "keine Mappe");
    QStringList told;
    QObject::connect(counter.get(), &PlayCounter::Told, [&told](const QString& text) { told.append(text); });
    mixer.Next(1);
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(Charts(), "a-60:1,0 ");
}

} // namespace kalvo
