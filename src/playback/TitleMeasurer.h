#pragma once

#include "playback/MeasuredTitle.h"
#include "playback/TitleQueue.h"
#include "playback/TitleStore.h"

#include <QObject>

#include <atomic>
#include <memory>

namespace kalvo {

class Clock;

/**
 * Measures titles one after another and keeps what it found, so that each file is measured once, until it changes.
 *
 * Threads: everything here belongs to the UI thread. A worker with low priority asks for the file's stamp, decodes and
 * writes; it gets copies and the store `kept_`, and answers by the event loop.
 */
class TitleMeasurer : public QObject {
    Q_OBJECT

public:
    /**
     * file: where the measures are kept; a damaged one is set aside. The clock outlives this. measure: for tests.
     */
    using Measure = std::optional<audio::TitleMeasures> (*)(const std::string& path,
                                                            const std::atomic<bool>& cancelled);
    TitleMeasurer(const QString& file, const Clock& clock, Measure measure = &audio::MeasureTitle,
                  QObject* parent = nullptr);

    /** As last measured; none when it never was. Does not look at the file. */
    std::optional<audio::TitleMeasures> Known(const QString& path);
    /** Measured() follows, at once known or not; a path that waits already is not taken twice. */
    void Request(const QString& path);
    /** Somebody else has measured this title; known as soon as it is written. */
    void Learn(const QString& path, const MeasuredTitle& title);
    /** What waits is dropped, what runs given up; nothing of it is told. */
    void Cancel() { queue_.Cancel(); }
    bool IsBusy() const { return queue_.IsBusy(); }

Q_SIGNALS:
    /** measures: null when the file cannot be measured. */
    void Measured(const QString& path, const kalvo::audio::TitleMeasures* measures);

private:
    using Store = TitleStore<MeasuredTitle>;

    Measure measure_;
    Store known_;
    std::shared_ptr<Store> kept_; ///< the worker's
    TitleQueue queue_;            ///< last: its thread ends before the rest goes
};

} // namespace kalvo
