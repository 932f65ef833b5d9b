#include "live/AutoDj.h"
#include "live/FakeTitles.h"
#include "live/TitleVersion.h"
#include "playlists/PlaylistSupport.h"

#include <QSet>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

class AutoDjTest : public ::testing::Test {
protected:
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

TEST_F(AutoDjTest, StopsWithTheFirstTitleThatExceedsTheTime) {
    for (int i = 0; i < 20; ++i)
        source.Add(u"A"_s, QString::number(i));
    task.seconds = 1800;
    EXPECT_EQ(Run(), AutoDj::State::Reached);
    EXPECT_EQ(run->Titles(), 7); // six reach the half hour, but do not exceed it
    EXPECT_EQ(run->Seconds(), 2100);
    EXPECT_EQ(run->Percent(), 100);
    EXPECT_EQ(AutoDj::Message(37 * 3600 + 61),
              u"Titel mit einer Gesamtspielzeit von: 37:01:01 der Wiedergabeliste hinzugefügt"_s);
}

TEST_F(AutoDjTest, BothListsGetTitlesInTurnAndASkippedDrawKeepsItsTurn) {
    for (const char* title : {"a", "b", "c", "d"})
        source.Add(u"A"_s, QLatin1String(title));
    task.lists = {1, 2};
    task.titles = 3;
    task.held[0] = {{u"a"_s, u"A"_s, u"05:00"_s, {}, {}, u"/m/A/a"_s}};
    random.Choose({0, 0.0, 0, 0.25, 0, 0.25, 0, 0.25, 0, 0.5}); // a is held, b, b again for list 2, b held, c
    EXPECT_EQ(Run(random), AutoDj::State::Reached);
    EXPECT_EQ(Drawn(1), u"b c"_s);
    EXPECT_EQ(Drawn(2), u"b"_s);
}

TEST_F(AutoDjTest, EndsWhenNothingIsLeftAndFindsTheLastTitle) {
    task.seconds = 360'000;
    EXPECT_EQ(Run(), AutoDj::State::NothingLeft);
    EXPECT_EQ(run->Titles(), 0);

    task.selection.values = {u"Pop"_s, u"Walzer"_s, u"Polka"_s};
    for (int i = 0; i < 500; ++i) {
        source.Add(u"A"_s, QString::number(i));
        if (i != 77)
            task.held[0].append({QString::number(i), u"A"_s, {}, {}, {}, source.titles.constLast().Pfad});
    }
    EXPECT_EQ(Run(), AutoDj::State::NothingLeft);
    EXPECT_EQ(Drawn(), u"77"_s);
}

TEST_F(AutoDjTest, TitlesWithoutATimeDoNotGoOnForEver) {
    for (int i = 0; i < 12'000; ++i)
        source.Add(u"A"_s, QString::number(i), u"Pop"_s, {});
    task.seconds = 60;
    EXPECT_EQ(Run(), AutoDj::State::Reached);
    EXPECT_EQ(run->Titles(), 10'000);
}

TEST_F(AutoDjTest, NoArtistComesTwiceWithinTheDistance) {
    for (const char* artist : {"Ä", "B", "C", "D"}) {
        for (int i = 0; i < 10; ++i)
            source.Add(QString::fromUtf8(artist), QString::number(i));
    }
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

} // namespace
} // namespace kalvo::test
