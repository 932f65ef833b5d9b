#include "tags/DiscFolder.h"

#include "support/TestFolder.h"
#include "tags/DiscModule.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

const DiscToc kDisc{{150, 7350, 75000}, 112500};
const DiscToc kTwin{{150, 7350, 75010}, 112500}; // another disc with the same id
const QString kId = u"1405da03"_s;

class DiscFolderTest : public ::testing::Test {
protected:
    QString Folder() const { return folder_.Path(u"CdArchiv"_s); }
    QStringList Files() const { return QDir(Folder()).entryList(QDir::Files, QDir::Name); }
    QString Title(const DiscToc& toc) const {
        const auto entry = discs_.Read(Folder(), toc);
        return entry ? entry->title : QString();
    }
    bool Write(const DiscToc& toc, const char* title) const {
        DiscEntry entry = discs_.Read(Folder(), toc).value_or(DiscEntry());
        entry.artist = u"Band"_s;
        entry.title = QString::fromUtf8(title);
        return discs_.Write(Folder(), toc, entry);
    }

    test::TestFolder folder_;
    SystemClock clock_;
    DiscFolder discs_{clock_};
};

TEST_F(DiscFolderTest, AnEntryIsAddedReadAndReplaced) {
    EXPECT_FALSE(discs_.Read(Folder(), kDisc));
    EXPECT_TRUE(Write(kDisc, "Eins"));
    EXPECT_EQ(Title(kDisc), u"Eins"_s);
    EXPECT_TRUE(Write(kDisc, "Größer"));
    EXPECT_EQ(Title(kDisc), u"Größer"_s);
    EXPECT_EQ(Files(), QStringList{kId});
    const auto entry = discs_.Read(Folder(), kDisc);
    EXPECT_EQ(entry->toc, kDisc);
    EXPECT_EQ(entry->discIds, QStringList{kId});
}

TEST_F(DiscFolderTest, DiscsWithTheSameIdDoNotMeet) {
    ASSERT_EQ(kTwin.DiscId(), kId);
    EXPECT_TRUE(Write(kDisc, "Eins"));
    EXPECT_EQ(Title(kTwin), QString());
    EXPECT_TRUE(Write(kTwin, "Zwei"));
    EXPECT_EQ(Files(), (QStringList{kId, kId + u"-2"_s}));
    EXPECT_TRUE(Write(kDisc, "Drei"));
    EXPECT_EQ(Title(kDisc) + Title(kTwin), u"DreiZwei"_s);
}

TEST_F(DiscFolderTest, EntriesWithoutATableAndInGenreFoldersAreFound) {
    folder_.Write(u"CdArchiv/rock/1405da03"_s, "# xmcd\nDISCID=1405da03\nDTITLE=Band / Rock\nXEXTRA=bleibt\n");
    EXPECT_EQ(Title(kDisc), u"Rock"_s);
    EXPECT_TRUE(Write(kDisc, "Neu"));
    EXPECT_EQ(Files(), QStringList()) << "it is replaced where it lies";
    EXPECT_TRUE(folder_.Read(u"CdArchiv/rock/1405da03"_s).contains("XEXTRA=bleibt"));
    EXPECT_EQ(Title(kTwin), QString()) << "the entry has become the first disc's";
}

TEST_F(DiscFolderTest, AFileThatIsNoEntryIsSetAside) {
    folder_.Write(u"CdArchiv/1405da03"_s, "etwas anderes");
    EXPECT_EQ(Title(kDisc), QString());
    EXPECT_TRUE(Write(kDisc, "Eins"));
    ASSERT_EQ(Files().size(), 2);
    EXPECT_TRUE(Files().last().startsWith(u"1405da03.defekt-"_s));
    EXPECT_EQ(folder_.Read(u"CdArchiv/"_s + Files().last()), "etwas anderes");
}

TEST_F(DiscFolderTest, WhatCannotBeWrittenIsTold) {
    EXPECT_FALSE(discs_.Write(Folder(), DiscToc(), DiscEntry()));
    EXPECT_FALSE(QFile::exists(Folder()));
    folder_.Write(u"CdArchiv"_s, "eine Datei");
    EXPECT_FALSE(Write(kDisc, "Eins"));
    EXPECT_EQ(folder_.Read(u"CdArchiv"_s), "eine Datei");
}

TEST_F(DiscFolderTest, TheModuleIsLoadedFromBesideTheProgram) {
    DiscModule module(qEnvironmentVariable("KALVO_BIN"));
    const auto discs = module.Create();
    ASSERT_NE(discs, nullptr);
    EXPECT_EQ(VersionText(discs->GetVersion()), u"2.0"_s);
    EXPECT_EQ(discs->DiscId(kDisc), kId);
    EXPECT_TRUE(discs->Write(Folder(), kDisc, DiscEntry()));
    EXPECT_TRUE(discs->Read(Folder(), kDisc));
}

} // namespace
} // namespace kalvo
