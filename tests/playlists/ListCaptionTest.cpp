#include "playlists/ListCaption.h"

#include "playlists/CueText.h"
#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

namespace kalvo {

TEST(ListCaption, IsWordedAsGiven) {
    EXPECT_EQ(ListCaption(1, 2, 17, QStringLiteral("Standard")),
              QStringLiteral("Player 1       3. von 17 in Standard"));
    EXPECT_EQ(ListCaption(2, -1, 0, QStringLiteral("%1")), QStringLiteral("Player 2       0. von 0 in %1"));
}

TEST(ListCaption, NamesComeFromThePath) {
    EXPECT_EQ(PlaylistName(QStringLiteral("/a.wil/Party.wil")), QStringLiteral("Party"));
    EXPECT_EQ(PlaylistName(QStringLiteral("D:\\x\\Som.mer.WIL")), QStringLiteral("Som.mer"));
    EXPECT_EQ(PlaylistName(QStringLiteral("/x/default.mav")), QStringLiteral("Standard"));
}

TEST(ListCaption, SumsDurations) {
    test::ChosenRandom random;
    Playlist list(1, random);
    list.Append(test::EntriesOf("abc"));
    list.Append({{QStringLiteral("x"), {}, QStringLiteral("0"), {}, {}, {}}});
    EXPECT_EQ(TotalSeconds(list), 180);
    EXPECT_EQ(ComingSeconds(list), (QList<int>{60, 60, 60, 0}));
    list.SetCurrent(2);
    EXPECT_EQ(ComingSeconds(list), QList<int>{0});
    list.MarkPlayNext(1);
    EXPECT_EQ(ComingSeconds(list), (QList<int>{60, 60, 0})) << "the list goes on behind the mark";
    EXPECT_EQ(RestText(3492), QStringLiteral("Rest 00:58:12"));
    EXPECT_EQ(RestText(360059), QStringLiteral("Rest 100:00:59"));
    EXPECT_EQ(UntilText(3492, QDateTime(QDate(2026, 1, 1), QTime(23, 41, 7))), QStringLiteral("bis 00:39"));
}

TEST(CueText, IsOnlyWhatItWrites) {
    EXPECT_EQ(CueText::Write(12.44), QStringLiteral("12.4"));
    EXPECT_DOUBLE_EQ(CueText::Read(QStringLiteral("12.4")).value_or(-1), 12.4);
    EXPECT_DOUBLE_EQ(CueText::Read(QStringLiteral("0.0")).value_or(-1), 0);
    for (const char* text : {"", "12", "12.45", "012.4", "-1.0", "nan", "inf", "1e1", "12,4", " 12.4", "Wunsch"})
        EXPECT_FALSE(CueText::Read(QString::fromUtf8(text))) << text;
}

} // namespace kalvo
