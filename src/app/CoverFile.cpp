#include "app/CoverFile.h"

#include "playback/CoverPicture.h"

#include <QFile>
#include <QImage>
#include <QUrl>

namespace kalvo {

namespace {

constexpr int kQuality = 90;

/** Path of the picture, empty when there is none. */
QString Save(const QString& titlePath, const QString& path) {
    const QImage cover = ReadCover(titlePath);
    return !cover.isNull() && cover.save(path, "JPG", kQuality) ? path : QString();
}

} // namespace

CoverFile::CoverFile(QObject* parent) : QObject(parent) {}

void CoverFile::Show(const QString& titlePath) {
    const auto name = [this] { return folder_.filePath(QStringLiteral("%1.jpg").arg(number_)); };
    const QString before = name();
    ++number_;
    worker_.DropWaiting();
    worker_.Do([this, titlePath, before, path = name(), number = number_] {
        QFile::remove(before);
        const QString saved = titlePath.isEmpty() ? QString() : Save(titlePath, path);
        return [this, saved, number] {
            if (number == number_) // else it has been overtaken
                Q_EMIT Changed(saved.isEmpty() ? QString() : QUrl::fromLocalFile(saved).toString());
        };
    });
}

} // namespace kalvo
