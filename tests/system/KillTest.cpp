// `kill -9` at random moments of start, run, close and import: every file is the old or the new one, never half of one.
// KALVO_KILL_ROUNDS sets how often; KALVO_KILL_SEED repeats a run.

#include "archive/SqliteDatabase.h"
#include "base/ValueFile.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"
#include "system/DrivenProgram.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>

#include <random>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

constexpr int kBudget = 150'000; ///< ms, where no number of rounds is wanted
constexpr int kFilesAtOnce = 3;
constexpr int kImportedAtOnce = 40;
const QByteArray kSettings = "; von Hand\r\n[Equalizer]\r\nEQStatus=0\r\n\r\n[VU Meter]\r\nFarbe=255\r\n\r\n[Mixer]\r\n"
                             "Nachladen=1\r\n\r\n[Fremd]\r\nEnde=1\r\n";

struct KillTest : DrivenTest {
    void SetUp() override {
        DrivenTest::SetUp();
        if (IsSkipped())
            return;
        const QString seed = qEnvironmentVariable("KALVO_KILL_SEED");
        seed_ = seed.isEmpty() ? std::random_device()() : seed.toUInt();
        random_.seed(seed_);
        folder_.Write(u"Kalvo/kalvo.ini"_s, kSettings);
        sound_ = MakeSound(folder_.Path(), u"ton.mp3"_s);
    }

    /** A moment within the given milliseconds. */
    void Pass(int milliseconds) {
        QElapsedTimer clock;
        clock.start();
        const int wanted = std::uniform_int_distribution<int>(0, milliseconds)(random_);
        WaitUntil([&] { return clock.elapsed() >= wanted; });
    }

    void KillAtStart() {
        DrivenProgram program(screen_->Display(), Arguments());
        Pass(700);
    }

    /** A later start hands new files over; the list with them is saved two seconds afterwards. */
    void KillInRun() {
        DrivenProgram program(screen_->Display(), Arguments());
        program.WaitFor("Form1");
        QStringList files;
        for (int i = 0; i < kFilesAtOnce; ++i)
            files << folder_.Write(u"titel-%1.mp3"_s.arg(++files_), "x");
        EXPECT_EQ(DrivenProgram(screen_->Display(), Arguments() + files).WaitForExit(), 0);
        EXPECT_TRUE(WaitUntil([this] { return QFile::exists(Data("sitzung.json")); }));
        Pass(random_() % 2 == 0 ? 400 : 2600);
    }

    void KillAtClose() {
        DrivenProgram program(screen_->Display(), Arguments());
        program.WaitFor("Form1");
        program.CloseAndAnswer(u"Ja"_s);
        Pass(120);
    }

    void KillInImport() {
        const QString music = folder_.Path(u"musik-%1"_s.arg(++imports_));
        QDir().mkpath(music);
        for (int i = 0; i < kImportedAtOnce; ++i)
            QFile::copy(sound_, u"%1/%2.mp3"_s.arg(music).arg(i));
        QProcess import;
        import.setStandardOutputFile(QProcess::nullDevice());
        import.start(qEnvironmentVariable("KALVO_BIN") + u"/kalvo"_s,
                     {u"--datenordner"_s, Data(), u"--einlesen"_s, music});
        EXPECT_TRUE(import.waitForStarted());
        Pass(250);
        import.kill();
        import.waitForFinished();
    }

    void CheckSettings() {
        const QByteArray settings = folder_.Read(u"Kalvo/kalvo.ini"_s);
        EXPECT_TRUE(settings == kSettings || settings == closed_) << settings.toStdString();
        for (const auto& [name, count] : {std::pair("kalvo.dll", 11), std::pair("mp3tabelle.dll", 12)})
            EXPECT_TRUE(!QFile::exists(Data(name)) || ValueFile::Read(Data(name)).size() == count) << name;
    }

    /** Rows of a table in a database that has to be sound; `fallback` where the file is not there yet. */
    int Rows(const char* file, const char* table, int fallback) {
        if (!QFile::exists(Data(file)) || QFileInfo(Data(file)).size() == 0)
            return fallback;
        SqliteDatabase database;
        EXPECT_EQ(database.Open(Data(file), SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened) << file;
        SqliteStatement check = database.Prepare(u"PRAGMA quick_check"_s);
        EXPECT_TRUE(check.Step() && check.Text(0) == u"ok"_s) << file;
        SqliteStatement exists =
            database.Prepare(u"SELECT count(*) FROM sqlite_master WHERE name = '%1'"_s.arg(QLatin1String(table)));
        EXPECT_TRUE(exists.Step());
        if (exists.Number(0) == 0)
            return fallback; // killed between the file and its table
        SqliteStatement count = database.Prepare(u"SELECT count(*) FROM "_s + QLatin1String(table));
        EXPECT_TRUE(count.Step());
        return static_cast<int>(count.Number(0));
    }

    void Check() {
        CheckSettings();
        const int titles = Rows("Musikarchiv/default.mav", "Daten", titles_);
        EXPECT_GE(titles, titles_) << "titles that had been there are lost";
        titles_ = titles;
        const int listed = Rows("Wiedergabeliste/default.mav", "Player1", listed_);
        EXPECT_GE(listed, listed_) << "entries that had been there are lost";
        EXPECT_EQ(listed % kFilesAtOnce, 0) << "half a list";
        EXPECT_LE(listed, files_);
        listed_ = listed;
        QDirIterator all(Data(), QDir::Files, QDirIterator::Subdirectories);
        while (all.hasNext())
            EXPECT_FALSE(all.next().contains(u".defekt-"_s)) << all.filePath().toStdString();
    }

    unsigned seed_ = 0;
    std::mt19937 random_;
    QString sound_;
    QByteArray closed_; ///< the settings after an orderly end
    int files_ = 0;     ///< handed over so far
    int imports_ = 0;
    int titles_ = 0; ///< in the archive
    int listed_ = 0; ///< in the saved list
};

TEST_F(KillTest, LeavesEveryFileOldOrNewAtAnyMoment) {
    SCOPED_TRACE(testing::Message() << "KALVO_KILL_SEED=" << seed_);
    constexpr void (KillTest::*kills[])() = {&KillTest::KillAtStart, &KillTest::KillInRun, &KillTest::KillAtClose,
                                             &KillTest::KillInImport};
    KillAtStart();
    Check();
    RunToItsEnd();
    closed_ = folder_.Read(u"Kalvo/kalvo.ini"_s);
    ASSERT_TRUE(closed_.contains("[Fremd]\r\nEnde=1\r\n")) << closed_.toStdString();
    const int wanted = qEnvironmentVariableIntValue("KALVO_KILL_ROUNDS");
    QElapsedTimer clock;
    clock.start();
    int rounds = 0;
    for (; !HasFailure() && (wanted > 0 ? rounds < wanted : clock.elapsed() < kBudget); ++rounds) {
        (this->*kills[rounds % 4])();
        Check();
    }
    RecordProperty("rounds", rounds);
    EXPECT_TRUE(RunToItsEnd().contains(u"%1 Titel gefunden"_s.arg(titles_)));
    Check();
}

TEST_F(KillTest, TheMusicGoesOnWhereItStopped) {
    const QString title = MakeSound(folder_.Path(), u"lang.mp3"_s, {.seconds = 120, .title = u"Der lange Ton"_s});
    const auto second = [](const QString& time) { return time.section(u'/', 0, 0).section(u':', 1).toInt(); };
    int stopped = 0;
    {
        DrivenProgram program(screen_->Display(), Arguments() + QStringList{title});
        program.WaitFor("Form1");
        program.Press("Form1", u"cmdPlay1"_s);
        stopped = second(program.WaitForText("LTiempo1", [&second](const QString& time) { return second(time) >= 4; }));
    } // killed
    DrivenProgram next(screen_->Display(), Arguments());
    const SeenWindow box = next.WaitFor("xMessageBox");
    EXPECT_EQ(box.title, u"Weiterspielen"_s);
    EXPECT_TRUE(box.Label("lblText").contains(u"Auf Player 1 lief bei 00:0"_s));
    next.Press("xMessageBox", u"Ja"_s);
    const int goesOn =
        second(next.WaitForText("LTiempo1", [&second](const QString& time) { return second(time) > 0; }));
    EXPECT_GE(goesOn, stopped - 2);
    next.WaitForText("LTiempo1", [&](const QString& time) { return second(time) > goesOn; });
}

} // namespace
} // namespace kalvo::test
