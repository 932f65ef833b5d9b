#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace kalvo {

/** A place in a recording at which a title begins. */
struct CueTrack {
    QString file; ///< name of the sound file, without its folder
    QString title;
    QString artist;
    double seconds = 0; ///< from the start of that file
};

/**
 * Text of a cue sheet in UTF-8 with a byte order mark, lines end in CR LF. Tracks of one file stand together and in the
 * order of time. What precedes a file's first title belongs to that as its pregap, so that nothing is left out.
 */
QByteArray CueSheetText(const QList<CueTrack>& tracks);

} // namespace kalvo
