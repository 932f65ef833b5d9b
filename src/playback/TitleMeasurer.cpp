#include "playback/TitleMeasurer.h"

#include "base/BackgroundPriority.h"

#include <QFile>

#include <utility>

namespace kalvo {

TitleMeasurer::TitleMeasurer(const QString& file, const Clock& clock, Measure measure, QObject* parent)
    : QObject(parent),
      measure_(measure),
      known_(file, TitleRows::Access::Read, clock),
      kept_(std::make_shared<Store>(file, TitleRows::Access::Write, clock)) {
    worker_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

TitleMeasurer::~TitleMeasurer() {
    *cancelled_ = true;
}

std::optional<audio::TitleMeasures> TitleMeasurer::Known(const QString& path) {
    const std::optional<MeasuredTitle> known = known_.Find(path);
    return known ? std::optional(known->measures) : std::nullopt;
}

void TitleMeasurer::Request(const QString& path) {
    if (waiting_.contains(path))
        return;
    waiting_.insert(path);
    worker_.Do([this, path, kept = kept_, measure = measure_, cancelled = cancelled_]() -> BackgroundWorker::Answer {
        const FileStamp stamp = FileStamp::Of(path);
        const std::optional<MeasuredTitle> before = kept->Find(path);
        const bool isUnchanged = before && stamp == before->stamp && stamp != FileStamp();
        const std::optional<audio::TitleMeasures> measures =
            isUnchanged ? before->measures : measure(QFile::encodeName(path).toStdString(), *cancelled);
        if (*cancelled)
            return {};
        if (measures && !isUnchanged)
            kept->Put(path, {stamp, *measures});
        return [this, path, measures] { Take(path, measures); };
    });
}

void TitleMeasurer::Learn(const QString& path, const MeasuredTitle& title) {
    worker_.Do([path, title, kept = kept_] {
        const std::optional<MeasuredTitle> known = kept->Find(path);
        if (!known || known->stamp != title.stamp)
            kept->Put(path, title);
        return BackgroundWorker::Answer();
    });
}

void TitleMeasurer::Take(const QString& path, const std::optional<audio::TitleMeasures>& measures) {
    if (waiting_.remove(path)) // else cancelled meanwhile
        Q_EMIT Measured(path, measures ? &*measures : nullptr);
}

void TitleMeasurer::Cancel() {
    *cancelled_ = true;
    cancelled_ = std::make_shared<std::atomic<bool>>(false);
    worker_.DropWaiting();
    waiting_.clear();
}

} // namespace kalvo
