#pragma once

#include "base/BackgroundWorker.h"
#include "playback/MeasuredTitle.h"
#include "playback/TitleStore.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <atomic>
#include <memory>

namespace kalvo {

class BackgroundWriter;
class Clock;

/**
 * Measures titles one after another and keeps what it found, so that each file is measured once, until it changes.
 *
 * Threads: everything here belongs to the UI thread. A worker with low priority asks for the file's stamp and decodes;
 * it gets copies and the flag `cancelled_`, and answers by the event loop. The file is written by the writer, ten
 * seconds after the first new title and at the end.
 */
class TitleMeasurer : public QObject {
    Q_OBJECT

public:
    /**
     * file: where the measures are kept; a damaged one is set aside. The writer outlives this. measure: for tests.
     */
    using Measure = std::optional<audio::TitleMeasures> (*)(const std::string& path,
                                                            const std::atomic<bool>& cancelled);
    TitleMeasurer(QString file, BackgroundWriter& writer, const Clock& clock, Measure measure = &audio::MeasureTitle,
                  QObject* parent = nullptr);
    ~TitleMeasurer() override;

    /** As last measured; none when it never was. Does not look at the file. */
    std::optional<audio::TitleMeasures> Known(const QString& path) const;
    /** Measured() follows, at once known or not; a path that waits already is not taken twice. */
    void Request(const QString& path);
    /** Somebody else has measured this title. */
    void Learn(const QString& path, const MeasuredTitle& title);
    /** What waits is dropped, what runs given up; nothing of it is told. */
    void Cancel();
    bool IsBusy() const { return !waiting_.isEmpty(); }

Q_SIGNALS:
    /** measures: null when the file cannot be measured. */
    void Measured(const QString& path, const kalvo::audio::TitleMeasures* measures);

private:
    void Take(const QString& path, const FileStamp& stamp, const std::optional<audio::TitleMeasures>& measures);

    Measure measure_;
    TitleStore<MeasuredTitle> store_;
    QSet<QString> waiting_;
    QTimer keepSoon_;
    std::shared_ptr<std::atomic<bool>> cancelled_ = std::make_shared<std::atomic<bool>>(false);
    BackgroundWorker worker_; ///< last: its thread ends before the rest goes
};

} // namespace kalvo
