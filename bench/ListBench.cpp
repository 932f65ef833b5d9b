// How fast the lists and the play statistics work. Targets: a play counted in 100,000 records at most 2 ms; shuffle,
// save and load of 10,000 entries at most 20, 100 and 100 ms.

#include "playlists/ChartsFile.h"
#include "playlists/ListUndo.h"
#include "playlists/M3uReader.h"
#include "playlists/M3uWriter.h"
#include "playlists/NextTitle.h"
#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

using namespace kalvo;

constexpr int entryCount = 10000;
constexpr int recordCount = 100000;
constexpr int recordLength = 392;

QString PathOf(int number) {
    return QStringLiteral("/home/dj/Musik/Interpret %1/Album %2/%3 - Titel.mp3")
        .arg(number / 40)
        .arg(number / 12)
        .arg(number);
}

QList<PlaylistEntry> Entries() {
    QList<PlaylistEntry> entries;
    for (int number = 0; number < entryCount; ++number) {
        entries.append({QStringLiteral("Titel %1").arg(number),
                        QStringLiteral("Interpret %1").arg(number / 40),
                        QStringLiteral("03:%1").arg(number % 60, 2, 10, QChar(u'0')),
                        {},
                        {},
                        PathOf(number)});
    }
    return entries;
}

class NoQuestions final : public PlaylistQuestions {
public:
    void Tell(const QString&) override {}
    QString Ask(const QString&, const QString&) override { return QStringLiteral("Ja"); }
};

struct Lists {
    SystemRandom random;
    Playlist first{1, random};
    Playlist second{2, random};
    NoQuestions questions;
    PlaylistActions actions{first, second, questions};
};

/** Written in one go, record by record would take its time. */
void WriteCharts(const QString& path) {
    QByteArray bytes;
    bytes.reserve(recordCount * recordLength);
    for (int number = 0; number < recordCount; ++number) {
        QByteArray record(32, ' ');
        record += PathOf(number).toUtf8().leftJustified(200, ' ') + QByteArray(100, ' ') + QByteArray(8, '\0');
        bytes += record.leftJustified(recordLength, ' ');
    }
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

void CountPlay(benchmark::State& state) {
    const QTemporaryDir folder;
    const SystemClock clock;
    const QString path = folder.filePath(QStringLiteral("Charts"));
    WriteCharts(path);
    ChartsFile charts(path, clock);
    charts.Prepare();
    int number = 0;
    for (auto _ : state) {
        number = (number + 7919) % (recordCount + 1000); // one in a hundred is new at first
        if (!charts.Count(PlaySource::Player1, PathOf(number), QStringLiteral("Titel"), {}, clock.Now()))
            state.SkipWithError("not counted");
    }
}

void ReadWhereThePathsStand(benchmark::State& state) {
    const QTemporaryDir folder;
    const SystemClock clock;
    const QString path = folder.filePath(QStringLiteral("Charts"));
    WriteCharts(path);
    for (auto _ : state) {
        ChartsFile charts(path, clock);
        charts.Prepare();
    }
}

void AddTitles(benchmark::State& state) {
    QList<TitleRecord> titles(entryCount);
    for (int number = 0; number < entryCount; ++number)
        titles[number].Pfad = PathOf(number);
    for (auto _ : state) {
        Lists lists;
        lists.actions.AddTitles(1, titles, {});
        benchmark::DoNotOptimize(lists.first.Count());
    }
}

void Shuffle(benchmark::State& state) {
    Lists lists;
    lists.first.Append(Entries());
    for (auto _ : state)
        lists.actions.Shuffle();
}

void UndoShuffle(benchmark::State& state) {
    Lists lists;
    lists.first.Append(Entries());
    lists.actions.Shuffle();
    for (auto _ : state) {
        lists.actions.Undo().Stack().undo();
        lists.actions.Undo().Stack().redo();
    }
}

void TakeNext(benchmark::State& state) {
    Lists lists;
    lists.first.Append(Entries());
    for (auto _ : state) {
        const int row = TakeNextTitle(lists.first, false, [](const QString&) { return true; });
        lists.first.SetCurrent(row < 0 ? 0 : row);
    }
}

void Save(benchmark::State& state) {
    const QTemporaryDir folder;
    const SystemClock clock;
    PlaylistFile file(folder.filePath(QStringLiteral("a.wil")), clock);
    const PlaylistFile::Lists lists{Entries(), {}};
    for (auto _ : state) {
        if (file.Save(lists).outcome != PlaylistFile::Outcome::Done)
            state.SkipWithError("not saved");
    }
}

void Load(benchmark::State& state) {
    const QTemporaryDir folder;
    const SystemClock clock;
    PlaylistFile file(folder.filePath(QStringLiteral("a.wil")), clock);
    file.Save({Entries(), {}});
    for (auto _ : state) {
        PlaylistFile::Lists lists;
        file.Load(lists);
        if (lists[0].size() != entryCount)
            state.SkipWithError("not loaded");
    }
}

void ReadPlaylist(benchmark::State& state) {
    const QByteArray bytes = WriteM3u(
        Entries(), [](const QString&) { return 200.0; }, false);
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadM3u(bytes, QStringLiteral("/m/a.m3u")).size());
}

BENCHMARK(CountPlay)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadWhereThePathsStand)->Unit(benchmark::kMillisecond);
BENCHMARK(AddTitles)->Unit(benchmark::kMillisecond);
BENCHMARK(Shuffle)->Unit(benchmark::kMillisecond);
BENCHMARK(UndoShuffle)->Unit(benchmark::kMillisecond);
BENCHMARK(TakeNext)->Unit(benchmark::kMillisecond);
BENCHMARK(Save)->Unit(benchmark::kMillisecond);
BENCHMARK(Load)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadPlaylist)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
