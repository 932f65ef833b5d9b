#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include <utility>

namespace kalvo {

/** Stamps of the archive, each with the number of titles that carry it. */
using StampCounts = QList<std::pair<QString, qint64>>;

/** How many titles of the archive were played last within which time. */
struct LastPlayedCounts {
    qint64 today = 0;
    qint64 week = 0;  ///< within the last seven days, today left out
    qint64 month = 0; ///< within the last thirty days, the week left out
    qint64 earlier = 0;
    qint64 never = 0;

    qint64 Total() const { return today + week + month + earlier + never; }
};

/** Understands "2026.11.21, 23:15" and "21.11.2026 23:15:08"; any other stamp counts as earlier, an empty as never. */
LastPlayedCounts CountLastPlayed(const StampCounts& stamps, const QDate& today);

/** The stamp as it is written, "2026.11.21, 23:15": its texts sort by time. */
QString LastPlayedStamp(const QDateTime& moment);

} // namespace kalvo
