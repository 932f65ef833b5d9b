#include "archive/WriterProcess.h"
#include "archive/ui/ArchiveDesk.h"

#include <QFile>
#include <QFileInfo>

#include <sys/resource.h>

namespace kalvo::test {
namespace {

TitleRecord Title(qint64 i) {
    TitleRecord record;
    record.Titel = QString(80, u't') + QString::number(i);
    record.Pfad = u"/m/%1.mp3"_s.arg(i);
    return record;
}

/** What is left in the archive after its writer has gone. */
class ArchiveSafetyTest : public ::testing::Test {
protected:
    /** In the child; every Qt object is its own there. */
    struct Writer {
        explicit Writer(const QString& path) { opened = database.Open(path, message); }
        void Add(qint64 from, qint64 to) {
            database.BeginBatch();
            for (qint64 i = from; i < to; ++i) {
                TitleRecord record = Title(i);
                written = written && database.AddTitle(record);
            }
            database.EndBatch();
            written = written && !database.TakeBatchLost();
        }
        TestClock clock;
        ArchiveDatabase database{clock};
        QString message;
        bool opened = false;
        bool written = true;
    };

    void Fill(qint64 titles) {
        Writer writer(path);
        writer.Add(1, titles + 1);
        ASSERT_TRUE(writer.written);
    }

    /** Kills a child that writes after so many reports; the last one that it wrote, or `certain`. */
    qint64 KillAfterReports(int reports, qint64 certain,
                            const std::function<void(Writer&, const WriterProcess::Report&)>& work) {
        WriterProcess child([&](const WriterProcess::Report& report) {
            Writer writer(path);
            work(writer, report);
        });
        for (; reports > 0; --reports)
            if (const qint64 told = child.Next(); told >= 0)
                certain = told;
        return child.KillAfter(certain);
    }

    /** Titles in the file; fails unless it opens without a word, is sound and holds whole titles. */
    qint64 TitlesLeft() {
        Writer reader(path);
        EXPECT_TRUE(reader.opened && reader.message.isEmpty()) << reader.message.toStdString();
        SqliteDatabase database;
        database.Open(path, SqliteDatabase::Mode::ReadOnly);
        SqliteStatement check = database.Prepare(u"PRAGMA integrity_check"_s);
        EXPECT_TRUE(check.Step() && check.Text(0) == u"ok"_s) << check.Text(0).toStdString();
        SqliteStatement broken =
            database.Prepare(u"SELECT count(*) FROM Daten WHERE length(Titel) < 81 OR Pfad = ''"_s);
        EXPECT_TRUE(broken.Step() && broken.Number(0) == 0);
        return reader.database.Count();
    }

    TestFolder folder;
    QString path = folder.Path(u"Musikarchiv/default.mav"_s);
};

TEST_F(ArchiveSafetyTest, AKilledImportKeepsEveryBatch) {
    qint64 before = 0;
    for (int round = 0; round < 12; ++round) {
        const qint64 certain = KillAfterReports(round, before, [&](Writer& writer, const auto& report) {
            for (qint64 i = before;; i += 40) {
                writer.Add(i, i + 40);
                report(i + 40);
            }
        });
        if (!QFileInfo::exists(path))
            continue;
        const qint64 left = TitlesLeft();
        EXPECT_GE(left, certain);
        EXPECT_EQ(left % 40, 0);
        before = left;
    }
    EXPECT_GT(before, 0);
}

TEST_F(ArchiveSafetyTest, AKilledDeletionIsWholeOrNotAtAll) {
    Fill(4000);
    qint64 left = 4000;
    for (int round = 0; round < 8 && left > 0; ++round) {
        const qint64 first = 4000 - left + 1;
        const qint64 certain = KillAfterReports(round, left, [&](Writer& writer, const auto& report) {
            for (qint64 i = first; i <= 4000; i += 50) {
                QList<qint64> numbers;
                for (qint64 nr = i; nr < i + 50; ++nr)
                    numbers.append(nr);
                if (!writer.database.Delete(numbers))
                    ::_exit(1);
                report(4000 - i - 49);
            }
        });
        left = TitlesLeft();
        EXPECT_LE(left, certain);
        EXPECT_EQ(left % 50, 0);
    }
    EXPECT_LT(left, 4000);
}

TEST_F(ArchiveSafetyTest, DeletingEverythingAndUndoingItSurviveAKill) {
    Fill(1500);
    for (int round = 0; round < 10; ++round) {
        const qint64 cycles = KillAfterReports(round % 4, -1, [&](Writer& writer, const auto& report) {
            for (qint64 i = 0;; ++i) {
                QList<qint64> numbers;
                if (!writer.database.DeleteAll() || !writer.database.UndoDelete(numbers))
                    ::_exit(1);
                report(i);
            }
        });
        EXPECT_GE(cycles, round % 4 - 1);
        const qint64 left = TitlesLeft();
        EXPECT_TRUE(left == 0 || left == 1500) << left;
        if (left == 0)
            Fill(1500);
    }
}

TEST_F(ArchiveSafetyTest, AKilledUpdateLosesNoTitle) {
    Fill(500);
    for (int round = 0; round < 6; ++round) {
        const QString stamp = u"%1.03.2026"_s.arg(round);
        const qint64 certain = KillAfterReports(round, 0, [&](Writer& writer, const auto& report) {
            for (TitleRecord record : writer.database.Read({1, 2, 3, 4, 5, 6, 7, 8, 9, 10})) {
                record.Extra2 = stamp;
                if (!writer.database.UpdateRecord(record))
                    ::_exit(1);
                report(record.Nr);
            }
        });
        EXPECT_EQ(TitlesLeft(), 500);
        Writer reader(path);
        for (qint64 nr = 1; nr <= certain; ++nr)
            EXPECT_EQ(reader.database.Read({nr}).value(0).Extra2, stamp) << nr;
    }
}

TEST_F(ArchiveSafetyTest, AFullDiskIsToldAndTakesNothingAway) {
    Fill(200);
    WriterProcess child([&](const WriterProcess::Report& report) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1 << 20, 1 << 20};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        Writer writer(path);
        qint64 titles = 200;
        while (writer.written && titles < 100000) {
            writer.Add(titles, titles + 100);
            titles += writer.written ? 100 : 0;
        }
        report(titles);
        QList<qint64> numbers;
        if (const WriteResult deleted = writer.database.DeleteAll())
            report(writer.database.UndoDelete(numbers) ? titles : 0);
        else
            report(deleted.reason.isEmpty() ? -2 : titles);
    });
    const qint64 titles = child.Next();
    EXPECT_GT(titles, 200);
    EXPECT_LT(titles, 100000);
    const qint64 afterwards = child.Next(); // 0: it could be deleted, but there was no room to take that back
    EXPECT_TRUE(afterwards == 0 || afterwards == titles) << afterwards;
    EXPECT_EQ(TitlesLeft(), afterwards);
}

TEST_F(ArchiveSafetyTest, AnArchiveDeletedUnderTheProgramIsThereAgainAtItsEnd) {
    {
        Writer writer(path);
        writer.Add(1, 3);
        for (const QString& file : {path, path + u"-wal"_s, path + u"-shm"_s})
            ASSERT_TRUE(QFile::remove(file));
        writer.Add(3, 5);
        ASSERT_TRUE(writer.written);
    }
    Writer again(path);
    EXPECT_EQ(again.database.Count(), 4);
    EXPECT_EQ(again.message, QString());
    again.Add(5, 6);
    EXPECT_TRUE(again.written);
}

TEST_F(ArchiveSafetyTest, TwoProgramsWriteIntoOneArchive) {
    Fill(1);
    const auto addAll = [](Writer& writer) {
        for (qint64 i = 0; i < 300; i += 10)
            writer.Add(i, i + 10);
    };
    WriterProcess child([&](const WriterProcess::Report& report) {
        Writer other(path);
        report(0);
        addAll(other);
        report(other.written ? 1 : 2);
    });
    EXPECT_EQ(child.Next(), 0);
    Writer writer(path);
    ASSERT_FALSE(writer.database.IsReadOnly());
    addAll(writer);
    EXPECT_TRUE(writer.written);
    EXPECT_EQ(child.Next(), 1);
    EXPECT_EQ(TitlesLeft(), 601);
}

} // namespace
} // namespace kalvo::test
