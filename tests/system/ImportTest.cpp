#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "system/Program.h"

#include <QFile>
#include <QMap>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

struct ImportCase {
    QString name;
    QStringList options;
    QString title;
    QString expectedTitle;
    double seconds;
    QString expectedTime;
    int coverBytes = 0;
};

QList<ImportCase> Cases() {
    const QString umlauts = u"Grüße aus Köln"_s;
    return {
        {u"CBR/Mädchen's Lied.mp3"_s, {u"-b"_s, u"128"_s}, umlauts, umlauts, 7.4, u"00:07"_s},
        {u"VBR.mp3"_s, {u"-V"_s, u"4"_s}, umlauts, umlauts, 61.6, u"01:02"_s},
        {u"ohne Xing.MP3"_s, {u"-V"_s, u"4"_s, u"-t"_s}, u"Ohne"_s, u"Ohne"_s, 12.6, u"00:13"_s},
        {u"Bild.mp3"_s, {}, umlauts, umlauts, 5, u"00:05"_s, 100'000},
        {u"nur ID3v1.mp3"_s,
         {u"--id3v1-only"_s},
         u"Zwei Wochen ohne einen Regentag"_s,
         u"Zwei Wochen ohne einen Regenta"_s,
         5,
         u"00:05"_s},
        {u"tief/tiefer/Vorbis.ogg"_s, {}, umlauts, umlauts, 9.6, u"00:10"_s},
        {u"ohne alles.ogg"_s, {}, QString(), QString(), 3, u"00:03"_s},
        {u"Opus.ogg"_s, {}, umlauts, umlauts, 4, u"00:04"_s},
    };
}

/** Makes the case's file; Opus is chosen by the name and then gets the ending that the archive takes. */
void Make(const QString& folder, const ImportCase& c) {
    SoundSpec sound;
    sound.seconds = c.seconds;
    sound.title = c.title;
    sound.options = c.options;
    sound.coverBytes = c.coverBytes;
    const bool isOpus = c.name.startsWith(u"Opus"_s);
    const QString made = isOpus ? u"roh.opus"_s : QString(c.name).replace(u".MP3"_s, u".mp3"_s);
    const QString path = MakeSound(folder, made, sound);
    const QString wanted = folder + QLatin1Char('/') + c.name;
    ASSERT_TRUE(path == wanted || QFile::rename(path, wanted));
}

struct Row {
    QString title;
    QString time;
};

/** The rows of the archive by path. */
QMap<QString, Row> ArchiveRows(const QString& file) {
    QMap<QString, Row> rows;
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_open_v2(file.toUtf8().constData(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(database, "SELECT Pfad, Titel, Zeit FROM Daten", -1, &statement, nullptr), SQLITE_OK);
    const auto text = [&statement](int column) {
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
    };
    while (sqlite3_step(statement) == SQLITE_ROW)
        rows.insert(text(0), {text(1), text(2)});
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return rows;
}

TEST(Import, TakesEveryKindOfFileOnceWithTitleAndTime) {
    const TestFolder folder;
    const QString music = folder.Path(u"Müller's Musik"_s);
    for (const ImportCase& c : Cases())
        Make(music, c);
    folder.Write(u"Müller's Musik/notizen.mp3.bak"_s, "kein Titel");
    MakeSound(music, u"welle.wav"_s);
    const auto count = Cases().size();
    const QStringList import{
        u"--datenordner"_s, folder.Path(u"Kalvo"_s), u"--geraet"_s, u"0"_s, u"--einlesen"_s, music};

    const ProgramResult first = RunProgram(import);
    EXPECT_EQ(first.exitCode, 0) << first.errors.toStdString();
    EXPECT_TRUE(first.output.contains(u"%1 von %1 Songs hinzugefügt, 0 Titel waren bereits vorhanden"_s.arg(count)))
        << first.output.toStdString();
    const ProgramResult second = RunProgram(import);
    EXPECT_EQ(second.exitCode, 0) << second.errors.toStdString();
    EXPECT_TRUE(second.output.contains(u"0 von %1 Songs hinzugefügt, %1 Titel waren bereits vorhanden"_s.arg(count)))
        << second.output.toStdString();

    const QMap<QString, Row> rows = ArchiveRows(folder.Path(u"Kalvo/Musikarchiv/default.mav"_s));
    EXPECT_EQ(rows.size(), count);
    for (const ImportCase& c : Cases()) {
        const Row row = rows.value(music + QLatin1Char('/') + c.name);
        EXPECT_EQ(row.time, c.expectedTime) << c.name.toStdString();
        EXPECT_EQ(row.title, c.expectedTitle) << c.name.toStdString();
    }
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
