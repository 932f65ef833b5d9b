// How fast the archive answers, loads and takes titles in. Targets stand in the labels.

#include "archive/ArchiveSession.h"
#include "archive/ArchiveStatements.h"
#include "archive/IndexLoader.h"
#include "archive/TitleImport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <map>
#include <random>

namespace {

using namespace kalvo;
using namespace Qt::StringLiterals;

/** Titles as in a grown collection: few genres and years, an artist per fifteen titles, a folder per album. */
class Collection {
public:
    explicit Collection(int size) : size_(size) {}

    TitleRecord Record(int i) {
        const int album = i / 12;
        TitleRecord record;
        record.Titel = Words(2 + static_cast<int>(random_() % 3));
        if (i % 12 == 0) {
            artist_ = u"%1 %2"_s.arg(Words(2)).arg(static_cast<int>(random_()) % (1 + size_ / 60));
            album_ = Words(3);
        }
        record.Interpret = artist_;
        record.Album = album_;
        record.Bewertung = QString::number(random_() % 6);
        record.Stil = u"Stil %1"_s.arg(album % 40);
        record.Zeit = u"%1:%2"_s.arg(random_() % 9, 2, 10, QChar(u'0')).arg(random_() % 60, 2, 10, QChar(u'0'));
        record.Jahr = QString::number(1960 + album % 66);
        record.Pfad = u"/home/dj/Musik/%1/%2 %3/%4 - %5.mp3"_s.arg(artist_, album_)
                          .arg(album)
                          .arg(i % 12 + 1, 2, 10, QChar(u'0'))
                          .arg(record.Titel);
        record.Extra3 = QString::number(i % 12 + 1);
        record.Extra4 = QString::number(80 + random_() % 90);
        return record;
    }

private:
    /** Of some 2,000 syllables, one in nine with an umlaut. */
    QString Words(int count) {
        static const QStringList starts = u"b br ch d f fl g gr h j k kl l m n p r s sch st t tr w z"_s.split(u' ');
        static const QStringList middles = u"a e i o u ei au ie ü"_s.split(u' ');
        static const QStringList ends = u" n r t ng l s ck rn"_s.split(u' ');
        const auto one = [this](const QStringList& list) {
            return list.at(static_cast<qsizetype>(random_()) % list.size());
        };
        QStringList words;
        for (; count > 0; --count) {
            QString word;
            for (auto more = 1 + random_() % 3; more > 0; --more)
                word += one(starts) + one(middles) + one(ends);
            word[0] = word.at(0).toUpper();
            words << word;
        }
        return words.join(u' ');
    }

    int size_;
    std::mt19937 random_{42};
    QString artist_;
    QString album_;
};

/** An archive of the given size, made once per run. */
struct FilledArchive {
    explicit FilledArchive(int size) {
        data.CreateAll();
        archive.Open(data);
        archive.WaitForIndex();
        ArchiveDatabase database(clock);
        QString message;
        database.Open(archive.Path(), message);
        database.BeginBatch();
        Collection collection(size);
        for (int i = 0; i < size; ++i) {
            TitleRecord record = collection.Record(i);
            if (!database.AddTitle(record))
                std::abort();
        }
        database.Close();
        archive.Open(data);
        archive.WaitForIndex();
    }

    static FilledArchive& Of(int size) {
        static std::map<int, std::unique_ptr<FilledArchive>> made;
        auto& one = made[size];
        if (!one)
            one = std::make_unique<FilledArchive>(size);
        return *one;
    }

    QTemporaryDir folder;
    DataFolder data{folder.filePath(u"Kalvo"_s)};
    SystemClock clock;
    Archive archive{clock};
};

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
    state.SetLabel("duplicate check, database and index; target 250,000/s for the database part");
}

/** Tagged files, copies of one that the encoder made. */
class TaggedFiles {
public:
    TaggedFiles() {
        const QString first = folder_.filePath(u"first.mp3"_s);
        QProcess::execute(u"bash"_s,
                          {u"-c"_s, u"sox -n -r 44100 -c 2 -t wav - synth 20 sine 300 | lame --quiet -V 2 "
                                    "--tt Nachtlied --ta 'Die Künstler' --tl Album --ty 2004 --tg Rock --tn 3 "
                                    "--add-id3v2 --tc Kommentar - %1"_s.arg(first)});
        for (int i = 0; i < 20000; ++i) {
            const QString name = folder_.filePath(u"%1/%2.mp3"_s.arg(i / 100).arg(i));
            if (i % 100 == 0)
                QDir().mkpath(folder_.filePath(QString::number(i / 100)));
            if (!QFile::link(first, name))
                std::abort();
            paths_ << name;
        }
    }
    const QStringList& Paths() const { return paths_; }

private:
    QTemporaryDir folder_;
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
    state.SetLabel("files/s, warm; target 12,000");
}

BENCHMARK(SearchIndex)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(SearchLike)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Sort)->ArgsProduct({{100000, 1000000}, {1, 3, 5, 8, 11}})->Unit(benchmark::kMillisecond);
BENCHMARK(Load)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(AddTitles)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Import)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
