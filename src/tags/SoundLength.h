#pragma once

#include <QString>

#include <mpegfile.h>
#include <oggfile.h>

/**
 * Exact lengths in seconds at the speed of an import: from the headers where these can be trusted, else by the scan
 * that decoding itself uses. 0 when there is no sound.
 */
namespace kalvo::SoundLength {

/**
 * A Xing header counts when the file is as long as it says; without one a constant bit rate, found at places all over
 * the file, tells the length.
 */
double OfMpeg(TagLib::MPEG::File& file, const QString& path);
/** seconds: from the places of the first and the last page, which are checked here. */
double OfOgg(TagLib::Ogg::File& file, double seconds, const QString& path);

} // namespace kalvo::SoundLength
