// How fast the archive answers, loads and takes titles in. Targets stand in the labels.

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
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cmath>
#include <map>
#include <random>
#include <utility>

namespace {

using namespace kalvo;
using namespace Qt::StringLiterals;

/**
 * Titles as in a grown collection: German and English words as often as they occur in song titles, few genres and
 * years, about an artist per fifty titles, a folder per album, now and then the same title on another album.
 */
class Collection {
public:
    explicit Collection(int size) : artists_(1 + size / 50) {}

    TitleRecord Record(int i) {
        const int album = i / 12;
        if (i % 12 == 0) {
            artist_ = Artist(static_cast<int>(random_() % static_cast<std::uint32_t>(artists_)));
            album_ = Words(1 + static_cast<int>(random_() % 3));
        }
        TitleRecord record;
        record.Titel =
            random_() % 20 == 0 && !known_.isEmpty() ? Pick(known_) : Words(1 + static_cast<int>(random_() % 4));
        if (known_.size() < 1000)
            known_ << record.Titel;
        record.Interpret = artist_;
        record.Album = album_;
        record.Bewertung = QString::number(random_() % 6);
        record.Stil = Pick(
            u"Rock Pop Schlager Disco House Techno Jazz Blues Soul Funk Reggae Latin Walzer Tango Folk"_s.split(u' '));
        record.Zeit = u"%1:%2"_s.arg(2 + random_() % 6, 2, 10, QChar(u'0')).arg(random_() % 60, 2, 10, QChar(u'0'));
        record.Jahr = QString::number(1960 + album % 66);
        record.Pfad = u"/%1/%2 %3/%4 - %5.mp3"_s.arg(artist_, album_)
                          .arg(album)
                          .arg(i % 12 + 1, 2, 10, QChar(u'0'))
                          .arg(record.Titel);
        record.Extra1 = random_() % 10 == 0 ? Words(3).left(50) : QString();
        record.Extra3 = QString::number(i % 12 + 1);
        record.Extra4 = QString::number(80 + random_() % 90);
        return record;
    }

private:
    const QString& Pick(const QStringList& list) {
        return list.at(static_cast<qsizetype>(random_() % static_cast<std::uint32_t>(list.size())));
    }

    /** The earlier a word, the more often it is taken, as in a language. */
    QString Words(int count) {
        static const QStringList words =
            (u"the love you me I in my to of and on Liebe a it Nacht ich du night heart die der don't Herz time day "
             u"baby "
             "das Leben nicht dance with girl like life Tanz is for Sonne ein world down er song blue Mädchen Sommer "
             "wie "
             "für away home rain Himmel never I'm it's fire über Stern tanzt good Sehnsucht free Träume wild eyes "
             "schön "
             "Regen stay Männer Straße city kiss Feuer dream Welt river Meer light lonely Glück Abend summer König "
             "zwei "
             "moon stars gone Traum soul Wind morgen heute back rock 'n' roll Lied gold Rosen Augen paradise Engel "
             "forever Küsse tears Schnee Hölle party Königin train devil angel Zürich Berlin Hamburg Mond grün Öl "
             "mystery jump shadow Zauber ewig Fernweh Boulevard thunder Wahnsinn Gefühl Lügen Wunder Zeit geht vorbei"_s)
                .split(u' ');
        QStringList taken;
        for (; count > 0; --count) {
            const double place = std::pow(std::uniform_real_distribution<double>(0, 1)(random_), 2.0);
            QString word = words.at(static_cast<qsizetype>(place * static_cast<double>(words.size() - 1)));
            if (random_() % 6 == 0)
                word += Pick(u"s en er ing chen heit y ung lied tanz"_s.split(u' '));
            word[0] = word.at(0).toUpper();
            taken << word;
        }
        return taken.join(u' ');
    }

    QString Artist(int number) {
        const std::mt19937 kept = std::exchange(random_, std::mt19937(static_cast<unsigned>(number)));
        const QString name = (random_() % 4 ? QString() : u"Die "_s) + Words(1 + number % 2) + u" %1"_s.arg(number);
        random_ = kept;
        return name;
    }

    int artists_;
    std::mt19937 random_{42};
    QString artist_;
    QString album_;
    QStringList known_;
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
            record.Pfad = Music() + record.Pfad;
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

    /** Makes the titles' files, once. */
    void CreateFiles() {
        if (std::exchange(filesCreated, true))
            return;
        Collection collection(static_cast<int>(archive.Count()));
        QString made;
        for (qint64 i = 0; i < archive.Count(); ++i) {
            const QString path = Music() + collection.Record(static_cast<int>(i)).Pfad;
            if (const QString folderOf = QFileInfo(path).path(); folderOf != made)
                QDir().mkpath(made = folderOf);
            QFile file(path);
            if (!file.open(QIODevice::WriteOnly))
                std::abort();
        }
    }
    QString Music() const { return folder.filePath(u"Musik"_s); }

    bool filesCreated = false;
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
BENCHMARK(Load)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BuildCategories)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Duplicates)
    ->ArgsProduct({{100000, 1000000}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);
BENCHMARK(AddTitles)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Import)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
