// How fast the archive answers, loads and takes titles in. Targets stand in the labels.

#include "FilledArchive.h"
#include "archive/ArchiveSession.h"
#include "archive/ArchiveStatements.h"
#include "archive/CategoryBuild.h"
#include "archive/DuplicateFinder.h"
#include "archive/IndexLoader.h"
#include "archive/TitleImport.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <array>

namespace {

using namespace kalvo;
using bench::Collection;
using bench::FilledArchive;
using namespace Qt::StringLiterals;

const QStringList kNeedles = {u"stern"_s, u"su"_s, u"grü"_s, u"tanzt"_s, u"xyz"_s, u"kla"_s};

QList<ArchiveField> AllColumns() {
    return {kTextFields.begin(), kTextFields.end()};
}

void SearchIndex(benchmark::State& state) {
    Archive& archive = FilledArchive::Of(static_cast<int>(state.range(0))).archive;
    qsizetype needle = 0;
    for (auto _ : state) {
        archive.SetRecordSource(ArchiveStatements::QuickSearch(kNeedles.at(needle++ % kNeedles.size()), AllColumns()));
        for (int row = 0; row < std::min(50, archive.RowCount()); ++row)
            benchmark::DoNotOptimize(archive.RowAt(row));
    }
    state.SetLabel("a keystroke to count, order and 50 rows; target 100k: 1 ms, 1M: 10 ms");
}

void SearchLike(benchmark::State& state) {
    FilledArchive& filled = FilledArchive::Of(static_cast<int>(state.range(0)));
    SqliteDatabase database;
    database.Open(filled.archive.Path(), SqliteDatabase::Mode::ReadOnly);
    QStringList conditions;
    for (std::size_t i = 0; i < 11; ++i)
        conditions << FieldName(kTextFields[i]) + u" LIKE ?1"_s;
    SqliteStatement select = database.Prepare(u"SELECT Nr FROM Daten WHERE "_s + conditions.join(u" OR "_s) +
                                              u" ORDER BY Interpret, Titel"_s);
    qsizetype needle = 0;
    for (auto _ : state) {
        select.Bind(1, u'%' + kNeedles.at(needle++ % kNeedles.size()) + u'%');
        while (select.Step())
            benchmark::DoNotOptimize(select.Number(0));
        select.Reset();
    }
    state.SetLabel("the same needles by LIKE over 11 columns; the index is to be 80 times as fast");
}

void Sort(benchmark::State& state) {
    Archive& archive = FilledArchive::Of(static_cast<int>(state.range(0))).archive;
    const auto field = static_cast<ArchiveField>(state.range(1));
    bool descending = false;
    for (auto _ : state)
        archive.SetRecordSource(ArchiveStatements::Sorted(field, descending = !descending));
    state.SetLabel(FieldName(field).toStdString() + "; target 100k: 1 ms, 1M: 10 ms");
}

void Load(benchmark::State& state) {
    const QString path = FilledArchive::Of(static_cast<int>(state.range(0))).archive.Path();
    std::size_t bytes = 0;
    for (auto _ : state) {
        const IndexLoader loader(
            path, [](const auto&) {}, [] {});
        bytes = loader.Wait()->Bytes();
    }
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
    state.SetLabel("target 1M: 1.6 s, 200 MB");
}

void AddTitles(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        FilledArchive empty(0);
        Collection collection(20000);
        std::vector<TitleRecord> records;
        for (int i = 0; i < 20000; ++i)
            records.push_back(collection.Record(i));
        state.ResumeTiming();
        const Archive::Session session(empty.archive);
        for (TitleRecord& record : records)
            benchmark::DoNotOptimize(empty.archive.HoldsPath(record.Pfad) || !empty.archive.AddTitle(record));
    }
    state.SetItemsProcessed(state.iterations() * 20000);
    state.SetLabel("duplicate check, database and index");
}

/** What AddTitles does with the database alone. */
void StoreTitles(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir folder;
        SystemClock clock;
        ArchiveDatabase database(clock);
        QString message;
        database.Open(folder.filePath(u"leer.mav"_s), message);
        Collection collection(20000);
        std::vector<TitleRecord> records;
        for (int i = 0; i < 20000; ++i)
            records.push_back(collection.Record(i));
        state.ResumeTiming();
        database.BeginBatch();
        for (TitleRecord& record : records)
            benchmark::DoNotOptimize(database.AddTitle(record));
        database.EndBatch();
    }
    state.SetItemsProcessed(state.iterations() * 20000);
    state.SetLabel("database alone; target 250,000/s");
}

/**
 * Files as a collection holds them: of twenty four are OGG, seven constant bit rate, six variable, two constant and one
 * variable without the header that tells the length.
 */
class TaggedFiles {
public:
    TaggedFiles() {
        Make(u"ogg"_s, u"oggenc -Q -q 1 -t Nachtlied -a 'Die Künstler' -l Album -G Rock -d 2004 -N 3 -o %1 -"_s);
        for (const QString& options : {u"-b 64"_s, u"-V 7"_s, u"-b 64 -t"_s, u"-V 7 -t"_s})
            Make(u"mp3"_s, u"lame --quiet %1 --tt Nachtlied --ta 'Die Künstler' --tl Album --ty 2004 --tg Rock --tn 3 "
                           "--add-id3v2 --tc Kommentar - "_s.arg(options) +
                               u"%1"_s);
        constexpr std::array<int, 20> kinds{0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 3, 3, 4};
        for (int i = 0; i < 20000; ++i) {
            const QString& source = sources_.at(kinds.at(static_cast<std::size_t>(i) % kinds.size()));
            const QString name = folder_.filePath(u"%1/%2.%3"_s.arg(i / 100).arg(i).arg(source.right(3)));
            if (i % 100 == 0)
                QDir().mkpath(folder_.filePath(QString::number(i / 100)));
            if (!QFile::copy(source, name))
                std::abort();
            paths_ << name;
        }
    }
    const QStringList& Paths() const { return paths_; }

private:
    /** command: the encoder, from its standard input into %1. */
    void Make(const QString& ending, const QString& command) {
        sources_ << folder_.filePath(u"%1.%2"_s.arg(sources_.size()).arg(ending));
        QProcess::execute(u"bash"_s, {u"-c"_s, u"sox -n -r 44100 -c 2 -b 16 -t wav - synth 10 pinknoise vol 0.3 | "_s +
                                                   command.arg(sources_.last())});
    }

    QTemporaryDir folder_;
    QStringList sources_;
    QStringList paths_;
};

void Import(benchmark::State& state) {
    static const TaggedFiles files;
    for (auto _ : state) {
        state.PauseTiming();
        FilledArchive empty(0);
        TitleImport import(empty.archive);
        state.ResumeTiming();
        if (import.Run(files.Paths()).added != files.Paths().size())
            state.SkipWithError("files are missing");
    }
    state.SetItemsProcessed(state.iterations() * files.Paths().size());
    state.SetLabel("files/s, warm, two cores; target 12,000");
}

/** What the tree and the lists under the column heads ask. */
void TreeValue(benchmark::State& state) {
    Archive& archive = FilledArchive::Of(static_cast<int>(state.range(0))).archive;
    archive.SetRecordSource(ArchiveStatements::Default());
    const TitleRecord title = archive.RowAt(archive.RowCount() / 2);
    int turn = 0;
    for (auto _ : state)
        archive.SetRecordSource(++turn % 2 ? ArchiveStatements::TreeValue(ArchiveField::Interpret, title.Interpret)
                                           : ArchiveStatements::ColumnValue(ArchiveField::Stil, title.Stil));
    state.SetLabel("a value of the tree, a value under a column's head, in turn");
}

void ReadRows(benchmark::State& state) {
    Archive& archive = FilledArchive::Of(static_cast<int>(state.range(0))).archive;
    archive.SetRecordSource(ArchiveStatements::Sorted(ArchiveField::Titel, false));
    QList<int> rows;
    for (int row = 0; row < std::min(100000, archive.RowCount()); ++row)
        rows << row;
    for (auto _ : state)
        benchmark::DoNotOptimize(archive.RowsAt(rows));
    state.SetItemsProcessed(state.iterations() * rows.size());
    state.SetLabel("marked titles, sorted by title");
}

void HoldsPath(benchmark::State& state) {
    Archive& archive = FilledArchive::Of(static_cast<int>(state.range(0))).archive;
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            archive.HoldsPath(u"/home/dj/Musik/Don't %1/Album/Don't stop %2.mp3"_s.arg(i / 12).arg(i)));
    state.SetLabel("an import's look for a new path with apostrophes");
}

void BuildCategories(benchmark::State& state) {
    FilledArchive& filled = FilledArchive::Of(static_cast<int>(state.range(0)));
    CategoryBuild build(filled.archive, filled.data);
    for (auto _ : state) {
        QEventLoop loop;
        QObject::connect(&build, &CategoryBuild::Finished, &loop, &QEventLoop::quit);
        build.Start();
        loop.exec();
    }
    state.SetLabel("five category files");
}

/** With every file in its place: an empty one for each title. */
void Duplicates(benchmark::State& state) {
    FilledArchive& filled = FilledArchive::Of(static_cast<int>(state.range(0)));
    filled.CreateFiles();
    DuplicateFinder finder(filled.archive);
    DuplicateReport report;
    for (auto _ : state) {
        QEventLoop loop;
        QObject::connect(&finder, &DuplicateFinder::Finished, &loop, [&](const DuplicateReport& found) {
            report = found;
            loop.quit();
        });
        finder.Start(static_cast<DuplicateMode>(state.range(1)));
        loop.exec();
    }
    state.counters["titles"] = report.Titles();
    state.SetLabel(report.outcome == DuplicateReport::Outcome::Found ? "target 100k: 0.5 s, 1M: 6 s" : "failed");
}

BENCHMARK(SearchIndex)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(SearchLike)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Sort)->ArgsProduct({{10000, 100000, 1000000}, {1, 3, 5, 8, 11}})->Unit(benchmark::kMillisecond);
BENCHMARK(TreeValue)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadRows)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(HoldsPath)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Load)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(BuildCategories)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(Duplicates)
    ->ArgsProduct({{100000, 1000000}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Iterations(1);
BENCHMARK(StoreTitles)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(AddTitles)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Import)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
