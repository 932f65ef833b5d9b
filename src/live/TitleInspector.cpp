#include "live/TitleInspector.h"

#include "base/BackgroundPriority.h"
#include "base/BackgroundWriter.h"
#include "base/SetAside.h"

#include <QFile>

#include <utility>

namespace kalvo {

namespace {

InspectionStore ReadStore(const QString& path, const Clock& clock) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const std::optional<InspectionStore> store = InspectionStore::FromJson(file.readAll());
    file.close();
    if (!store)
        SetAside(path, clock);
    return store.value_or(InspectionStore());
}

/** What could not be read, or not to its end, may have been the disk's fault, which the file's stamp does not tell. */
bool IsLasting(const InspectedTitle& title) {
    return !title.IsMissing() && title.found.decoded > 0 && !title.found.broken;
}

} // namespace

TitleInspector::TitleInspector(QString file, BackgroundWriter& writer, const Clock& clock, Inspect inspect,
                               QObject* parent)
    : QObject(parent), file_(std::move(file)), writer_(writer), inspect_(inspect), store_(ReadStore(file_, clock)) {
    worker_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

TitleInspector::~TitleInspector() {
    *cancelled_ = true;
    Keep();
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
        changed_ = true;
    }
    if (waiting_.isEmpty())
        Keep();
    Q_EMIT Inspected(path, title);
}

void TitleInspector::Cancel() {
    *cancelled_ = true;
    cancelled_ = std::make_shared<std::atomic<bool>>(false);
    worker_.DropWaiting();
    waiting_.clear();
    Keep();
}

void TitleInspector::Keep() {
    if (std::exchange(changed_, false))
        writer_.Write(file_, store_.ToJson());
}

} // namespace kalvo
