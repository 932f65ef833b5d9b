#include "tags/DiscEntry.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

/** An entry as others write them. */
const char* const kForeign = "# xmcd CD database file\n"
                             "#\n"
                             "# Track frame offsets:\n"
                             "#\t150\n"
                             "#       7350\n"
                             "# 75000\n"
                             "#\n"
                             "# Disc length: 1500 seconds\n"
                             "#\n"
                             "# Revision: 4\n"
                             "# Submitted via: somebody 1.0\n"
                             "#\n"
                             "DISCID=1405da03,1405DA04\n"
                             "DTITLE=Die Band / Ein sehr langer \n"
                             "DTITLE=Titel in zwei Zeilen\n"
                             "DYEAR=1998\n"
                             "DGENRE=Rock\n"
                             "TTITLE0=Eins\n"
                             "TTITLE1=Zwei\\nmit Zeile, Tab\\t, Strich \\\\n\n"
                             "TTITLE2=\n"
                             "EXTD=Mehr\n"
                             "EXTT0=\n"
                             "EXTT1=x\n"
                             "EXTT2=\n"
                             "PLAYORDER=2,0,1\n"
                             "XNEU=nicht\n"
                             "XNEU= bekannt\n"
                             "TTITLE100=kein Titel\n";

void ExpectForeign(const DiscEntry& entry) {
    EXPECT_EQ(entry.discIds, (QStringList{QStringLiteral("1405da03"), QStringLiteral("1405da04")}));
    EXPECT_EQ(entry.toc, (DiscToc{{150, 7350, 75000}, 112500}));
    EXPECT_EQ(entry.revision, 4);
    EXPECT_EQ(entry.artist, QStringLiteral("Die Band"));
    EXPECT_EQ(entry.title, QStringLiteral("Ein sehr langer Titel in zwei Zeilen"));
    EXPECT_EQ(entry.year + entry.genre, QStringLiteral("1998Rock"));
    ASSERT_EQ(entry.tracks.size(), 3);
    EXPECT_EQ(entry.tracks[1], (DiscTrack{QStringLiteral("Zwei\nmit Zeile, Tab\t, Strich \\n"), QStringLiteral("x")}));
    EXPECT_EQ(entry.playOrder, QStringLiteral("2,0,1"));
    EXPECT_TRUE(entry.comments.contains(QStringLiteral("Submitted via: somebody 1.0")));
    const QList<std::pair<QString, QString>> more{{QStringLiteral("XNEU"), QStringLiteral("nicht bekannt")},
                                                  {QStringLiteral("TTITLE100"), QStringLiteral("kein Titel")}};
    EXPECT_EQ(entry.more, more);
}

TEST(DiscEntryTest, AForeignEntryIsReadAndWrittenWithoutLoss) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        const auto entry = DiscText::Parse(QByteArray(kForeign).replace("\n", lineEnd));
        ASSERT_TRUE(entry);
        ExpectForeign(*entry);
        const auto again = DiscText::Parse(DiscText::Encode(*entry));
        ASSERT_TRUE(again);
        ExpectForeign(*again);
        EXPECT_EQ(DiscText::Encode(*again), DiscText::Encode(*entry));
    }
}

TEST(DiscEntryTest, BothEncodingsAreReadAlike) {
    const QString text = QStringLiteral("# xmcd\nDISCID=0200c801\nDTITLE=Männer / Größe\n");
    for (const QByteArray& bytes : {text.toLatin1(), text.toUtf8(), "\xEF\xBB\xBF" + text.toUtf8()}) {
        const auto entry = DiscText::Parse(bytes);
        ASSERT_TRUE(entry);
        EXPECT_EQ(entry->artist, QStringLiteral("Männer"));
        EXPECT_EQ(entry->title, QStringLiteral("Größe"));
    }
    // A character cut between two lines, as writers that count bytes do.
    const auto cut = DiscText::Parse("# xmcd\nDISCID=0200c801\nDTITLE=Gr\xC3\nDTITLE=\xB6\xC3\x9F"
                                     "e\n");
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->title, QStringLiteral("Größe"));
    const auto bare = DiscText::Parse("# xmcd\nDISCID=0200c801\nDTITLE=Nur dies\n");
    ASSERT_TRUE(bare);
    EXPECT_EQ(bare->artist + bare->title, QStringLiteral("Nur diesNur dies")) << "without a separator";
}

TEST(DiscEntryTest, LongValuesAreSplitAndNeverInsideAnEscapeOrACharacter) {
    DiscEntry entry;
    entry.discIds.append(QStringLiteral("0200c801"));
    for (int shift = 0; shift < 6; ++shift) {
        const QString title = QString(shift, u'x') + QStringLiteral("ä\n\\😀").repeated(60);
        entry.tracks = {{title, title}};
        entry.artist = entry.title = title;
        const QByteArray bytes = DiscText::Encode(entry);
        for (const QString& line : QString::fromUtf8(bytes).split(u'\n'))
            EXPECT_LE(line.size(), 80);
        const auto again = DiscText::Parse(bytes);
        ASSERT_TRUE(again);
        EXPECT_EQ(again->tracks, entry.tracks);
        EXPECT_EQ(again->artist, title);
        EXPECT_EQ(again->title, title);
    }
}

TEST(DiscEntryTest, WhatIsNoEntryIsNone) {
    for (const char* text : {"", "\n", "DISCID=0200c801\n", "# xmcd\n", "# xmcd\nDISCID=\n", "# xmcd\nDISCID=xyz\n"})
        EXPECT_FALSE(DiscText::Parse(text)) << text;
    const auto broken = DiscText::Parse("# xmcd\nDISCID=0200c801\nohne Gleichheit\n=leer\nTTITLE-1=a\nTTITLE99=b\n");
    ASSERT_TRUE(broken);
    EXPECT_EQ(broken->tracks.size(), 0);
    EXPECT_TRUE(DiscText::Encode(*broken).contains("ohne Gleichheit"));
}

} // namespace
} // namespace kalvo
