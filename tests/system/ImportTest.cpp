#include "archive/SqliteDatabase.h"
#include "support/SoundMaker.h"
#include "system/DrivenProgram.h"

#include <QFile>

#include <map>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

struct ImportCase {
    const char* made; ///< the encoder goes by its ending
    const char* name;
    const char* options;
    const char* title;
    double seconds;
    const char* time;
    int coverBytes = 0;
};

constexpr const char* kUmlauts = "Grüße aus Köln";
const ImportCase kCases[] = {{"1.mp3", "CBR/Mädchen's Lied.mp3", "-b 128", kUmlauts, 7.4, "00:07"},
                             {"2.mp3", "VBR.mp3", "-V 4", kUmlauts, 61.6, "01:02"},
                             {"3.mp3", "ohne Xing.MP3", "-V 4 -t", "Ohne", 12.6, "00:13"},
                             {"4.mp3", "Bild.mp3", "", kUmlauts, 5, "00:05", 100'000},
                             {"5.mp3", "nur ID3v1.mp3", "--id3v1-only", "Zwei Wochen ohne einen Regentag", 5, "00:05"},
                             {"6.ogg", "tief/tiefer/Vorbis.ogg", "", kUmlauts, 9.6, "00:10"},
                             {"7.ogg", "ohne alles.ogg", "", "", 3, "00:03"},
                             {"8.opus", "Opus.ogg", "", kUmlauts, 4, "00:04"}};

ProgramResult ImportFolder(const TestFolder& folder, const QString& music) {
    return RunProgram({u"--datenordner"_s, folder.Path(u"Kalvo"_s), u"--geraet"_s, u"0"_s, u"--einlesen"_s, music});
}

TEST(Import, TakesEveryKindOfFileOnceWithTitleAndTime) {
    const TestFolder folder;
    const QString music = folder.Path(u"Müller's Musik"_s);
    for (const ImportCase& c : kCases) {
        const SoundSpec sound{.seconds = c.seconds,
                              .options = QString::fromLatin1(c.options).split(u' ', Qt::SkipEmptyParts),
                              .title = QString::fromUtf8(c.title),
                              .coverBytes = c.coverBytes};
        const QString made = MakeSound(folder.Path(), QLatin1String(c.made), sound);
        const QString wanted = folder.Write(u"Müller's Musik/"_s + QString::fromUtf8(c.name), {});
        ASSERT_TRUE(QFile::remove(wanted) && QFile::rename(made, wanted));
    }
    folder.Write(u"Müller's Musik/notizen.mp3.bak"_s, "kein Titel");
    MakeSound(music, u"welle.wav"_s);
    for (const int added : {8, 0}) {
        const ProgramResult result = ImportFolder(folder, music);
        EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
        EXPECT_TRUE(result.output.contains(
            u"%1 von 8 Songs hinzugefügt, %2 Titel waren bereits vorhanden"_s.arg(added).arg(8 - added)))
            << result.output.toStdString();
    }
    SqliteDatabase database;
    ASSERT_EQ(database.Open(folder.Path(u"Kalvo/Musikarchiv/default.mav"_s), SqliteDatabase::Mode::ReadOnly),
              SqliteDatabase::Outcome::Opened);
    SqliteStatement rows = database.Prepare(u"SELECT Pfad, Titel, Zeit FROM Daten"_s);
    std::map<QString, std::pair<QString, QString>> imported; // title and time
    while (rows.Step())
        imported[rows.Text(0).mid(music.size() + 1)] = {rows.Text(1), rows.Text(2)};
    EXPECT_EQ(imported.size(), 8U);
    for (const ImportCase& c : kCases) {
        const QString name = QString::fromUtf8(c.name);
        const auto& [title, time] = imported[name];
        EXPECT_EQ(title, QString::fromUtf8(c.title).left(name.contains(u"ID3v1"_s) ? 30 : 200)) << c.name;
        EXPECT_EQ(time, QLatin1String(c.time)) << c.name;
    }
}

TEST(Import, AFolderThatIsNotThereIsToldAndNothingIsWritten) {
    const TestFolder folder;
    const ProgramResult result = ImportFolder(folder, folder.Path(u"fehlt"_s));
    EXPECT_GT(result.exitCode, 0);
    EXPECT_TRUE((result.output + result.errors).contains(u"Kein gültiger Ordner!"_s));
}

} // namespace
} // namespace kalvo::test
