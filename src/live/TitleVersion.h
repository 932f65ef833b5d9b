#pragma once

#include <QString>

namespace kalvo {

/**
 * What all versions of a song have in common: artist and title without case, accents and punctuation, without guests
 * ("feat. ...") and without what names a version in brackets or behind a dash ("(Radio Edit)", " - Remastered 2011").
 * Other brackets belong to the title: "(Teil 2)" is another song. Empty without a title. Any thread.
 */
QString VersionKey(const QString& artist, const QString& title);

/** The artist alone in the same way; empty when unknown. */
QString ArtistKey(const QString& artist);

} // namespace kalvo
