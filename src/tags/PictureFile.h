#pragma once

#include "tags/TagData.h"

#include <optional>

namespace kalvo {

/** The MIME type of a picture by its first bytes: JPEG, PNG, GIF, else empty. */
QString PictureMime(const QByteArray& bytes);

/** Bytes and MIME type of a picture file; none when it cannot be read, is no such picture or has more than 16 MiB. */
std::optional<TagPicture> ReadPictureFile(const QString& path);

} // namespace kalvo
