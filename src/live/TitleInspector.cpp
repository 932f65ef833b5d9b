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

TitleInspector::TitleInspector(QString file, BackgroundWriter& writer, const Clock& clock, Inspect inspect,
                               QObject* parent)
    : QObject(parent), inspect_(inspect), store_(std::move(file), writer, clock) {
    worker_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

TitleInspector::~TitleInspector() {
    *cancelled_ = true;
    store_.Keep();
}

void TitleInspector::Request(const QString& path) {
    if (waiting_.contains(path))
        return;
    waiting_.insert(path);
    const InspectedTitle* known = store_.Find(path);
    const InspectedTitle before = known != nullptr && IsLasting(*known) ? *known : InspectedTitle();
    worker_.Do([this, path, before, inspect = inspect_, cancelled = cancelled_]() -> BackgroundWorker::Answer {
        InspectedTitle title{FileStamp::Of(path), {}};
        if (title.stamp == before.stamp) {
            title = before;
        } else if (!title.IsMissing()) {
            const auto found = inspect(QFile::encodeName(path).toStdString(), *cancelled);
            title.found = found.value_or(audio::TitleInspection());
        }
        if (*cancelled)
            return {};
        return [this, path, title] { Take(path, title); };
    });
}

void TitleInspector::Take(const QString& path, const InspectedTitle& title) {
    if (!waiting_.remove(path))
        return; // cancelled meanwhile
    const InspectedTitle* known = store_.Find(path);
    if (IsLasting(title) && (known == nullptr || *known != title)) {
        store_.Put(path, title);
    }
    if (waiting_.isEmpty())
        store_.Keep();
    Q_EMIT Inspected(path, title);
}

void TitleInspector::Cancel() {
    *cancelled_ = true;
    cancelled_ = std::make_shared<std::atomic<bool>>(false);
    worker_.DropWaiting();
    waiting_.clear();
    store_.Keep();
}

} // namespace kalvo
