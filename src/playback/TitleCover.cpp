#include "playback/TitleCover.h"

#include "playback/CoverPicture.h"

namespace kalvo {

namespace {

constexpr int kRestMilliseconds = 150;

} // namespace

TitleCover::TitleCover(QObject* parent) : QObject(parent) {
    rest_.setSingleShot(true);
    rest_.setInterval(kRestMilliseconds);
    connect(&rest_, &QTimer::timeout, this, &TitleCover::Read);
}

void TitleCover::Show(const QString& path) {
    worker_.DropWaiting();
    rest_.stop();
    if (path != path_)
        Q_EMIT Changed({});
    path_ = path;
    if (!path.isEmpty())
        rest_.start();
}

void TitleCover::Read() {
    worker_.Do([this, path = path_]() -> BackgroundWorker::Answer {
        return [this, path, cover = ReadCover(path)] {
            if (path == path_) // else it has been overtaken
                Q_EMIT Changed(cover);
        };
    });
}

} // namespace kalvo
