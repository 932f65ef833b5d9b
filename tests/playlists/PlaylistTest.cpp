#include "playlists/PlaylistSupport.h"

#include <QColor>
#include <gtest/gtest.h>

namespace kalvo {

using test::EntriesOf;
using test::Shown;

class PlaylistTest : public ::testing::Test {
protected:
    test::ChosenRandom random;
    Playlist list{1, random};
};

TEST_F(PlaylistTest, KeysAreWholeNumbersWithoutZeros) {
    random.Choose({0.0, 0.47109, 0.99999999});
    for (const char* key : {"1", "4711", "10000"})
        EXPECT_EQ(list.FreshShuffleKey().toStdString(), key);
    random.Choose({0.5});
    list.Append({test::Entry(QStringLiteral("a"), {}), test::Entry(QStringLiteral("b"), QStringLiteral("7"))});
    EXPECT_EQ(list.At(0).shuffleKey, QStringLiteral("5001"));
    EXPECT_EQ(list.At(1).shuffleKey, QStringLiteral("7"));
}

TEST_F(PlaylistTest, ATitleWithoutANameShowsItsFileAndTheCurrentOneIsRed) {
    list.Append({{{}, {}, {}, {}, {}, QStringLiteral("/musik/Lied 1.mp3")},
                 {{}, QStringLiteral("Abba"), {}, {}, {}, QStringLiteral("/musik/Lied 2.mp3")}});
    EXPECT_EQ(list.index(0, Playlist::Title).data().toString(), QStringLiteral("Lied 1"));
    EXPECT_EQ(list.index(1, Playlist::Title).data().toString(), QString()) << "the artist is told";
    EXPECT_EQ(list.At(0).title, QString());
    list.SetCurrent(1);
    EXPECT_EQ(list.index(1, Playlist::Title).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
    EXPECT_FALSE(list.index(0, Playlist::Title).data(Qt::ForegroundRole).isValid());
}

TEST_F(PlaylistTest, ShuffleSortsAsTextAndStaysOn) {
    list.Append(EntriesOf("abcd"));
    list.SetCurrent(0);
    random.Choose({0.0008, 0.0009, 0.99999, 0.0001}); // 9, 10, 10000, 2
    list.Shuffle();
    EXPECT_EQ(Shown(list), "bcd!.a");
    list.Append({test::Entry(QStringLiteral("e"), QStringLiteral("15"))});
    EXPECT_EQ(Shown(list), "bced!.a");
    list.Move({0}, 5);
    list.Append({test::Entry(QStringLiteral("f"), QStringLiteral("0"))});
    EXPECT_EQ(Shown(list), "ced!.abf") << "a move by hand ends the sorting";
    list.Remove({5, 0, 0, 17, -1});
    list.Move({7, -1}, 0);
    EXPECT_EQ(Shown(list), "ed!.ab") << "rows that are gone do nothing";
}

} // namespace kalvo
