#include "playback/TitleMeasurer.h"

#include "base/BackgroundPriority.h"

#include <QFile>

#include <utility>

namespace kalvo {

namespace {

constexpr int kKeepAfter = 10000; // ms

} // namespace

TitleMeasurer::TitleMeasurer(QString file, BackgroundWriter& writer, const Clock& clock, Measure measure,
                             QObject* parent)
    : QObject(parent), measure_(measure), store_(std::move(file), writer, clock) {
    keepSoon_.setSingleShot(true);
    keepSoon_.setInterval(kKeepAfter);
    connect(&keepSoon_, &QTimer::timeout, this, [this] { store_.Keep(); });
    worker_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

TitleMeasurer::~TitleMeasurer() {
    *cancelled_ = true;
    store_.Keep();
}

std::optional<audio::TitleMeasures> TitleMeasurer::Known(const QString& path) const {
    const MeasuredTitle* known = store_.Find(path);
    return known == nullptr ? std::nullopt : std::optional(known->measures);
}

void TitleMeasurer::Request(const QString& path) {
    if (waiting_.contains(path))
        return;
    waiting_.insert(path);
    const MeasuredTitle* known = store_.Find(path);
    const MeasuredTitle before = known == nullptr ? MeasuredTitle() : *known;
    worker_.Do([this, path, before, measure = measure_, cancelled = cancelled_]() -> BackgroundWorker::Answer {
        const FileStamp stamp = FileStamp::Of(path);
        const bool isUnchanged = stamp == before.stamp && stamp != FileStamp();
        const std::optional<audio::TitleMeasures> measures =
            isUnchanged ? before.measures : measure(QFile::encodeName(path).toStdString(), *cancelled);
        if (*cancelled)
            return {};
        return [this, path, stamp, measures] { Take(path, stamp, measures); };
    });
}

void TitleMeasurer::Learn(const QString& path, const MeasuredTitle& title) {
    const MeasuredTitle* known = store_.Find(path);
    if (known != nullptr && known->stamp == title.stamp)
        return;
    store_.Put(path, title);
    if (!keepSoon_.isActive())
        keepSoon_.start();
}

void TitleMeasurer::Take(const QString& path, const FileStamp& stamp,
                         const std::optional<audio::TitleMeasures>& measures) {
    if (!waiting_.remove(path))
        return; // cancelled meanwhile
    if (measures)
        Learn(path, {stamp, *measures});
    Q_EMIT Measured(path, measures ? &*measures : nullptr);
}

void TitleMeasurer::Cancel() {
    *cancelled_ = true;
    cancelled_ = std::make_shared<std::atomic<bool>>(false);
    worker_.DropWaiting();
    waiting_.clear();
}

} // namespace kalvo
