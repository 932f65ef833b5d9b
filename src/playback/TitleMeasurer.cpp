#include "playback/TitleMeasurer.h"

#include "base/BackgroundPriority.h"
#include "base/BackgroundWriter.h"
#include "base/SetAside.h"

#include <QFile>

#include <utility>

namespace kalvo {

namespace {

constexpr int kKeepAfter = 10000; // ms

MeasureStore ReadStore(const QString& path, const Clock& clock) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const std::optional<MeasureStore> store = MeasureStore::FromJson(file.readAll());
    file.close();
    if (!store)
        SetAside(path, clock);
    return store.value_or(MeasureStore());
}

} // namespace

TitleMeasurer::TitleMeasurer(QString file, BackgroundWriter& writer, const Clock& clock, Measure measure,
                             QObject* parent)
    : QObject(parent), file_(std::move(file)), writer_(writer), measure_(measure), store_(ReadStore(file_, clock)) {
    keepSoon_.setSingleShot(true);
    keepSoon_.setInterval(kKeepAfter);
    connect(&keepSoon_, &QTimer::timeout, this, &TitleMeasurer::Keep);
    worker_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

TitleMeasurer::~TitleMeasurer() {
    *cancelled_ = true;
    Keep();
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
    changed_ = true;
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

void TitleMeasurer::Keep() {
    if (std::exchange(changed_, false))
        writer_.Write(file_, store_.ToJson());
}

} // namespace kalvo
