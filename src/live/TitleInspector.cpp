#include "live/TitleInspector.h"

#include "base/BackgroundPriority.h"

#include <QFile>

#include <utility>

namespace kalvo {

namespace {

/** What could not be read, or not to its end, may have been the disk's fault, which the file's stamp does not tell. */
bool IsLasting(const InspectedTitle& title) {
    return !title.IsMissing() && title.found.decoded > 0 && !title.found.broken;
}

} // namespace

TitleInspector::TitleInspector(const QString& file, const Clock& clock, Inspect inspect, QObject* parent)
    : QObject(parent), inspect_(inspect), kept_(std::make_shared<Store>(file, TitleRows::Access::Write, clock)) {
    worker_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

TitleInspector::~TitleInspector() {
    *cancelled_ = true;
}

void TitleInspector::Request(const QString& path) {
    if (waiting_.contains(path))
        return;
    waiting_.insert(path);
    worker_.Do([this, path, kept = kept_, inspect = inspect_, cancelled = cancelled_]() -> BackgroundWorker::Answer {
        InspectedTitle title{FileStamp::Of(path), {}};
        const std::optional<InspectedTitle> before = kept->Find(path);
        if (before && IsLasting(*before) && before->stamp == title.stamp) {
            title = *before;
        } else if (!title.IsMissing()) {
            const auto found = inspect(QFile::encodeName(path).toStdString(), *cancelled);
            title.found = found.value_or(audio::TitleInspection());
        }
        if (*cancelled)
            return {};
        if (IsLasting(title) && before != title)
            kept->Put(path, title);
        return [this, path, title] { Take(path, title); };
    });
}

void TitleInspector::Take(const QString& path, const InspectedTitle& title) {
    if (waiting_.remove(path)) // else cancelled meanwhile
        Q_EMIT Inspected(path, title);
}

void TitleInspector::Cancel() {
    *cancelled_ = true;
    cancelled_ = std::make_shared<std::atomic<bool>>(false);
    worker_.DropWaiting();
    waiting_.clear();
}

} // namespace kalvo
