#include "playback/PlayCounter.h"

#include "FakeDesk.h"
#include "archive/Archive.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

class EveningClock final : public Clock {
public:
    QDateTime Now() const override { return now; }
    qint64 Milliseconds() const override { return now.toMSecsSinceEpoch(); }
    QDateTime now{QDate(2026, 11, 21), QTime(23, 5, 7, 250)};
};

struct PlayCounterTest : test::FakeDeskTest {
    PlayCounterTest() {
        DataFolder(folder.Path()).CreateAll();
        EXPECT_TRUE(archive.Open(DataFolder(folder.Path())) && archive.WaitForIndex());
    }
    void Seconds(int seconds) {
        for (; seconds > 0; --seconds) {
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
            text += u"%1:%2,%3 "_s.arg(entry.title).arg(entry.player1).arg(entry.player2);
        return text.toStdString();
    }
    /** Title, origin and seconds of each play. */
    std::string Evening() const {
        QString text;
        for (const PlayedTitle& title : evening.Read(QDate(2026, 11, 21)))
            text += u"%1:%2:%3 "_s.arg(title.title, OriginText(title.origin)).arg(title.played);
        return text.toStdString();
    }

    EveningClock clock;
    Archive archive{clock};
    ChartsFile charts{folder.Path(u"Charts"_s), clock};
    EveningLog evening{folder.Path(u"Verlauf"_s)};
    std::unique_ptr<PlayCounter> counter =
        std::make_unique<PlayCounter>(mixer, list1, list2, PlayCounter::Books{charts, evening, archive}, clock);
};

TEST_F(PlayCounterTest, ANextTitleCountsAtOnce) {
    Fill(list2, {u"a-60"_s, u"b-60"_s});
    TitleRecord title;
    title.Titel = u"A"_s;
    title.Pfad = list2.At(0).path;
    ASSERT_TRUE(archive.AddTitle(title));
    mixer.Next(2);
    EXPECT_EQ(Charts(), "a-60:0,1 ");
    EXPECT_EQ(archive.FindByPath(title.Pfad)->Extra2, u"2026.11.21, 23:05"_s);
    Seconds(30);
    mixer.Next(2);
    Seconds(5);
    EXPECT_EQ(Charts(), "a-60:0,1 b-60:0,1 ") << "once per load";
    mixer.Stop(2);
    EXPECT_EQ(Evening(), "a-60:Player:30 b-60:Player:5 ");
}

TEST_F(PlayCounterTest, AStartByHandCountsAfterTenSeconds) {
    Fill(list1, {u"a-60"_s, u"b-60"_s});
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
    Fill(list1, {u"a-60"_s, u"b-60"_s});
    Fill(list2, {u"c-60"_s});
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
    Fill(list1, {u"slow-60"_s});
    list1.SetCurrent(2);
    mixer.FadeTo(1, -1);
    EXPECT_EQ(charts.Size(), 2);
    Seconds(4);
    EXPECT_EQ(charts.Size(), 3) << "as soon as its file is open";
}

TEST_F(PlayCounterTest, TheHistoryTellsWhoseTitleItWas) {
    Fill(list1, {u"a-5"_s, u"b-60"_s, u"c-60"_s});
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
    Fill(list1, {u"a-60"_s});
    mixer.PlayRow(1, 0);
    Seconds(5);
    mixer.FollowMove(folder.Path(u"a-60"_s), u"/neu/a-60"_s);
    EXPECT_EQ(mixer.Title(1).path, u"/neu/a-60"_s);
    Seconds(5);
    ASSERT_EQ(charts.Size(), 1);
    EXPECT_EQ(charts.Entries().constFirst().path, u"/neu/a-60"_s);
}

TEST_F(PlayCounterTest, TellsWhatItCannotWrite) {
    Fill(list1, {u"a-60"_s});
    folder.Write(u"Verlauf"_s, "keine Mappe");
    QStringList told;
    QObject::connect(counter.get(), &PlayCounter::Told, [&told](const QString& text) { told.append(text); });
    mixer.Next(1);
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(Charts(), "a-60:1,0 ");
}

} // namespace
} // namespace kalvo
