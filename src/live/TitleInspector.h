#pragma once

#include "live/InspectedTitle.h"
#include "playback/TitleQueue.h"
#include "playback/TitleStore.h"

#include <QObject>

#include <atomic>
#include <memory>

namespace kalvo {

class Clock;

/**
 * Decodes titles one after another to see whether they can go on air, and remembers what it found, so that a file is
 * decoded again only after it has changed, or when it could not be read to its end.
 *
 * Threads: everything here belongs to the UI thread. A worker behind all other threads asks for the file's stamp,
 * decodes and writes; it gets copies and the store `kept_`, and answers by the event loop.
 */
class TitleInspector : public QObject {
    Q_OBJECT

public:
    using Inspect = std::optional<audio::TitleInspection> (*)(const std::string& path,
                                                              const std::atomic<bool>& cancelled);
    /** file: where findings are kept; a damaged one is set aside. The clock outlives this. inspect: for tests. */
    TitleInspector(const QString& file, const Clock& clock, Inspect inspect = &audio::InspectTitle,
                   QObject* parent = nullptr);

    /** Inspected() follows, at once known or not; a path that waits already is not taken twice. */
    void Request(const QString& path);
    /** What waits is dropped, what runs given up; nothing of it is told. */
    void Cancel() { queue_.Cancel(); }
    bool IsBusy() const { return queue_.IsBusy(); }

Q_SIGNALS:
    void Inspected(const QString& path, const kalvo::InspectedTitle& title);

private:
    using Store = TitleStore<InspectedTitle>;

    Inspect inspect_;
    std::shared_ptr<Store> kept_; ///< the worker's
    TitleQueue queue_;            ///< last: its thread ends before the rest goes
};

} // namespace kalvo
