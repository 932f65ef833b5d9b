#include "tags/HoverReader.h"

#include "tags/clsAudioGenie.h"

namespace kalvo {

namespace {

constexpr qsizetype kMostKnown = 200;
constexpr qint64 kLifetime = 30000; // ms

} // namespace

HoverReader::HoverReader(QObject* parent) : QObject(parent) {}
HoverReader::~HoverReader() = default;

const HoverInfo* HoverReader::Find(const QString& path) {
    const auto found = known_.constFind(path);
    if (found != known_.constEnd() && !found->age.hasExpired(kLifetime))
        return &found->info;
    if (reading_ == path)
        return nullptr;
    reading_ = path;
    worker_.DropWaiting();
    worker_.Do([this, path]() -> BackgroundWorker::Answer {
        clsAudioGenie tags;
        return [this, path, info = ReadHoverInfo(tags, path)] { Take(path, info); };
    });
    return nullptr;
}

void HoverReader::Take(const QString& path, const HoverInfo& info) {
    if (reading_ == path)
        reading_.clear();
    Forget(path);
    Known& known = known_[path];
    known.info = info;
    known.age.start();
    order_.append(path);
    if (order_.size() > kMostKnown)
        known_.remove(order_.takeFirst());
    Q_EMIT Ready(path);
}

void HoverReader::Forget(const QString& path) {
    if (known_.remove(path) > 0)
        order_.removeOne(path);
}

} // namespace kalvo
