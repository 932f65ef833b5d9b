#pragma once

#include "tags/TitleRecord.h"

#include <optional>

namespace kalvo {

class clsAudioGenie;

/** The longer of two texts; the second one (ID3v2) where both are equally long. */
QString ChooseByLength(const QString& id3v1, const QString& id3v2);

/** Of the current file: the text of the last comment described as "MusicMatch_Preference", exactly so. */
QString RatingOf(const clsAudioGenie& tags);
/** Of the current file: the first comment meant for people; players keep data of their own in described ones. */
QString CommentOf(const clsAudioGenie& tags);

/**
 * Analyses the file and chooses the fields of its archive record, uncut. `Nr` and `Extra2` stay empty. No value when
 * the file holds no sound.
 */
std::optional<TitleRecord> ReadTitleFields(clsAudioGenie& tags, const QString& path);

} // namespace kalvo
