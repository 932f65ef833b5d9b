#include "archive/FolderScan.h"

#include "archive/ui/ArchiveDesk.h"

#include <filesystem>
#include <fstream>

namespace kalvo::test {
namespace {

class FolderScanTest : public ::testing::TestWithParam<ScanMethod> {
protected:
    QStringList Names(const ScanResult& result) const {
        QStringList names;
        for (const QString& path : result.files)
            names << path.mid(folder.Path().size() + 1);
        return names;
    }

    void Link(const QString& target, const QString& name) const {
        std::filesystem::create_directory_symlink(target.toStdString(), folder.Path(name).toStdString());
    }

    ScanResult Scan() const { return ScanFolder(folder.Path(), GetParam()); }

    TestFolder folder;
};

TEST_P(FolderScanTest, TakesMusicFilesDepthFirst) {
    for (const QString& name : {u"b.mp3"_s, u"SONG.MP3"_s, u"song.mp3.bak"_s, u"song.wav"_s, u"Ä/x.Ogg"_s, u"B/y.mp3"_s,
                                u"B/C/z.ogg"_s, u"B/a.mp3"_s, u"A/mp3"_s, u"A/.mp3"_s})
        folder.Write(name, "x");
    std::filesystem::create_directory(folder.Path(u"folder.mp3"_s).toStdString());
    const ScanResult result = Scan();
    EXPECT_TRUE(result.validRoot);
    EXPECT_EQ(Names(result), QStringList({u"SONG.MP3"_s, u"b.mp3"_s, u"A/.mp3"_s, u"B/a.mp3"_s, u"B/y.mp3"_s,
                                          u"B/C/z.ogg"_s, u"Ä/x.Ogg"_s}));
    EXPECT_TRUE(result.passedOver.isEmpty());
}

TEST_P(FolderScanTest, FollowsLinksOnceAndNeverBack) {
    TestFolder outside;
    outside.Write(u"o.mp3"_s, "x");
    folder.Write(u"A/a.mp3"_s, "x");
    Link(folder.Path(), u"A/up"_s);
    Link(folder.Path(u"A"_s), u"again"_s);
    Link(outside.Path(), u"first"_s);
    Link(outside.Path(), u"second"_s);
    Link(u"/nowhere/at/all"_s, u"broken"_s);
    std::filesystem::create_directory_symlink(folder.Path().toStdString(), outside.Path(u"back"_s).toStdString());
    EXPECT_EQ(Names(Scan()), QStringList({u"A/a.mp3"_s, u"first/o.mp3"_s}));
}

TEST_P(FolderScanTest, RefusesNamesThatAreNoText) {
    folder.Write(u"good.mp3"_s, "x");
    const std::string bad = folder.Path().toStdString() + "/bad\xE4.mp3";
    ASSERT_TRUE(std::ofstream(bad).put('x'));
    const ScanResult result = Scan();
    std::filesystem::remove(bad);
    EXPECT_EQ(Names(result), QStringList{u"good.mp3"_s});
    ASSERT_EQ(result.passedOver.size(), 1);
    EXPECT_EQ(result.passedOver.at(0).reason, u"Der Dateiname ist kein gültiger Text."_s);
}

TEST_P(FolderScanTest, TellsProgressAndCanBeCancelled) {
    for (int i = 0; i < 5; ++i)
        folder.Write(u"%1/a.mp3"_s.arg(i), "x");
    QStringList seen;
    const ScanResult whole = ScanFolder(folder.Path(), GetParam(), [&](const ScanProgress& progress) {
        seen << progress.folder;
        return true;
    });
    EXPECT_EQ(whole.files.size(), 5);
    EXPECT_EQ(seen.count(folder.Path(u"3"_s)), GetParam() == ScanMethod::Standard ? 1 : 2);
    const ScanResult cancelled =
        ScanFolder(folder.Path(), GetParam(), [](const ScanProgress& progress) { return progress.folders < 3; });
    EXPECT_TRUE(cancelled.cancelled);
    EXPECT_LT(cancelled.files.size(), 5);
}

INSTANTIATE_TEST_SUITE_P(BothMethods, FolderScanTest, ::testing::Values(ScanMethod::Standard, ScanMethod::Alternative));

} // namespace
} // namespace kalvo::test
