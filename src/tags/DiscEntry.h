#pragma once

#include "tags/DiscToc.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace kalvo {

struct DiscTrack {
    QString title;
    QString extended; ///< further text, may have several lines

    bool operator==(const DiscTrack& other) const { return title == other.title && extended == other.extended; }
};

/** What is known of one disc. */
struct DiscEntry {
    QStringList discIds; ///< the same disc may be known under several
    DiscToc toc;         ///< empty where the file does not tell; the lead-out is then known to the second only
    int revision = 0;    ///< raised by whoever changes the entry
    QString artist;
    QString title;
    QString year;
    QString genre;
    QString extended; ///< further text, may have several lines
    QList<DiscTrack> tracks;
    QString playOrder;                       ///< track numbers from 0, separated by commas; empty = as on the disc
    QStringList comments;                    ///< other comment lines, without "#"
    QList<std::pair<QString, QString>> more; ///< keys that nobody here knows, in their order
};

/**
 * The text form of an entry, called xmcd: comment lines, then "KEY=value", values of repeated keys joined.
 * Any thread.
 */
namespace DiscText {

/**
 * UTF-8 or Latin-1, all forms of line ends. Nothing when it does not begin with "# xmcd" or names no disc id. Broken
 * lines are kept as comments.
 */
std::optional<DiscEntry> Parse(const QByteArray& bytes);

/** UTF-8; no line longer than 80 characters, longer values go on under the same key. */
QByteArray Encode(const DiscEntry& entry);

} // namespace DiscText

} // namespace kalvo
