#include "tags/DiscEntry.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** An entry as others write them. */
const char* const kForeign = "# xmcd CD database file\n#\n"
                             "# Track frame offsets:\n#\t150\n#       7350\n# 75000\n#\n"
                             "# Disc length: 1500 seconds\n#\n"
                             "# Revision: 4\n"
                             "# Submitted via: somebody 1.0\n#\n"
                             "DISCID=1405da03,1405DA04\n"
                             "DTITLE=Die Band / Ein sehr langer \nDTITLE=Titel in zwei Zeilen\n"
                             "DYEAR=1998\nDGENRE=Rock\n"
                             "TTITLE0=Eins\n"
                             "TTITLE1=Zwei\\nmit Zeile, Tab\\t, Strich \\\\n\n"
                             "TTITLE2=\n"
                             "EXTD=Mehr\n"
                             "EXTT0=\nEXTT1=x\nEXTT2=\n"
                             "PLAYORDER=2,0,1\n"
                             "XNEU=nicht\nXNEU= bekannt\n"
                             "TTITLE100=kein Titel\n";

DiscEntry Parsed(const QByteArray& bytes) {
    const auto entry = DiscText::Parse(bytes);
    EXPECT_TRUE(entry) << bytes.constData();
    return entry.value_or(DiscEntry());
}

void ExpectForeign(const DiscEntry& entry) {
    EXPECT_EQ(entry.discIds, (QStringList{u"1405da03"_s, u"1405da04"_s}));
    EXPECT_EQ(entry.toc, (DiscToc{{150, 7350, 75000}, 112500}));
    EXPECT_EQ(entry.revision, 4);
    EXPECT_EQ(entry.artist, u"Die Band"_s);
    EXPECT_EQ(entry.title, u"Ein sehr langer Titel in zwei Zeilen"_s);
    EXPECT_EQ(entry.year + entry.genre, u"1998Rock"_s);
    ASSERT_EQ(entry.tracks.size(), 3);
    EXPECT_EQ(entry.tracks[1], (DiscTrack{u"Zwei\nmit Zeile, Tab\t, Strich \\n"_s, u"x"_s}));
    EXPECT_EQ(entry.playOrder, u"2,0,1"_s);
    EXPECT_TRUE(entry.comments.contains(u"Submitted via: somebody 1.0"_s));
    const QList<std::pair<QString, QString>> more{{u"XNEU"_s, u"nicht bekannt"_s}, {u"TTITLE100"_s, u"kein Titel"_s}};
    EXPECT_EQ(entry.more, more);
}

TEST(DiscEntryTest, AForeignEntryIsReadAndWrittenWithoutLoss) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        const DiscEntry entry = Parsed(QByteArray(kForeign).replace("\n", lineEnd));
        ExpectForeign(entry);
        const DiscEntry again = Parsed(DiscText::Encode(entry));
        ExpectForeign(again);
        EXPECT_EQ(DiscText::Encode(again), DiscText::Encode(entry));
    }
}

TEST(DiscEntryTest, BothEncodingsAreReadAlike) {
    const QString text = u"# xmcd\nDISCID=0200c801\nDTITLE=Männer / Größe\n"_s;
    for (const QByteArray& bytes : {text.toLatin1(), text.toUtf8(), "\xEF\xBB\xBF" + text.toUtf8()}) {
        const DiscEntry entry = Parsed(bytes);
        EXPECT_EQ(entry.artist + u'|' + entry.title, u"Männer|Größe"_s);
    }
    // A character cut between two lines, as writers that count bytes do.
    EXPECT_EQ(Parsed("# xmcd\nDISCID=0200c801\nDTITLE=M\xC3\nDTITLE=\xA4nner\n").title, u"Männer"_s);
    const DiscEntry bare = Parsed("# xmcd\nDISCID=0200c801\nDTITLE=Nur dies\n");
    EXPECT_EQ(bare.artist + bare.title, u"Nur diesNur dies"_s) << "without a separator";
}

TEST(DiscEntryTest, LongValuesAreSplitAndNeverInsideAnEscapeOrACharacter) {
    DiscEntry entry;
    entry.discIds.append(u"0200c801"_s);
    for (int shift = 0; shift < 6; ++shift) {
        const QString title = QString(shift, u'x') + u"ä\n\\😀"_s.repeated(60);
        entry.tracks = {{title, title}};
        entry.artist = entry.title = title;
        const QByteArray bytes = DiscText::Encode(entry);
        for (const QString& line : QString::fromUtf8(bytes).split(u'\n'))
            EXPECT_LE(line.size(), 80);
        const DiscEntry again = Parsed(bytes);
        EXPECT_EQ(again.tracks, entry.tracks);
        EXPECT_EQ(again.artist, title);
        EXPECT_EQ(again.title, title);
    }
}

TEST(DiscEntryTest, WhatIsNoEntryIsNone) {
    for (const char* text : {"", "\n", "DISCID=0200c801\n", "# xmcd\n", "# xmcd\nDISCID=\n", "# xmcd\nDISCID=xyz\n"})
        EXPECT_FALSE(DiscText::Parse(text)) << text;
    const DiscEntry broken = Parsed("# xmcd\nDISCID=0200c801\nohne Gleichheit\n=leer\nTTITLE-1=a\nTTITLE99=b\n");
    EXPECT_EQ(broken.tracks.size(), 0);
    EXPECT_TRUE(DiscText::Encode(broken).contains("ohne Gleichheit"));
}

} // namespace
} // namespace kalvo
