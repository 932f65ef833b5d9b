#pragma once

#include "base/BackgroundWorker.h"
#include "playback/LengthCache.h"

#include <QProgressDialog>
#include <QString>

#include <memory>
#include <optional>

namespace kalvo {

/**
 * Exact lengths of many titles; shows how far it is and can be cancelled. UI thread; the disk is asked on another, so
 * that fades and hand-overs go on.
 */
class TitleLengths {
public:
    /** count: how many will be asked for. */
    TitleLengths(int count, QWidget& window);

    /** Seconds; 0 when the file cannot be played, no value once the user has cancelled. Deals with events meanwhile. */
    std::optional<double> Of(const QString& path);

private:
    std::shared_ptr<LengthCache> lengths_ = std::make_shared<LengthCache>(); ///< the worker's; may outlive this
    QProgressDialog progress_;
    int done_ = 0;
    BackgroundWorker worker_;
};

} // namespace kalvo
