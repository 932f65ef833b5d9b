#include "live/TitleInspector.h"

#include <QFile>

namespace kalvo {

namespace {

/** What could not be read, or not to its end, may have been the disk's fault, which the file's stamp does not tell. */
bool IsLasting(const InspectedTitle& title) {
    return !title.IsMissing() && title.found.decoded > 0 && !title.found.broken;
}

} // namespace

TitleInspector::TitleInspector(const QString& file, const Clock& clock, Inspect inspect, QObject* parent)
    : QObject(parent), inspect_(inspect), kept_(std::make_shared<Store>(file, TitleRows::Access::Write, clock)) {}

void TitleInspector::Request(const QString& path) {
    queue_.Request(path, [this, path, kept = kept_, inspect = inspect_](const std::atomic<bool>& cancelled) {
        InspectedTitle title{FileStamp::Of(path), {}};
        const std::optional<InspectedTitle> before = kept->Find(path);
        if (before && IsLasting(*before) && before->stamp == title.stamp) {
            title = *before;
        } else if (!title.IsMissing()) {
            const auto found = inspect(QFile::encodeName(path).toStdString(), cancelled);
            title.found = found.value_or(audio::TitleInspection());
        }
        if (!cancelled && IsLasting(title) && before != title)
            kept->Put(path, title);
        return [this, path, title] { Q_EMIT Inspected(path, title); };
    });
}

} // namespace kalvo
