#include "playlists/CueText.h"
#include "playlists/ListCaption.h"
#include "playlists/PlaylistSupport.h"

#include <QColor>
#include <gtest/gtest.h>

namespace kalvo::test {

// Sorting, moving and what comes next are held against their rules in ui/ListRulesTest.cpp.
struct PlaylistTest : ::testing::Test {
    SystemRandom random;
    Playlist list{1, random};
};

TEST_F(PlaylistTest, ATitleWithoutANameShowsItsFileAndTheCurrentOneIsRed) {
    list.Append({{{}, {}, {}, {}, {}, u"/musik/Lied 1.mp3"_s}, {{}, u"Abba"_s, {}, {}, {}, u"/musik/Lied 2.mp3"_s}});
    EXPECT_EQ(list.index(0, Playlist::Title).data().toString(), u"Lied 1"_s);
    EXPECT_EQ(list.index(1, Playlist::Title).data().toString(), QString()) << "the artist is told";
    EXPECT_EQ(list.At(0).title, QString());
    list.SetCurrent(1);
    EXPECT_EQ(list.index(1, Playlist::Title).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
    EXPECT_FALSE(list.index(0, Playlist::Title).data(Qt::ForegroundRole).isValid());
}

TEST_F(PlaylistTest, RowsThatAreGoneDoNothing) {
    list.Append(EntriesOf("abcd"));
    list.SetCurrent(3);
    list.Remove({2, 0, 0, 17, -1});
    list.Move({7, -1}, 0);
    EXPECT_EQ(Shown(list), "b!.d");
}

TEST_F(PlaylistTest, SumsDurations) {
    list.Append(EntriesOf("abc"));
    list.Append({{u"x"_s, {}, u"0"_s, {}, {}, {}}});
    EXPECT_EQ(TotalSeconds(list), 180);
    EXPECT_EQ(ComingSeconds(list), (QList<int>{60, 60, 60, 0}));
    list.SetCurrent(2);
    EXPECT_EQ(ComingSeconds(list), QList<int>{0});
    list.MarkPlayNext(1);
    EXPECT_EQ(ComingSeconds(list), (QList<int>{60, 60, 0})) << "the list goes on behind the mark";
    EXPECT_EQ(RestText(3492), u"Rest 00:58:12"_s);
    EXPECT_EQ(RestText(360059), u"Rest 100:00:59"_s);
    EXPECT_EQ(UntilText(3492, QDateTime(QDate(2026, 1, 1), QTime(23, 41, 7))), u"bis 00:39"_s);
}

TEST(CueTextTest, IsOnlyWhatItWrites) {
    EXPECT_EQ(CueText::Write(12.44), u"12.4"_s);
    EXPECT_DOUBLE_EQ(CueText::Read(u"12.4"_s).value_or(-1), 12.4);
    EXPECT_DOUBLE_EQ(CueText::Read(u"0.0"_s).value_or(-1), 0);
    for (const char* text : {"", "12", "12.45", "012.4", "-1.0", "nan", "inf", "1e1", "12,4", " 12.4", "Wunsch"})
        EXPECT_FALSE(CueText::Read(QString::fromUtf8(text))) << text;
}

} // namespace kalvo::test
