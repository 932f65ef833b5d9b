#pragma once

#include "live/JingleFile.h"

#include <optional>

namespace kalvo {

/** A scheduled file that is still to play. */
struct ComingJingle {
    QString path;
    QDateTime at; ///< to the minute

    bool operator==(const ComingJingle&) const = default;

    /** The file's name without its ending. */
    QString Name() const;
    /** "in 00:18:53"; from a day on "Mo 08:00". */
    QString WhenText(const QDateTime& now) const;

    /** The first of these after now, within a week; none when nothing is active. */
    static std::optional<ComingJingle> Next(const JingleRecords& records, const QDateTime& now);
};

} // namespace kalvo
