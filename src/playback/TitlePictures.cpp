#include "playback/TitlePictures.h"

#include "playback/CoverPicture.h"
#include "playback/WaveformCache.h"
#include "playback/WaveformScan.h"

#include <system_error>
#include <utility>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#endif

namespace kalvo {

namespace {

/** From now on the calling thread works only when no other wants to. */
void GiveWay() {
#ifdef Q_OS_LINUX
    ::setpriority(PRIO_PROCESS, 0, 15); // there it means the thread
#endif
}

std::shared_ptr<WaveformScan> BeginScan(const QString& path) {
    try {
        return std::make_shared<WaveformScan>(path);
    } catch (const std::system_error&) { // no further thread
        return nullptr;
    }
}

} // namespace

TitlePictures::TitlePictures(const QString& cacheFolder, QObject* parent)
    : QObject(parent), cacheFolder_(cacheFolder) {}

TitlePictures::~TitlePictures() {
    Cancel();
}

void TitlePictures::Cancel() {
    worker_.DropWaiting();
    if (const std::shared_ptr<WaveformScan> scan = std::exchange(scan_, nullptr))
        scan->Cancel();
}

void TitlePictures::Show(const QString& path) {
    if (path == path_)
        return;
    Cancel();
    path_ = path;
    wave_.reset();
    if (!std::exchange(cover_, {}).isNull())
        Q_EMIT CoverChanged();
    if (path.isEmpty())
        return;
    worker_.Do([this, path, folder = cacheFolder_]() -> BackgroundWorker::Answer {
        GiveWay();
        const std::optional<Waveform> known = WaveformCache(folder).Find(path);
        const auto wave = known ? std::make_shared<const Waveform>(*known) : nullptr;
        return [this, path, wave] { wave ? TakeWave(path, wave) : Measure(path); };
    });
    worker_.Do([this, path]() -> BackgroundWorker::Answer {
        return [this, path, cover = ReadCover(path)] { TakeCover(path, cover); };
    });
}

void TitlePictures::TakeCover(const QString& path, const QImage& cover) {
    if (path != path_ || cover.isNull())
        return;
    cover_ = cover;
    Q_EMIT CoverChanged();
}

void TitlePictures::TakeWave(const QString& path, std::shared_ptr<const Waveform> wave) {
    if (path == path_)
        wave_ = std::move(wave);
}

void TitlePictures::Measure(const QString& path) {
    if (path != path_)
        return;
    scan_ = BeginScan(path);
    if (scan_)
        MeasureOn(path, scan_);
}

void TitlePictures::MeasureOn(const QString& path, const std::shared_ptr<WaveformScan>& scan) {
    worker_.Do([this, path, scan, folder = cacheFolder_]() -> BackgroundWorker::Answer {
        const WaveformScan::State state = scan->Step();
        const auto wave = std::make_shared<const Waveform>(scan->Result());
        if (state == WaveformScan::State::Complete) {
            const WaveformCache cache(folder);
            cache.Keep(path, *wave);
            cache.Trim();
        }
        return [this, path, scan, state, wave] {
            if (scan != scan_)
                return;
            if (wave->known > 0)
                TakeWave(path, wave);
            if (state == WaveformScan::State::Running)
                MeasureOn(path, scan);
            else
                scan_.reset();
        };
    });
}

} // namespace kalvo
