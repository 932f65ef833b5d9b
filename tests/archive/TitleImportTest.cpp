#include "archive/TitleImport.h"

#include "archive/TestClock.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

class TitleImportTest : public ::testing::Test {
protected:
    TitleImportTest() {
        EXPECT_TRUE(data.CreateAll());
        EXPECT_TRUE(archive.Open(data));
        EXPECT_TRUE(archive.WaitForIndex());
    }

    QString Make(const QString& name, const QString& title = {}) const {
        SoundSpec spec;
        spec.seconds = 0.6;
        spec.title = title;
        spec.artist = title.isEmpty() ? QString() : u"Künstler"_s;
        return MakeSound(folder.Path(u"musik"_s), name, spec);
    }

    QStringList Titles() {
        archive.SetRecordSource(u"Select * From Daten Order By Nr"_s);
        QStringList titles;
        for (int row = 0; row < archive.RowCount(); ++row)
            titles << archive.RowAt(row).Titel;
        return titles;
    }

    TestFolder folder;
    DataFolder data{folder.Path(u"Kalvo"_s)};
    TestClock clock;
    Archive archive{clock};
    TitleImport import{archive};
};

} // namespace

TEST_F(TitleImportTest, AddsInTheOrderOfTheListAndOnlyOnce) {
    const QStringList paths = {Make(u"c.mp3"_s, u"Drei"_s), Make(u"a.ogg"_s, u"Eins"_s), Make(u"b'.mp3"_s, u"Zwei"_s)};
    EXPECT_EQ(import.Run(paths).Text(), u"3 von 3 Songs hinzugefügt, 0 Titel waren bereits vorhanden"_s);
    EXPECT_EQ(Titles(), QStringList({u"Drei"_s, u"Eins"_s, u"Zwei"_s}));
    EXPECT_EQ(archive.RowAt(0).Zeit, u"00:01"_s);
    EXPECT_EQ(archive.RowAt(0).Interpret, u"Künstler"_s);
    EXPECT_EQ(archive.RowAt(1).Pfad, paths.at(1));
    EXPECT_EQ(import.Run(paths + paths).Text(), u"0 von 6 Songs hinzugefügt, 6 Titel waren bereits vorhanden"_s);
    EXPECT_EQ(archive.Count(), 3);
}

TEST_F(TitleImportTest, AFileNamedTwiceIsTakenOnce) {
    const QString path = Make(u"a.mp3"_s);
    const ImportReport report = import.Run({path, path});
    EXPECT_EQ(report.added, 1);
    EXPECT_EQ(report.present, 1);
    EXPECT_EQ(Titles(), QStringList{QString()});
    EXPECT_EQ(archive.RowAt(0).Zeit, u"00:01"_s);
}

TEST_F(TitleImportTest, GoesOnAfterFilesItCannotTake) {
    const QString broken = folder.Write(u"musik/broken.mp3"_s, "no sound at all");
    const QString missing = folder.Path(u"musik/missing.mp3"_s);
    const QString good = Make(u"good.mp3"_s, u"Gut"_s);
    const QString deep = folder.Path(QString(190, u'd') + u"/long.mp3"_s);
    QDir().mkpath(QFileInfo(deep).path());
    ASSERT_TRUE(QFile::copy(good, deep));
    const ImportReport report = import.Run({broken, missing, deep, good});
    EXPECT_EQ(report.added, 1);
    ASSERT_EQ(report.passedOver.size(), 3);
    EXPECT_EQ(report.passedOver.at(0).path, broken);
    EXPECT_EQ(report.passedOver.at(0).reason, u"Die Datei enthält keinen lesbaren Ton."_s);
    EXPECT_EQ(report.passedOver.at(1).reason, u"Die Datei kann nicht gelesen werden."_s);
    EXPECT_EQ(report.passedOver.at(2).reason, u"Der Pfad ist länger als 200 Zeichen."_s);
}

TEST_F(TitleImportTest, CutsLongTextsAndKeepsThemInOneLine) {
    const QString path = Make(u"a.mp3"_s, u"eins\r\nzwei"_s + QString(230, u'ä'));
    EXPECT_EQ(import.Run({path}).added, 1);
    EXPECT_EQ(Titles(), QStringList{u"eins  zwei"_s + QString(190, u'ä')});
}

TEST_F(TitleImportTest, TellsEveryFileFromTheEventLoop) {
    QStringList paths;
    const QString made = Make(u"made.mp3"_s, u"Titel"_s);
    for (int i = 0; i < 40; ++i) {
        paths << folder.Path(u"musik/%1.mp3"_s.arg(i));
        ASSERT_TRUE(QFile::copy(made, paths.last()));
    }
    QStringList seen;
    std::optional<ImportReport> report;
    QObject::connect(&import, &TitleImport::Progress, [&](const ImportProgress& progress) {
        seen << progress.path;
        EXPECT_EQ(progress.done, seen.size());
        EXPECT_EQ(progress.marked, 40);
    });
    QObject::connect(&import, &TitleImport::Finished, [&](const ImportReport& done) { report = done; });
    import.Start(paths);
    EXPECT_TRUE(import.IsRunning());
    ASSERT_TRUE(WaitUntil([&] { return report.has_value(); }));
    EXPECT_EQ(seen, paths);
    EXPECT_EQ(report->added, 40);
    EXPECT_FALSE(import.IsRunning());
}

TEST_F(TitleImportTest, ACancelKeepsWhatWasAdded) {
    QStringList paths;
    const QString made = Make(u"made.mp3"_s, u"Titel"_s);
    for (int i = 0; i < 60; ++i) {
        paths << folder.Path(u"musik/%1.mp3"_s.arg(i));
        ASSERT_TRUE(QFile::copy(made, paths.last()));
    }
    std::optional<ImportReport> report;
    QObject::connect(&import, &TitleImport::Progress, [&](const ImportProgress& progress) {
        if (progress.done == 7)
            import.Cancel();
    });
    QObject::connect(&import, &TitleImport::Finished, [&](const ImportReport& done) { report = done; });
    import.Start(paths);
    ASSERT_TRUE(WaitUntil([&] { return report.has_value(); }));
    EXPECT_TRUE(report->cancelled);
    EXPECT_EQ(report->added, 7);
    Archive reopened(clock);
    ASSERT_TRUE(reopened.Open(data));
    EXPECT_EQ(reopened.Count(), 7);
}

} // namespace kalvo::test
