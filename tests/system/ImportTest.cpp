#include "archive/SqliteDatabase.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "system/Program.h"

#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

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

void Make(const TestFolder& folder, const ImportCase& c) {
    SoundSpec sound;
    sound.seconds = c.seconds;
    sound.title = QString::fromUtf8(c.title);
    sound.options = QString::fromLatin1(c.options).split(u' ', Qt::SkipEmptyParts);
    sound.coverBytes = c.coverBytes;
    const QString made = MakeSound(folder.Path(), QLatin1String(c.made), sound);
    const QString wanted = folder.Write(u"Müller's Musik/"_s + QString::fromUtf8(c.name), {});
    ASSERT_TRUE(QFile::remove(wanted) && QFile::rename(made, wanted));
}

TEST(Import, TakesEveryKindOfFileOnceWithTitleAndTime) {
    const TestFolder folder;
    for (const ImportCase& c : kCases)
        Make(folder, c);
    const QString music = folder.Path(u"Müller's Musik"_s);
    folder.Write(u"Müller's Musik/notizen.mp3.bak"_s, "kein Titel");
    MakeSound(music, u"welle.wav"_s);
    for (const int added : {8, 0}) {
        const ProgramResult result =
            RunProgram({u"--datenordner"_s, folder.Path(u"Kalvo"_s), u"--geraet"_s, u"0"_s, u"--einlesen"_s, music});
        EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
        EXPECT_TRUE(result.output.contains(
            u"%1 von 8 Songs hinzugefügt, %2 Titel waren bereits vorhanden"_s.arg(added).arg(8 - added)))
            << result.output.toStdString();
    }
    SqliteDatabase database;
    ASSERT_EQ(database.Open(folder.Path(u"Kalvo/Musikarchiv/default.mav"_s), SqliteDatabase::Mode::ReadOnly),
              SqliteDatabase::Outcome::Opened);
    SqliteStatement rows = database.Prepare(u"SELECT Pfad, Titel, Zeit FROM Daten"_s);
    int count = 0;
    for (; rows.Step(); ++count) {
        const QString name = rows.Text(0).mid(music.size() + 1);
        const auto* const c = std::find_if(std::begin(kCases), std::end(kCases), [&name](const ImportCase& one) {
            return name == QString::fromUtf8(one.name);
        });
        ASSERT_NE(c, std::end(kCases)) << name.toStdString();
        EXPECT_EQ(rows.Text(1), QString::fromUtf8(c->title).left(name.contains(u"ID3v1"_s) ? 30 : 200)) << c->name;
        EXPECT_EQ(rows.Text(2), QLatin1String(c->time)) << c->name;
    }
    EXPECT_EQ(count, 8);
}

TEST(Import, AFolderThatIsNotThereIsToldAndNothingIsWritten) {
    const TestFolder folder;
    const ProgramResult result = RunProgram(
        {u"--datenordner"_s, folder.Path(u"Kalvo"_s), u"--geraet"_s, u"0"_s, u"--einlesen"_s, folder.Path(u"fehlt"_s)});
    EXPECT_GT(result.exitCode, 0);
    EXPECT_TRUE((result.output + result.errors).contains(u"Kein gültiger Ordner!"_s));
}

} // namespace
} // namespace kalvo::test
