#pragma once

#include <QImage>
#include <QString>

namespace kalvo {

/** Longest side of a cover in pixels: enough for the largest deck at twice the resolution. */
constexpr int kCoverPixels = 512;

/**
 * The cover of a title, no larger than kCoverPixels: the front cover of its tags, else their first picture, else a file
 * "cover", "folder" or "front" (JPEG, PNG) in its folder. Null when there is none that can be shown. Any thread; waits
 * for the disk.
 */
QImage ReadCover(const QString& titlePath);

} // namespace kalvo
