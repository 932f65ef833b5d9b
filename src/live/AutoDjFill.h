#pragma once

#include "live/AutoDjRunner.h"

namespace kalvo {

class Clock;
class PlaylistActions;

/**
 * Fills the lists with what the automatic DJ draws, as one step of undo, when all of it has been drawn. UI thread; goes
 * on between the window's events.
 */
class AutoDjFill : public QObject {
    Q_OBJECT

public:
    /** All outlive this. */
    AutoDjFill(const TitleSource& source, RandomSource& random, PlaylistActions& lists, const Clock& clock,
               QObject* parent = nullptr);

    /** Ignored while it runs. */
    void Start(const AutoDjSelection& selection);
    /** Leaves the lists as they are; no signal follows. */
    void Cancel() { runner_.Cancel(); }
    bool IsRunning() const { return runner_.IsRunning(); }

Q_SIGNALS:
    void Progress(int percent);
    /** isReached: as much as was wanted; else there were no more titles, or none. seconds: of all of them. */
    void Finished(int titles, qint64 seconds, bool isReached);

private:
    void Take(const AutoDj& run, bool isReached);

    AutoDjRunner runner_;
    PlaylistActions& lists_;
    const Clock& clock_;
};

} // namespace kalvo
