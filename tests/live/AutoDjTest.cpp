#include "live/AutoDj.h"
#include "archive/TestClock.h"
#include "live/AutoDjFill.h"
#include "live/AutoDjRefill.h"
#include "live/FakeTitles.h"
#include "live/TitleVersion.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo::test {

struct AutoDjTest : ::testing::Test {
    AutoDjTest() {
        task.selection.field = ArchiveField::Stil;
        task.selection.values = {u"Pop"_s};
        task.now = QDateTime(QDate(2026, 3, 8), QTime(1, 30));
    }
    AutoDj::State Run(RandomSource& chance) {
        run.emplace(task, source, chance);
        AutoDj::State state = AutoDj::State::Running;
        for (int steps = 0; state == AutoDj::State::Running && steps < 1'000'000; ++steps)
            state = run->Step();
        return state;
    }
    AutoDj::State Run() { return Run(system); }
    QString Drawn(int list = 1) const {
        QStringList titles;
        for (const PlaylistEntry& entry : run->Drawn(list))
            titles.append(entry.title);
        return titles.join(u' ');
    }

    FakeTitles source;
    AutoDjTask task;
    ChosenRandom random;
    SystemRandom system;
    std::optional<AutoDj> run;
};

TEST_F(AutoDjTest, AValueThenATitleAreDrawnByTheGivenStatement) {
    task.selection.field = ArchiveField::Interpret;
    task.selection.values = {u"Mara"_s, u"O'Neil"_s};
    task.seconds = 0;
    source.Add(u"Mara Lind"_s, u"a"_s);
    source.Add(u"O'Neil"_s, u"b"_s);
    source.Add(u"Pat O'Neil"_s, u"c"_s);
    random.Choose({0.5, 0.99});
    EXPECT_EQ(Run(random), AutoDj::State::Reached);
    EXPECT_EQ(Drawn(), u"c"_s);
    EXPECT_EQ(source.asked,
              QStringList(u"SELECT * FROM Daten WHERE Interpret Like '*O*Neil*'Order By Interpret, Titel"_s));
    const PlaylistEntry entry = run->Drawn(1).at(0);
    EXPECT_EQ(entry.origin, EntryOrigin::Automatic);
    EXPECT_EQ(entry.path, u"/m/Pat O'Neil/c"_s);
    EXPECT_EQ(entry.duration, u"05:00"_s);
}

TEST_F(AutoDjTest, BothListsGetTitlesInTurnAndASkippedDrawKeepsItsTurn) {
    source.AddNumbered(u"A"_s, 4);
    task.lists = {1, 2};
    task.titles = 3;
    task.held[0] = {{u"0"_s, u"A"_s, u"05:00"_s, {}, {}, u"/m/A/0"_s}};
    random.Choose({0, 0.0, 0, 0.25, 0, 0.25, 0, 0.25, 0, 0.5}); // 0 is held, 1, 1 again for list 2, 1 held, 2
    EXPECT_EQ(Run(random), AutoDj::State::Reached);
    EXPECT_EQ(Drawn(1), u"1 2"_s);
    EXPECT_EQ(Drawn(2), u"1"_s);
}

TEST_F(AutoDjTest, EndsWhenNothingIsLeftAndFindsTheLastTitle) {
    task.seconds = 360'000;
    EXPECT_EQ(Run(), AutoDj::State::NothingLeft);
    EXPECT_EQ(run->Titles(), 0);
    task.selection.values = {u"Pop"_s, u"Walzer"_s, u"Polka"_s};
    source.AddNumbered(u"A"_s, 500);
    for (const TitleRecord& title : source.titles) {
        if (title.Titel != u"77"_s)
            task.held[0].append({title.Titel, u"A"_s, {}, {}, {}, title.Pfad});
    }
    EXPECT_EQ(Run(), AutoDj::State::NothingLeft);
    EXPECT_EQ(Drawn(), u"77"_s);
}

TEST_F(AutoDjTest, TitlesWithoutATimeDoNotGoOnForEver) {
    source.AddNumbered(u"A"_s, 12'000, u"Pop"_s, {});
    task.seconds = 60;
    EXPECT_EQ(Run(), AutoDj::State::Reached);
    EXPECT_EQ(run->Titles(), 10'000);
}

TEST_F(AutoDjTest, NoArtistComesTwiceWithinTheDistance) {
    for (const QString& artist : {u"Ä"_s, u"B"_s, u"C"_s, u"D"_s})
        source.AddNumbered(artist, 10);
    task.selection.rules.artistDistance = 3;
    task.held[0] = {{u"x"_s, u"ä feat. Z"_s, {}, {}, {}, u"/x"_s}};
    task.titles = 40;
    Run();
    ASSERT_GT(run->Titles(), 30);
    QStringList artists{u"Ä"_s};
    for (const PlaylistEntry& entry : run->Drawn(1)) {
        EXPECT_FALSE(artists.mid(std::max<qsizetype>(0, artists.size() - 3)).contains(entry.artist));
        artists.append(entry.artist);
    }
}

TEST_F(AutoDjTest, WhatTheRulesLeaveOutDoesNotCome) {
    source.Add(u"A"_s, u"gestern"_s, u"Pop"_s, u"03:00"_s, u"2026.03.07, 05:59"_s);
    source.Add(u"A"_s, u"abends"_s, u"Pop"_s, u"03:00"_s, u"2026.03.07, 22:00"_s);
    source.Add(u"A"_s, u"alt"_s, u"Pop"_s, u"03:00"_s, u"08.03.2026 01:00:08"_s);
    source.Add(u"A"_s, u"Regen (Radio Edit)"_s);
    source.Add(u"B"_s, u"Sturm - Live"_s);
    source.Add(u"B"_s, u"Sturm"_s);
    task.titles = 100;
    task.held[1] = {{u"Regen"_s, u"a"_s, {}, {}, {}, u"/anderswo"_s}};
    Run();
    EXPECT_EQ(run->Titles(), 6);
    task.selection.rules.skipPlayedToday = true;
    task.selection.rules.skipOtherVersions = true;
    EXPECT_EQ(Run(), AutoDj::State::NothingLeft);
    EXPECT_EQ(run->Titles(), 2);
    EXPECT_TRUE(Drawn().contains(u"gestern"_s));
    EXPECT_TRUE(Drawn().contains(u"Sturm"_s));
}

TEST(TitleVersionTest, TellsVersionsFromOtherSongs) {
    const QString key = VersionKey(u"Mara Lind"_s, u"Über Nacht"_s);
    for (const char* title : {"über nacht", "Über Nacht (Radio Edit)", "Über Nacht - Remastered 2011",
                              "Uber Nacht! [Live]", "Über Nacht (feat. Jörg)", "Über Nacht (2. Fassung) (Remix)"})
        EXPECT_EQ(VersionKey(u"MARA LIND feat. Jörg"_s, QString::fromUtf8(title)), key) << title;
    for (const char* title : {"Über Nacht (Teil 2)", "Über Nacht 2", "Nacht", "Über Nacht - Teil 2"})
        EXPECT_NE(VersionKey(u"Mara Lind"_s, QString::fromUtf8(title)), key) << title;
    EXPECT_NE(VersionKey(u"Anna"_s, u"Über Nacht"_s), key);
    EXPECT_NE(VersionKey(u"A"_s, u"(Live)"_s), VersionKey(u"A"_s, u"(Remix)"_s));
    EXPECT_NE(VersionKey(u"A"_s, u"???"_s), VersionKey(u"A"_s, u"!!!"_s));
}

struct AutoDjRefillTest : ::testing::Test, ListDesk {
    AutoDjRefillTest() {
        source.AddNumbered(u"A"_s, 6);
        options.isOn = true;
        options.selection.field = ArchiveField::Stil;
        options.selection.values = {u"Pop"_s};
        QObject::connect(&refill, &AutoDjRefill::Told, &refill, [this](const QString& text) { told.append(text); });
    }
    static testing::AssertionResult Becomes(const Playlist& list, int count) {
        if (WaitUntil([&] { return list.Count() == count; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << list.Count() << " titles instead of " << count;
    }

    TestClock clock;
    FakeTitles source;
    AutoDjRefillOptions options; ///< fewer than three titles are filled up to three
    AutoDjRefill refill{{&first, &second}, source, random, clock};
    QStringList told;
};

TEST_F(AutoDjRefillTest, AListIsFilledAsItRunsDry) {
    refill.SetOptions(options);
    ASSERT_TRUE(Becomes(first, 3));
    first.SetCurrent(1);
    ASSERT_TRUE(Becomes(first, 5));
    EXPECT_EQ(second.Count(), 0);
    QSet<QString> paths;
    for (const PlaylistEntry& entry : first.Entries()) {
        paths.insert(entry.path);
        EXPECT_EQ(entry.origin, EntryOrigin::Automatic);
    }
    EXPECT_EQ(paths.size(), 5);
    options.selection.bothLists = true;
    refill.SetOptions(options);
    EXPECT_TRUE(Becomes(second, 3));
    EXPECT_EQ(refill.StateText(), u"an"_s);
    options.selection.values.clear();
    refill.SetOptions(options);
    EXPECT_FALSE(refill.Options().isOn) << "there is nothing to choose from";
    EXPECT_EQ(refill.StateText(), u"aus"_s);
}

TEST_F(AutoDjRefillTest, AShuffledListIsFilledAtItsEnd) {
    first.Append(EntriesOf("abcdef"));
    first.Shuffle();
    first.SetCurrent(5);
    refill.SetOptions(options);
    ASSERT_TRUE(Becomes(first, 9));
    EXPECT_EQ(first.CurrentRow(), 5);
}

TEST_F(AutoDjRefillTest, WhatIsBehindComesAgainWhenThereIsNothingElse) {
    options.below = 6;
    refill.SetOptions(options);
    ASSERT_TRUE(Becomes(first, 6));
    first.SetCurrent(3);
    ASSERT_TRUE(Becomes(first, 9)); // 0 to 2 once more; the rest is still to come
    ASSERT_TRUE(WaitUntil([this] { return refill.IsStuck(); }));
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.at(0).contains(u"kein passender Titel für Wiedergabeliste 1"_s));
}

TEST_F(AutoDjRefillTest, FillingIsOneStepOfUndo) {
    AutoDjFill fill(source, random, actions, clock);
    int titles = 0;
    QObject::connect(&fill, &AutoDjFill::Finished, &fill, [&titles](int drawn) { titles = drawn; });
    options.selection.hours = 0.25;
    options.selection.bothLists = true;
    fill.Start(options.selection);
    ASSERT_TRUE(WaitUntil([&titles] { return titles == 4; }));
    EXPECT_EQ(first.Count(), 2);
    EXPECT_EQ(second.Count(), 2);
    stack.undo();
    EXPECT_EQ(Both(), "|");
    fill.Start(options.selection);
    fill.Cancel();
    EXPECT_FALSE(fill.IsRunning());
    EXPECT_EQ(Both(), "|");
}

struct AutoDjStoreTest : ::testing::Test {
    TestFolder folder;
    TestClock clock;
    AutoDjStore store{folder.Path(u"AutoDJ.json"_s)};
};

TEST_F(AutoDjStoreTest, EverythingComesBack) {
    const AutoDjSelection disco{ArchiveField::Extra1, {u"Disco \"70\""_s, u"Ö"_s}, 2.5, true, {4, true, true}};
    store.Put({u"Party"_s, disco});
    store.Put({u"abends"_s, {}});
    store.Put({u"PARTY"_s, disco});
    store.last = disco;
    store.refill = {true, 7, disco};
    ASSERT_TRUE(store.Save());
    AutoDjStore again(folder.Path(u"AutoDJ.json"_s));
    EXPECT_EQ(again.Load(clock), QString());
    EXPECT_EQ(again.Saved(), store.Saved());
    ASSERT_EQ(again.Saved().size(), 2);
    EXPECT_EQ(again.Saved().at(0).name, u"abends"_s);
    ASSERT_TRUE(again.Find(u"party"_s));
    EXPECT_EQ(*again.Find(u"party"_s), disco);
    EXPECT_EQ(again.last, disco);
    EXPECT_EQ(again.refill, store.refill);
    again.Remove(u"Party"_s);
    EXPECT_FALSE(again.Find(u"Party"_s));
}

TEST_F(AutoDjStoreTest, ADamagedFileIsSetAside) {
    folder.Write(u"AutoDJ.json"_s, "{\"auswahlen\": [");
    EXPECT_TRUE(store.Load(clock).contains(u"beschädigt"_s));
    ASSERT_TRUE(store.Save());
    const QStringList kept = QDir(folder.Path()).entryList({u"AutoDJ.json.defekt-*"_s});
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(folder.Read(kept.at(0)), "{\"auswahlen\": [");
}

TEST_F(AutoDjStoreTest, ImpossibleValuesGetTheirDefaults) {
    folder.Write(u"AutoDJ.json"_s, R"({"auswahlen": [{"name": " "}, 7],
        "zuletzt": {"kriterium": "Titel", "stunden": -4, "interpretAbstand": "x", "werte": [3, "", "a"]},
        "nachfuellen": {"unter": 0}})");
    EXPECT_EQ(store.Load(clock), QString());
    EXPECT_TRUE(store.Saved().isEmpty());
    EXPECT_EQ(store.last, (AutoDjSelection{ArchiveField::Interpret, {u"a"_s}, 0, false, {}}));
    EXPECT_EQ(store.refill.below, 1);
}

} // namespace kalvo::test
