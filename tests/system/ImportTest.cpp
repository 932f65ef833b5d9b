#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "system/Program.h"

#include <QFile>
#include <QMap>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace kalvo::test {
namespace {

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
    const QString umlauts = QStringLiteral("Grüße aus Köln");
    return {
        {QStringLiteral("CBR/Mädchen's Lied.mp3"),
         {QStringLiteral("-b"), QStringLiteral("128")},
         umlauts,
         umlauts,
         7.4,
         QStringLiteral("00:07")},
        {QStringLiteral("VBR.mp3"),
         {QStringLiteral("-V"), QStringLiteral("4")},
         umlauts,
         umlauts,
         61.6,
         QStringLiteral("01:02")},
        {QStringLiteral("ohne Xing.MP3"),
         {QStringLiteral("-V"), QStringLiteral("4"), QStringLiteral("-t")},
         QStringLiteral("Ohne"),
         QStringLiteral("Ohne"),
         12.6,
         QStringLiteral("00:13")},
        {QStringLiteral("Bild.mp3"), {}, umlauts, umlauts, 5, QStringLiteral("00:05"), 100'000},
        {QStringLiteral("nur ID3v1.mp3"),
         {QStringLiteral("--id3v1-only")},
         QStringLiteral("Zwei Wochen ohne einen Regentag"),
         QStringLiteral("Zwei Wochen ohne einen Regenta"),
         5,
         QStringLiteral("00:05")},
        {QStringLiteral("tief/tiefer/Vorbis.ogg"), {}, umlauts, umlauts, 9.6, QStringLiteral("00:10")},
        {QStringLiteral("ohne alles.ogg"), {}, QString(), QString(), 3, QStringLiteral("00:03")},
        {QStringLiteral("Opus.ogg"), {}, umlauts, umlauts, 4, QStringLiteral("00:04")},
    };
}

/** Makes the case's file; Opus is chosen by the name and then gets the ending that the archive takes. */
void Make(const QString& folder, const ImportCase& c) {
    SoundSpec sound;
    sound.seconds = c.seconds;
    sound.title = c.title;
    sound.options = c.options;
    sound.coverBytes = c.coverBytes;
    const bool isOpus = c.name.startsWith(QStringLiteral("Opus"));
    const QString made =
        isOpus ? QStringLiteral("roh.opus") : QString(c.name).replace(QStringLiteral(".MP3"), QStringLiteral(".mp3"));
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
    const QString music = folder.Path(QStringLiteral("Müller's Musik"));
    for (const ImportCase& c : Cases())
        Make(music, c);
    folder.Write(QStringLiteral("Müller's Musik/notizen.mp3.bak"), "kein Titel");
    MakeSound(music, QStringLiteral("welle.wav"));
    const auto count = Cases().size();
    const QStringList import{QStringLiteral("--datenordner"), folder.Path(QStringLiteral("Kalvo")),
                             QStringLiteral("--geraet"),      QStringLiteral("0"),
                             QStringLiteral("--einlesen"),    music};

    const ProgramResult first = RunProgram(import);
    EXPECT_EQ(first.exitCode, 0) << first.errors.toStdString();
    EXPECT_TRUE(first.output.contains(
        QStringLiteral("%1 von %1 Songs hinzugefügt, 0 Titel waren bereits vorhanden").arg(count)))
        << first.output.toStdString();
    const ProgramResult second = RunProgram(import);
    EXPECT_EQ(second.exitCode, 0) << second.errors.toStdString();
    EXPECT_TRUE(second.output.contains(
        QStringLiteral("0 von %1 Songs hinzugefügt, %1 Titel waren bereits vorhanden").arg(count)))
        << second.output.toStdString();

    const QMap<QString, Row> rows = ArchiveRows(folder.Path(QStringLiteral("Kalvo/Musikarchiv/default.mav")));
    EXPECT_EQ(rows.size(), count);
    for (const ImportCase& c : Cases()) {
        const Row row = rows.value(music + QLatin1Char('/') + c.name);
        EXPECT_EQ(row.time, c.expectedTime) << c.name.toStdString();
        EXPECT_EQ(row.title, c.expectedTitle) << c.name.toStdString();
    }
}

TEST(Import, AFolderThatIsNotThereIsToldAndNothingIsWritten) {
    const TestFolder folder;
    const ProgramResult result =
        RunProgram({QStringLiteral("--datenordner"), folder.Path(QStringLiteral("Kalvo")), QStringLiteral("--geraet"),
                    QStringLiteral("0"), QStringLiteral("--einlesen"), folder.Path(QStringLiteral("fehlt"))});
    EXPECT_GT(result.exitCode, 0);
    EXPECT_TRUE((result.output + result.errors).contains(QStringLiteral("Kein gültiger Ordner!")));
}

} // namespace
} // namespace kalvo::test
