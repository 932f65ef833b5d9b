#include "tags/PictureFile.h"

#include <QFile>
#include <QFileInfo>

namespace kalvo {

namespace {

constexpr qint64 kLargest = 16 << 20;

} // namespace

QString PictureMime(const QByteArray& bytes) {
    if (bytes.startsWith("\xFF\xD8\xFF"))
        return QStringLiteral("image/jpeg");
    if (bytes.startsWith("\x89PNG\r\n"))
        return QStringLiteral("image/png");
    if (bytes.startsWith("GIF8"))
        return QStringLiteral("image/gif");
    return {};
}

std::optional<TagPicture> ReadPictureFile(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > kLargest)
        return std::nullopt;
    TagPicture picture;
    picture.bytes = file.readAll();
    picture.mime = PictureMime(picture.bytes);
    if (picture.mime.isEmpty())
        return std::nullopt;
    return picture;
}

} // namespace kalvo
