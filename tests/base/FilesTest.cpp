#include "base/AtomicFile.h"
#include "base/DataFolder.h"
#include "base/FileName.h"
#include "base/ModuleFile.h"
#include "base/SetAside.h"
#include "support/TestFolder.h"

#include <QDir>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(AtomicFile, ReplacesWholeAndLeavesNothingBeside) {
    const test::TestFolder folder;
    const QString path = folder.Write(u"a"_s, "old and longer");
    ASSERT_TRUE(QFile::link(path, folder.Path(u"link"_s)));
    EXPECT_TRUE(WriteAtomically(folder.Path(u"link"_s), "new"));
    EXPECT_TRUE(QFileInfo(folder.Path(u"link"_s)).isSymLink());
    EXPECT_FALSE(WriteAtomically(folder.Path(u"fehlt/a"_s), "x"));
    EXPECT_FALSE(WriteAtomically(folder.Path(), "x")) << "a folder";
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit nothing{0, limit.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &nothing); // as on a full disk
    EXPECT_FALSE(WriteAtomically(path, "lost"));
    ::setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(folder.Read(u"a"_s), QByteArray("new"));
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files).size(), 2);
}

TEST(DataFolder, JoinsGivenNames) {
    const DataFolder data(u"/d/Kalvo"_s);
    EXPECT_EQ(data.Path(u"\\Musikarchiv\\default.mav"_s), u"/d/Kalvo/Musikarchiv/default.mav"_s);
    EXPECT_EQ(data.Path(u"\\sample\\x.wav"_s), u"/d/Kalvo/Sample/x.wav"_s);
    EXPECT_EQ(data.Path(u"\\Sample\\"_s), u"/d/Kalvo/Sample/"_s);
    EXPECT_EQ(data.Path(u"\\sample.dll"_s), u"/d/Kalvo/sample.dll"_s);
    EXPECT_EQ(data.Path(u"kalvo.ini"_s), u"/d/Kalvo/kalvo.ini"_s);
    EXPECT_EQ(data.Path({}), u"/d/Kalvo"_s);
}

TEST(FileName, SplitsAtEitherSeparator) {
    EXPECT_EQ(FileName::Last(u"D:\\x/y\\a.mp3"_s), u"a.mp3"_s);
    EXPECT_EQ(FileName::Folder(u"D:\\x/y\\a.mp3"_s), u"D:\\x/y\\"_s);
    EXPECT_EQ(FileName::Last(u"a"_s), u"a"_s);
    EXPECT_TRUE(FileName::Folder(u"a"_s).isEmpty());
    EXPECT_TRUE(FileName::IsMusic(u"/x/A.Mp3"_s));
    EXPECT_FALSE(FileName::IsMusic(u"/x/a.mp3.txt"_s));
    EXPECT_EQ(FileName::WithoutMusicExtension(u"a.b.OGG"_s), u"a.b"_s);
    EXPECT_EQ(FileName::WithoutMusicExtension(u"a.wav"_s), u"a.wav"_s);
}

TEST(SetAside, KeepsEveryDamagedFile) {
    struct FixedClock final : Clock {
        QDateTime Now() const override { return QDateTime(QDate(2026, 3, 7), QTime(4, 5, 6)); }
        qint64 Milliseconds() const override { return 0; }
    };
    const test::TestFolder folder;
    const FixedClock clock;
    const QStringList companions = {u"-wal"_s, u"-shm"_s};
    const QString path = folder.Write(u"default.mav"_s, "1");
    folder.Write(u"default.mav-wal"_s, "w");
    EXPECT_EQ(SetAside(path, clock, companions), path + u".defekt-20260307-040506"_s);
    EXPECT_EQ(folder.Read(u"default.mav.defekt-20260307-040506-wal"_s), QByteArray("w"));
    EXPECT_FALSE(QFile::exists(path) || QFile::exists(path + u"-wal"_s));
    folder.Write(u"default.mav"_s, "2");
    EXPECT_EQ(SetAside(path, clock, companions), path + u".defekt-20260307-040506-2"_s);
    EXPECT_EQ(folder.Read(u"default.mav.defekt-20260307-040506"_s), QByteArray("1"));
    EXPECT_TRUE(SetAside(path, clock, companions).isEmpty()) << "nothing there any more";
}

TEST(ModuleFileTest, WhatIsNoModuleGivesNothing) {
    // The test program itself has the form of one.
    QFile self(u"/proc/self/exe"_s);
    ASSERT_TRUE(self.open(QIODevice::ReadOnly));
    const QByteArray whole = self.readAll();
    const test::TestFolder folder;
    folder.Write(u"ganz.dll"_s, whole);
    EXPECT_TRUE(IsWholeModule(folder.Path(u"ganz.dll"_s)));
    for (const QByteArray& bytes : {QByteArray(), QByteArray("MZ keines"), whole.left(64), whole.left(whole.size() / 2),
                                    whole.chopped(1), QByteArray(whole.size(), '\0')}) {
        EXPECT_FALSE(IsWholeModule(folder.Write(u"kaputt.dll"_s, bytes))) << bytes.size();
        EXPECT_EQ(ModuleFile<QObject>(folder.Path(), u"kaputt.dll"_s, "CreateNothing").Create(), nullptr);
    }
    EXPECT_FALSE(IsWholeModule(folder.Path(u"fehlt.dll"_s)));
    EXPECT_FALSE(IsWholeModule(folder.Path()));
}

} // namespace
} // namespace kalvo
