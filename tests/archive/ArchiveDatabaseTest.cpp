#include "archive/ArchiveDatabase.h"

#include "archive/ArchiveField.h"
#include "archive/TestClock.h"
#include "support/TestFolder.h"

#include <QFileInfo>
#include <gtest/gtest.h>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

TitleRecord Title(const QString& path, const QString& title = u"Titel"_s) {
    TitleRecord record;
    record.Titel = title;
    record.Pfad = path;
    return record;
}

class ArchiveDatabaseTest : public ::testing::Test {
protected:
    WriteResult Add(TitleRecord record) { return database.AddTitle(record); }
    /** What another program sees: committed rows only; -1 when it cannot even read. */
    qint64 RowsOutside() const {
        SqliteDatabase other;
        other.Open(path, SqliteDatabase::Mode::ReadOnly, 0);
        SqliteStatement count = other.Prepare(u"SELECT count(*) FROM Daten"_s);
        return count.Step() ? count.Number(0) : -1;
    }

    TestFolder folder;
    TestClock clock;
    QString path = folder.Path(u"Musikarchiv/default.mav"_s);
    QString message;
    ArchiveDatabase database{clock};
};

} // namespace

TEST_F(ArchiveDatabaseTest, CreatesTheThirteenFieldsAndNothingElse) {
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_EQ(message, QString());
    SqliteDatabase other;
    ASSERT_EQ(other.Open(path, SqliteDatabase::Mode::ReadOnly), SqliteDatabase::Outcome::Opened);
    SqliteStatement columns = other.Prepare(u"SELECT name, type FROM pragma_table_info('Daten')"_s);
    QStringList found;
    while (columns.Step())
        found << columns.Text(0) + u' ' + columns.Text(1);
    EXPECT_EQ(found.join(u", "_s),
              u"Nr INTEGER, Titel TEXT, Interpret TEXT, Album TEXT, Bewertung TEXT, Stil TEXT, "
              "Zeit TEXT, Jahr TEXT, Pfad TEXT, Extra1 TEXT, Extra2 TEXT, Extra3 TEXT, Extra4 TEXT"_s);
    SqliteStatement others =
        other.Prepare(u"SELECT count(*) FROM sqlite_schema WHERE name NOT IN ('Daten', 'sqlite_sequence')"_s);
    ASSERT_TRUE(others.Step());
    EXPECT_EQ(others.Number(0), 0);
}

TEST_F(ArchiveDatabaseTest, StoresEveryFieldAndCutsTheComment) {
    ASSERT_TRUE(database.Open(path, message));
    TitleRecord record;
    for (const ArchiveField field : kTextFields)
        FieldPlace(record, field) = u"Größe 'ß' "_s + FieldName(field);
    record.Extra1 = QString(49, u'k') + u"🎵"_s;
    ASSERT_TRUE(database.AddTitle(record));
    EXPECT_EQ(record.Nr, 1);
    const TitleRecord read = database.Read({1}).value(0);
    for (const ArchiveField field : kTextFields)
        EXPECT_EQ(FieldText(read, field), FieldText(record, field)) << FieldName(field).toStdString();
    EXPECT_EQ(read.Extra1, QString(49, u'k')) << "no half of a character";
    record.Nr = 99;
    EXPECT_FALSE(database.UpdateRecord(record)) << "there is no such title";
}

TEST_F(ArchiveDatabaseTest, RefusesWhatIsTooLong) {
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_TRUE(Add(Title(u"/"_s + QString(199, u'ä'), QString(200, u'ü'))));
    EXPECT_EQ(Add(Title(u"/"_s + QString(200, u'p'))).reason, u"Der Pfad ist länger als 200 Zeichen."_s);
    EXPECT_EQ(Add(Title(u"/a.mp3"_s, QString(201, u't'))).reason, u"Das Feld Titel ist länger als 200 Zeichen."_s);
    EXPECT_EQ(database.Count(), 1);
}

TEST_F(ArchiveDatabaseTest, AcceptsTheSamePathTwice) {
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_TRUE(Add(Title(u"/a.mp3"_s)) && Add(Title(u"/a.mp3"_s)));
    EXPECT_EQ(database.FindByPath(u"/a.mp3"_s)->Nr, 1);
    EXPECT_EQ(database.FindByPath(u"/A.mp3"_s), std::nullopt);
}

TEST_F(ArchiveDatabaseTest, BatchesCommitByNumberAndByTime) {
    ASSERT_TRUE(database.Open(path, message));
    const auto outsideAfter = [this](int titles) {
        for (; titles > 0; --titles)
            EXPECT_TRUE(Add(Title(u"/a.mp3"_s)));
        return RowsOutside();
    };
    database.BeginBatch();
    EXPECT_EQ(outsideAfter(499), 0);
    EXPECT_EQ(outsideAfter(1), 500);
    EXPECT_EQ(outsideAfter(1), 500);
    clock.milliseconds += 99;
    database.CommitIfDue();
    EXPECT_EQ(RowsOutside(), 500);
    clock.milliseconds += 1;
    database.CommitIfDue();
    EXPECT_EQ(RowsOutside(), 501);
    EXPECT_EQ(outsideAfter(1), 501);
    database.BeginBatch(); // a second import
    database.EndBatch();
    EXPECT_EQ(RowsOutside(), 502);
    EXPECT_EQ(outsideAfter(1), 502) << "the first goes on as before";
    database.EndBatch();
    EXPECT_EQ(RowsOutside(), 503);
    EXPECT_FALSE(database.TakeBatchLost());
}

TEST_F(ArchiveDatabaseTest, SetsAsideWhatIsNoArchive) {
    SqliteDatabase foreign;
    ASSERT_EQ(foreign.Open(folder.Path(u"foreign.db"_s), SqliteDatabase::Mode::Create),
              SqliteDatabase::Outcome::Opened);
    ASSERT_TRUE(foreign.Execute(u"CREATE TABLE Other (x)"_s));
    foreign.Close();
    for (const QByteArray& content :
         {QByteArray("this is no database, but long enough to be looked at"), folder.Read(u"foreign.db"_s)}) {
        folder.Write(u"Musikarchiv/default.mav"_s, content);
        folder.Write(u"Musikarchiv/default.mav-wal"_s, "log");
        ASSERT_TRUE(database.Open(path, message));
        const QString kept = message.section(u"unter "_s, 1);
        ASSERT_TRUE(kept.startsWith(path + u".defekt-20260307-201530"_s)) << message.toStdString();
        EXPECT_EQ(folder.Read(u"Musikarchiv/"_s + QFileInfo(kept).fileName()), content);
        EXPECT_TRUE(content.startsWith("SQLite") || QFileInfo::exists(kept + u"-wal"_s)) << "else it is the engine's";
        EXPECT_EQ(database.Count(), 0);
        database.Close();
        QFile::remove(path);
    }
}

TEST_F(ArchiveDatabaseTest, FinishesAFileWhoseCreationWasInterrupted) {
    folder.Write(u"Musikarchiv/default.mav"_s, {});
    {
        SqliteDatabase begun;
        ASSERT_EQ(begun.Open(path, SqliteDatabase::Mode::Create), SqliteDatabase::Outcome::Opened);
        ASSERT_TRUE(begun.Execute(u"PRAGMA journal_mode=WAL"_s));
    }
    ASSERT_GT(QFileInfo(path).size(), 0);
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_TRUE(message.isEmpty()) << message.toStdString();
    EXPECT_EQ(database.Count(), 0);
}

TEST_F(ArchiveDatabaseTest, ReadsWhileAnotherProgramWrites) {
    ASSERT_TRUE(database.Open(path, message) && Add(Title(u"/a.mp3"_s)));
    database.Close();
    SqliteDatabase other;
    ASSERT_EQ(other.Open(path, SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened);
    const SqliteDatabase::Transaction writing(other);
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_TRUE(database.IsReadOnly());
    EXPECT_EQ(message, u"Das Musikarchiv wird von einem anderen Programm benutzt. Es kann nur gelesen werden."_s);
    EXPECT_EQ(database.Count(), 1);
    EXPECT_EQ(Add(Title(u"/b.mp3"_s)).reason, u"Das Musikarchiv kann nur gelesen werden."_s);
}

TEST_F(ArchiveDatabaseTest, TellsAFileThatCannotBeCreated) {
    EXPECT_FALSE(database.Open(folder.Write(u"file"_s, "x") + u"/default.mav"_s, message));
    EXPECT_TRUE(message.startsWith(u"Das Musikarchiv kann nicht angelegt werden: "_s));
    EXPECT_FALSE(database.IsOpen());
}

TEST_F(ArchiveDatabaseTest, AllRowsAreVisitedUntilTheVisitorHasEnough) {
    ASSERT_TRUE(database.Open(path, message));
    QStringList expected;
    for (const QString& title : {u"Größe"_s, QString(), u"b"_s, u"c"_s, u"d"_s}) {
        EXPECT_TRUE(Add(Title(u"/a/"_s + title, title)));
        expected << QString::number(expected.size() + 1) + title + u"/a/"_s + title;
    }
    SqliteDatabase other;
    ASSERT_EQ(other.Open(path, SqliteDatabase::Mode::ReadOnly), SqliteDatabase::Outcome::Opened);
    for (const qsizetype most : {3, 1000}) {
        QStringList visited;
        const auto visit = [&](const SqliteRow& row) {
            visited << QString::number(row.Number(0)) + QString::fromUtf8(row.Utf8(1)) + QString::fromUtf8(row.Utf8(2));
            return visited.size() < most;
        };
        EXPECT_EQ(other.VisitRows(u"Nr, Titel, Pfad"_s, u"Daten"_s, visit), most > expected.size());
        EXPECT_EQ(visited, expected.mid(0, most));
    }
    EXPECT_FALSE(other.VisitRows(u"Nr"_s, u"Anderes"_s, [](const SqliteRow&) { return true; }));
}

TEST_F(ArchiveDatabaseTest, AStatementKeepsItsTextsForTheNextRun) {
    ASSERT_TRUE(database.Open(path, message));
    SqliteDatabase other;
    ASSERT_EQ(other.Open(path, SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened);
    SqliteStatement insert = other.Prepare(u"INSERT INTO Daten (Titel, Pfad, Album) VALUES (?1, ?2, ?3)"_s);
    insert.Bind(1, QString(150, u'x')).Bind(2, u"/ä.mp3"_s);
    SqliteStatement moved = std::move(insert);
    EXPECT_TRUE(moved.Bind(3, QString()).Run());
    EXPECT_TRUE(moved.Bind(1, u"kurz"_s).Run());
    EXPECT_EQ(database.Read({1}).value(0).Titel, QString(150, u'x'));
    const TitleRecord second = database.Read({2}).value(0);
    EXPECT_EQ(second.Titel + second.Pfad + second.Album, u"kurz/ä.mp3"_s);
}

} // namespace kalvo::test
