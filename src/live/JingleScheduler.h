#pragma once

#include "live/ComingJingle.h"
#include "live/JingleFile.h"

#include <vector>

namespace kalvo {

/** A scheduled file whose time has come. */
struct DueJingle {
    QString path;
    JingleDue due = JingleDue::Daily;
    bool afterTitle = false;

    /** What the main window's caption tells while it plays. */
    QString Caption() const;
};

/**
 * Finds out once a second which scheduled files are due. A record is due once in a minute that the clock on the wall
 * shows, however often that comes round: an hour that is lived twice in autumn plays once. A minute that the clock does
 * not show, for the hour that is left out in spring or while the computer slept, is not made up for.
 * The file is read again with each new minute and after Reload(). UI thread; file and clock outlive it.
 */
class JingleScheduler {
public:
    JingleScheduler(JingleFile& file, const Clock& clock);

    /** What has become due since the last call, in the order of the records. */
    std::vector<DueJingle> Check();
    /** The file has been changed. */
    void Reload() { minute_ = {}; }
    /** What comes next, as of the last look. */
    const std::optional<ComingJingle>& Next() const { return next_; }

private:
    JingleFile& file_;
    const Clock& clock_;
    JingleRecords records_;
    std::optional<ComingJingle> next_;
    QString minute_;                             ///< date and minute of the last look, local
    std::array<QString, kJingleRecords> played_; ///< date and minute at which each record was last due
};

} // namespace kalvo
