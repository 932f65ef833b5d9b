#pragma once

#include <QList>
#include <QString>

namespace kalvo {

/** Table of contents of an audio CD, in sectors of 1/75 second. */
struct DiscToc {
    QList<int> offsets; ///< start of each track, from the disc's very begin on: the first is usually 150
    int leadOut = 0;    ///< end of the last track, counted likewise

    bool operator==(const DiscToc& other) const { return offsets == other.offsets && leadOut == other.leadOut; }

    /** One to 99 tracks, none before the one in front of it, the end behind the last one. */
    bool IsValid() const;
    /** Whole seconds up to the lead-out. */
    int Seconds() const;
    /**
     * The common disc id, eight hexadecimal digits in lower case: checksum of the tracks' starting seconds, playing
     * time, number of tracks. Different discs may have the same one. Empty when the table is not valid.
     */
    QString DiscId() const;
};

/** Whether the text is a disc id: eight hexadecimal digits in lower case. */
bool IsDiscId(const QString& text);

} // namespace kalvo
