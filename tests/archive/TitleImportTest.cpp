#include "archive/TitleImport.h"

#include "archive/ui/ArchiveDesk.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>

namespace kalvo::test {
namespace {

class TitleImportTest : public ::testing::Test, protected ArchiveDesk {
protected:
    QString Make(const QString& name, const QString& title = {}) const {
        const QString artist = title.isEmpty() ? QString() : u"Künstler"_s;
        return MakeSound(folder.Path(u"musik"_s), name, {.seconds = 0.6, .title = title, .artist = artist});
    }

    QStringList Titles() {
        archive.SetRecordSource(u"Select * From Daten Order By Nr"_s);
        QStringList titles;
        for (int row = 0; row < archive.RowCount(); ++row)
            titles << archive.RowAt(row).Titel;
        return titles;
    }

    TitleImport import{archive};
};

TEST_F(TitleImportTest, AddsInTheOrderOfTheListAndOnlyOnce) {
    const QStringList paths = {Make(u"c.mp3"_s, u"Drei"_s), Make(u"a.ogg"_s, u"Eins"_s), Make(u"b'.mp3"_s, u"Zwei"_s),
                               Make(u"d.mp3"_s)};
    EXPECT_EQ(import.Run(paths + paths).Text(), u"4 von 8 Songs hinzugefügt, 4 Titel waren bereits vorhanden"_s);
    EXPECT_EQ(Titles(), QStringList({u"Drei"_s, u"Eins"_s, u"Zwei"_s, QString()}));
    EXPECT_EQ(archive.RowAt(0).Zeit + archive.RowAt(3).Zeit, u"00:0100:01"_s);
    EXPECT_EQ(archive.RowAt(0).Interpret, u"Künstler"_s);
    EXPECT_EQ(archive.RowAt(1).Pfad, paths.at(1));
    EXPECT_EQ(import.Run(paths).Text(), u"0 von 4 Songs hinzugefügt, 4 Titel waren bereits vorhanden"_s);
    EXPECT_EQ(archive.Count(), 4);
}

TEST_F(TitleImportTest, GoesOnAfterFilesItCannotTake) {
    const QString broken = folder.Write(u"musik/broken.mp3"_s, "no sound at all");
    const QString missing = folder.Path(u"musik/missing.mp3"_s);
    const QString good = Make(u"good.mp3"_s, u"Gut"_s);
    const QString deep = folder.Path(QString(190, u'd') + u"/long.mp3"_s);
    QDir().mkpath(QFileInfo(deep).path());
    ASSERT_TRUE(QFile::copy(good, deep));
    const ImportReport done = import.Run({broken, missing, deep, good});
    EXPECT_EQ(done.added, 1);
    ASSERT_EQ(done.passedOver.size(), 3);
    EXPECT_EQ(done.passedOver.at(0).path, broken);
    EXPECT_EQ(done.passedOver.at(0).reason, u"Die Datei enthält keinen lesbaren Ton."_s);
    EXPECT_EQ(done.passedOver.at(1).reason, u"Die Datei kann nicht gelesen werden."_s);
    EXPECT_EQ(done.passedOver.at(2).reason, u"Der Pfad ist länger als 200 Zeichen."_s);
}

TEST_F(TitleImportTest, CutsLongTextsAndKeepsThemInOneLine) {
    const QString path = Make(u"a.mp3"_s, u"eins\r\nzwei"_s + QString(230, u'ä'));
    EXPECT_EQ(import.Run({path}).added, 1);
    EXPECT_EQ(Titles(), QStringList{u"eins  zwei"_s + QString(190, u'ä')});
}

TEST_F(TitleImportTest, TellsEveryFileFromTheEventLoopAndACancelKeepsWhatWasAdded) {
    constexpr int files = 60;
    const QString made = Make(u"made.mp3"_s, u"Titel"_s);
    QStringList paths, seen;
    for (int i = 0; i < files; ++i) {
        paths << folder.Path(u"musik/%1.mp3"_s.arg(i));
        EXPECT_TRUE(QFile::copy(made, paths.last()));
    }
    std::optional<ImportReport> report;
    QObject::connect(&import, &TitleImport::Finished, [&](const ImportReport& done) { report = done; });
    QObject::connect(&import, &TitleImport::Progress, [&](const ImportProgress& progress) {
        seen << progress.path;
        EXPECT_EQ(progress.done, seen.size());
        EXPECT_EQ(progress.marked, files);
        if (progress.done == 7)
            import.Cancel();
    });
    import.Start(paths);
    EXPECT_TRUE(import.IsRunning());
    ASSERT_TRUE(WaitUntil([&] { return report.has_value(); }));
    EXPECT_FALSE(import.IsRunning());
    EXPECT_EQ(seen, paths.first(7));
    EXPECT_TRUE(report->cancelled);
    EXPECT_EQ(report->added, 7);
    Archive reopened(clock);
    ASSERT_TRUE(reopened.Open(data));
    EXPECT_EQ(reopened.Count(), 7);
}

} // namespace
} // namespace kalvo::test
