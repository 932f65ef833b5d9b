// The archive of discs. No window uses it yet: what it must not do is lose what others wrote.

#include "support/TestFolder.h"
#include "tags/DiscEntry.h"
#include "tags/DiscFolder.h"
#include "tags/DiscModule.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

const DiscToc kDisc{{150, 7350, 75000}, 112500};
const DiscToc kTwin{{150, 7350, 75010}, 112500}; // another disc with the same id
const QString kId = u"1405da03"_s;

TEST(DiscTocTest, TheIdIsTheCommonOneAndABrokenTableHasNone) {
    const std::pair<DiscToc, const char*> cases[] = {
        // One track from 2 s to 202 s: checksum 2, playing time 200 = 0xc8.
        {{{150}, 15150}, "0200c801"},
        // Parts of seconds do not count: 2, 99, 200 s: 2 + 18 + 2 = 22 = 0x16; 302 - 2 = 300 = 0x012c.
        {{{224, 7499, 15000}, 22724}, "16012c03"},
        {{{}, 1000}, ""},
        {{{150, 150}, 1000}, ""},
        {{{150, 1000}, 1000}, ""},
        {{{-1}, 1000}, ""}};
    for (const auto& [toc, id] : cases)
        EXPECT_EQ(toc.DiscId().toStdString(), id);
}

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
    EXPECT_EQ(entry.discIds, (QStringList{kId, u"1405da04"_s}));
    EXPECT_EQ(entry.toc, kDisc);
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
        DiscEntry entry = Parsed(QByteArray(kForeign).replace("\n", lineEnd));
        ExpectForeign(entry);
        entry.tracks[0].title = u"ä\n\\😀"_s.repeated(60); // in several lines
        const DiscEntry again = Parsed(DiscText::Encode(entry));
        ExpectForeign(again);
        EXPECT_EQ(again.tracks, entry.tracks);
    }
    for (const char* text : {"", "DISCID=0200c801\n", "# xmcd\n", "# xmcd\nDISCID=xyz\n"})
        EXPECT_FALSE(DiscText::Parse(text)) << text;
}

TEST(DiscEntryTest, BothEncodingsAreReadAlike) {
    const QString text = u"# xmcd\nDISCID=0200c801\nDTITLE=Männer / Größe\n"_s;
    for (const QByteArray& bytes : {text.toLatin1(), text.toUtf8(), "\xEF\xBB\xBF" + text.toUtf8()}) {
        const DiscEntry entry = Parsed(bytes);
        EXPECT_EQ(entry.artist + u'|' + entry.title, u"Männer|Größe"_s);
    }
    // A character cut between two lines, as writers that count bytes do.
    EXPECT_EQ(Parsed("# xmcd\nDISCID=0200c801\nDTITLE=M\xC3\nDTITLE=\xA4nner\n").title, u"Männer"_s);
}

struct DiscFolderTest : ::testing::Test {
    QString Folder() const { return folder.Path(u"CdArchiv"_s); }
    QStringList Files() const { return QDir(Folder()).entryList(QDir::Files, QDir::Name); }
    QString Title(const DiscToc& toc) const {
        const auto entry = discs.Read(Folder(), toc);
        return entry ? entry->title : QString();
    }
    bool Write(const DiscToc& toc, const char* title) const {
        DiscEntry entry = discs.Read(Folder(), toc).value_or(DiscEntry());
        entry.artist = u"Band"_s;
        entry.title = QString::fromUtf8(title);
        return discs.Write(Folder(), toc, entry);
    }

    test::TestFolder folder;
    SystemClock clock;
    DiscFolder discs{clock};
};

TEST_F(DiscFolderTest, EntriesAreReplacedAndDiscsWithTheSameIdDoNotMeet) {
    ASSERT_EQ(kTwin.DiscId(), kId);
    EXPECT_TRUE(Write(kDisc, "Eins"));
    EXPECT_EQ(Title(kTwin), QString());
    EXPECT_TRUE(Write(kTwin, "Zwei"));
    EXPECT_TRUE(Write(kDisc, "Größer"));
    EXPECT_EQ(Title(kDisc) + Title(kTwin), u"GrößerZwei"_s);
    EXPECT_EQ(Files(), (QStringList{kId, kId + u"-2"_s}));
}

TEST_F(DiscFolderTest, EntriesWithoutATableAndInGenreFoldersAreFound) {
    folder.Write(u"CdArchiv/rock/1405da03"_s, "# xmcd\nDISCID=1405da03\nDTITLE=Band / Rock\nXEXTRA=bleibt\n");
    EXPECT_EQ(Title(kDisc), u"Rock"_s);
    EXPECT_TRUE(Write(kDisc, "Neu"));
    EXPECT_EQ(Files(), QStringList()) << "it is replaced where it lies";
    EXPECT_TRUE(folder.Read(u"CdArchiv/rock/1405da03"_s).contains("XEXTRA=bleibt"));
}

TEST_F(DiscFolderTest, AFileThatIsNoEntryIsSetAside) {
    folder.Write(u"CdArchiv/1405da03"_s, "etwas anderes");
    EXPECT_TRUE(Write(kDisc, "Eins"));
    ASSERT_EQ(Files().size(), 2);
    EXPECT_EQ(folder.Read(u"CdArchiv/"_s + Files().last()), "etwas anderes");
}

TEST_F(DiscFolderTest, TheModuleIsLoadedFromBesideTheProgram) {
    DiscModule module(qEnvironmentVariable("KALVO_BIN"));
    const auto loaded = module.Create();
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(VersionText(loaded->GetVersion()), u"2.0"_s);
    EXPECT_TRUE(loaded->Write(Folder(), kDisc, DiscEntry()));
    EXPECT_TRUE(loaded->Read(Folder(), kDisc));
}

} // namespace
} // namespace kalvo
