#include "playback/CoverPicture.h"

#include "tags/PictureFile.h"
#include "tags/TagReader.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

namespace kalvo {

namespace {

constexpr int kFrontCover = 3; // the tags' own number of this kind

QImage Decoded(QByteArray bytes) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    const QSize most(kCoverPixels, kCoverPixels);
    if (size.isValid() && (size.width() > kCoverPixels || size.height() > kCoverPixels))
        reader.setScaledSize(size.scaled(most, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    return reader.read();
}

QImage FromTags(const QString& titlePath) {
    const QList<TagPicture> pictures = ReadTags(titlePath).pictures;
    for (const TagPicture& picture : pictures) {
        if (picture.type != kFrontCover)
            continue;
        if (QImage image = Decoded(picture.bytes); !image.isNull())
            return image;
    }
    for (const TagPicture& picture : pictures) {
        if (QImage image = Decoded(picture.bytes); !image.isNull())
            return image;
    }
    return {};
}

QImage FromFolder(const QString& titlePath) {
    const QDir folder = QFileInfo(titlePath).absoluteDir();
    const QStringList names{QStringLiteral("cover.*"), QStringLiteral("folder.*"), QStringLiteral("front.*")};
    const QStringList files = folder.entryList(names, QDir::Files | QDir::Readable, QDir::Name | QDir::IgnoreCase);
    for (const QString& file : files) {
        if (const std::optional<TagPicture> picture = ReadPictureFile(folder.filePath(file))) {
            if (QImage image = Decoded(picture->bytes); !image.isNull())
                return image;
        }
    }
    return {};
}

} // namespace

QImage ReadCover(const QString& titlePath) {
    const QImage image = FromTags(titlePath);
    return image.isNull() ? FromFolder(titlePath) : image;
}

} // namespace kalvo
