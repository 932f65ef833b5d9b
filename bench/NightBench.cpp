// A night at the desk, many times faster than it lasts: random titles, a user of many whims, missing files, a disk that
// is pulled out. Prints what went wrong and ends with 1 when something did.
//   bench_night [hours] [seed]     12 hours unless told; a seed of its own each time

#include "audio/AudioLibraryImpl.h"
#include "playback/Night.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv) {
    using Clock = std::chrono::steady_clock;
    constexpr double kMegabyte = 1e6;
    constexpr std::size_t kMemoryKept = 8'000'000;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const double hours = arguments.size() > 1 ? arguments.at(1).toDouble() : 12;
    const unsigned seed = arguments.size() > 2 ? arguments.at(2).toUInt() : std::random_device()();
    const auto begin = Clock::now();
    const kalvo::test::NightReport night =
        kalvo::test::Night(std::make_unique<kalvo::audio::AudioLibraryImpl>(), seed).Run(hours * 3600);
    const double taken = std::chrono::duration<double>(Clock::now() - begin).count();
    for (const QString& fault : night.faults)
        std::printf("%s\n", fault.toLocal8Bit().constData());
    std::printf("seed %u: %.2f h in %.0f s (%.0f times as fast), %d titles, %d acts, %d rescues\n", seed,
                night.seconds / 3600, taken, night.seconds / taken, night.titles, night.acts, night.rescues);
    std::printf("longest silence %.3f s, largest bend %.5f, memory %.1f MB -> %.1f MB, %d faults\n",
                night.longestSilence, night.largestBend, static_cast<double>(night.memoryEarly) / kMegabyte,
                static_cast<double>(night.memoryLate) / kMegabyte, static_cast<int>(night.faults.size()));
    const bool isFlat = night.memoryLate < night.memoryEarly + kMemoryKept;
    return night.faults.isEmpty() && isFlat ? 0 : 1;
}
