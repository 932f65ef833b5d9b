#include "playback/TitleMeasurer.h"

#include <QFile>

namespace kalvo {

TitleMeasurer::TitleMeasurer(const QString& file, const Clock& clock, Measure measure, QObject* parent)
    : QObject(parent),
      measure_(measure),
      known_(file, TitleRows::Access::Read, clock),
      kept_(std::make_shared<Store>(file, TitleRows::Access::Write, clock)) {}

std::optional<audio::TitleMeasures> TitleMeasurer::Known(const QString& path) {
    const std::optional<MeasuredTitle> known = known_.Find(path);
    return known ? std::optional(known->measures) : std::nullopt;
}

void TitleMeasurer::Request(const QString& path) {
    queue_.Request(path, [this, path, kept = kept_, measure = measure_](const std::atomic<bool>& cancelled) {
        const FileStamp stamp = FileStamp::Of(path);
        const std::optional<MeasuredTitle> before = kept->Find(path);
        const bool isUnchanged = before && stamp == before->stamp && stamp != FileStamp();
        const std::optional<audio::TitleMeasures> measures =
            isUnchanged ? before->measures : measure(QFile::encodeName(path).toStdString(), cancelled);
        if (measures && !isUnchanged)
            kept->Put(path, {stamp, *measures});
        return [this, path, measures] { Q_EMIT Measured(path, measures ? &*measures : nullptr); };
    });
}

void TitleMeasurer::Learn(const QString& path, const MeasuredTitle& title) {
    queue_.Do([path, title, kept = kept_] {
        const std::optional<MeasuredTitle> known = kept->Find(path);
        if (!known || known->stamp != title.stamp)
            kept->Put(path, title);
        return BackgroundWorker::Answer();
    });
}

} // namespace kalvo
