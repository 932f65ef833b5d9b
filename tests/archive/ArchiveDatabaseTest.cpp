#include "archive/ArchiveDatabase.h"

#include "archive/ArchiveField.h"
#include "archive/ArchiveRescue.h"
#include "archive/ui/ArchiveDesk.h"

#include <QFileInfo>

namespace kalvo::test {
namespace {

TitleRecord Title(const QString& path, const QString& title = u"Titel"_s) {
    TitleRecord record;
    record.Titel = title;
    record.Pfad = path;
    return record;
}

class ArchiveDatabaseTest : public ::testing::Test {
protected:
    ArchiveDatabaseTest() { EXPECT_TRUE(database.Open(path, message)); }

    WriteResult Add(TitleRecord record) { return database.AddTitle(record); }
    /** What another program sees: committed rows only; -1 when it cannot even read. */
    qint64 RowsOutside() const {
        SqliteDatabase reader;
        reader.Open(path, SqliteDatabase::Mode::ReadOnly, 0);
        SqliteStatement count = reader.Prepare(u"SELECT count(*) FROM Daten"_s);
        return count.Step() ? count.Number(0) : -1;
    }

    TestFolder folder;
    TestClock clock;
    QString path = folder.Path(u"Musikarchiv/default.mav"_s);
    QString message;
    ArchiveDatabase database{clock};
    SqliteDatabase other; ///< the same file, as another program has it
};

TEST_F(ArchiveDatabaseTest, CreatesTheThirteenFieldsAndNothingElse) {
    EXPECT_EQ(message, QString());
    ASSERT_EQ(other.Open(path, SqliteDatabase::Mode::ReadOnly), SqliteDatabase::Outcome::Opened);
    SqliteStatement found =
        other.Prepare(u"SELECT (SELECT group_concat(name || ' ' || type, ', ') FROM pragma_table_info('Daten')), "
                      "(SELECT count(*) FROM sqlite_schema WHERE name NOT IN ('Daten', 'sqlite_sequence'))"_s);
    ASSERT_TRUE(found.Step());
    EXPECT_EQ(found.Text(0), u"Nr INTEGER, Titel TEXT, Interpret TEXT, Album TEXT, Bewertung TEXT, Stil TEXT, "
                             "Zeit TEXT, Jahr TEXT, Pfad TEXT, Extra1 TEXT, Extra2 TEXT, Extra3 TEXT, Extra4 TEXT"_s);
    EXPECT_EQ(found.Number(1), 0);
}

TEST_F(ArchiveDatabaseTest, StoresEveryFieldAndCutsTheComment) {
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

TEST_F(ArchiveDatabaseTest, RefusesWhatIsTooLongButNoSecondRowOfAPath) {
    EXPECT_TRUE(Add(Title(u"/"_s + QString(199, u'ä'), QString(200, u'ü'))));
    EXPECT_EQ(Add(Title(u"/"_s + QString(200, u'p'))).reason, u"Der Pfad ist länger als 200 Zeichen."_s);
    EXPECT_EQ(Add(Title(u"/a.mp3"_s, QString(201, u't'))).reason, u"Das Feld Titel ist länger als 200 Zeichen."_s);
    EXPECT_EQ(database.Count(), 1);
    EXPECT_TRUE(Add(Title(u"/a.mp3"_s)) && Add(Title(u"/a.mp3"_s)));
    EXPECT_EQ(database.FindByPath(u"/a.mp3"_s)->Nr, 2);
    EXPECT_EQ(database.FindByPath(u"/A.mp3"_s), std::nullopt);
}

TEST_F(ArchiveDatabaseTest, BatchesCommitByNumberAndByTime) {
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
    database.Close();
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
    database.Close();
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
    ASSERT_TRUE(Add(Title(u"/a.mp3"_s)));
    database.Close();
    ASSERT_EQ(other.Open(path, SqliteDatabase::Mode::ReadWrite), SqliteDatabase::Outcome::Opened);
    const SqliteDatabase::Transaction writing(other);
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_TRUE(database.IsReadOnly());
    EXPECT_EQ(message, u"Das Musikarchiv wird von einem anderen Programm benutzt. Es kann nur gelesen werden."_s);
    EXPECT_EQ(database.Count(), 1);
    EXPECT_EQ(Add(Title(u"/b.mp3"_s)).reason, u"Das Musikarchiv kann nur gelesen werden."_s);
}

TEST_F(ArchiveDatabaseTest, RowsAreVisitedUntilTheVisitorHasEnough) {
    EXPECT_TRUE(Add(Title(u"/a.mp3"_s)) && Add(Title(u"/b.mp3"_s)) && Add(Title(u"/c.mp3"_s)));
    ASSERT_EQ(other.Open(path, SqliteDatabase::Mode::ReadOnly), SqliteDatabase::Outcome::Opened);
    for (const int most : {2, 1000}) {
        int visited = 0;
        const auto visit = [&](const SqliteRow&) { return ++visited < most; };
        EXPECT_EQ(other.VisitRows(u"Nr"_s, u"Daten"_s, visit), most > 3);
        EXPECT_EQ(visited, std::min(most, 3));
    }
    EXPECT_FALSE(other.VisitRows(u"Nr"_s, u"Anderes"_s, [](const SqliteRow&) { return true; }));
}

/** An archive of many pages. */
class ArchiveRescueTest : public ArchiveDatabaseTest {
protected:
    ArchiveRescueTest() {
        database.BeginBatch();
        for (int i = 1; i <= 3000; ++i)
            EXPECT_TRUE(Add(Title({}, QString(100, u'x') + QString::number(i))));
        database.Close();
    }

    const QString name = u"Musikarchiv/default.mav"_s;
    QString kept = path + u".defekt-20260307-201530"_s;
};

TEST_F(ArchiveRescueTest, ANotedArchiveIsRenewedWithAllThatCanBeRead) {
    QByteArray content = folder.Read(name);
    const qsizetype pages = content.size() / 4096;
    ASSERT_GT(pages, 60);
    folder.Write(name, content.replace(pages / 2 * 4096, 4096, QByteArray(4096, '\xFF')));
    ArchiveRescue::Note(path);
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_GT(database.Count(), 2500);
    EXPECT_LT(database.Count(), 3000);
    EXPECT_EQ(database.Read({1}).value(0).Titel, QString(100, u'x') + u'1');
    EXPECT_EQ(database.Read({3000}).value(0).Titel, QString(100, u'x') + u"3000"_s);
    EXPECT_TRUE(message.contains(u"%1 Titel wurden übernommen"_s.arg(database.Count())));
    EXPECT_TRUE(message.endsWith(kept));
    EXPECT_TRUE(QFileInfo::exists(kept));
    EXPECT_FALSE(ArchiveRescue::IsNoted(path));
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_EQ(message, QString());
}

TEST_F(ArchiveRescueTest, ASoundArchiveKeepsEveryTitleAndItsNumbers) {
    ArchiveRescue::Note(path);
    ASSERT_TRUE(ArchiveRescue::Run(path, clock, message));
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_EQ(database.Count(), 3000);
    TitleRecord next;
    ASSERT_TRUE(database.AddTitle(next));
    EXPECT_EQ(next.Nr, 3001);
}

TEST_F(ArchiveRescueTest, ARescueBrokenOffBeforeItsLastStepIsFinished) {
    ArchiveRescue::Note(path);
    ASSERT_TRUE(QFile::copy(path, path + u".neu"_s));
    ASSERT_TRUE(QFile::rename(path, kept));
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_EQ(database.Count(), 3000);
    EXPECT_FALSE(ArchiveRescue::IsNoted(path));
    EXPECT_FALSE(QFileInfo::exists(path + u".neu"_s));
}

TEST_F(ArchiveRescueTest, WhatCannotBeReadAtAllStaysWhereItIs) {
    folder.Write(name, "SQLite format 3 and nothing of the kind");
    ArchiveRescue::Note(path);
    EXPECT_FALSE(ArchiveRescue::Run(path, clock, message));
    EXPECT_TRUE(message.startsWith(u"Das Musikarchiv ist beschädigt und kann nicht erneuert werden: "_s));
    EXPECT_EQ(folder.Read(name), "SQLite format 3 and nothing of the kind");
    EXPECT_FALSE(QFileInfo::exists(path + u".neu"_s));
}

} // namespace
} // namespace kalvo::test
