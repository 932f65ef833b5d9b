#pragma once

#include "playback/TitleMeasurer.h"
#include "tags/TitleRecord.h"

#include <QList>
#include <QObject>

#include <vector>

namespace kalvo {

class Archive;

/**
 * Measures archive titles without beats per minute one after another and writes what was found into their `Extra4`.
 * UI thread; never waits: titles are read a page at a time, from the event loop.
 */
class TempoRun : public QObject {
    Q_OBJECT

public:
    /** Both outlive this. */
    TempoRun(Archive& archive, TitleMeasurer& measurer, QObject* parent = nullptr);

    /** `Nr` of the titles; those that have beats per minute, or are gone, are passed over. A run that goes on ends. */
    void Start(std::vector<qint64> numbers);
    void Cancel();
    bool IsRunning() const { return running_; }

    /** Titles looked at so far, of how many, and how many of them got a value or cannot be measured. */
    std::size_t Done() const { return done_; }
    std::size_t Count() const { return numbers_.size(); }
    int Found() const { return found_; }
    int Failed() const { return failed_; }

Q_SIGNALS:
    void Progressed();
    /** At the end, after Cancel(), and when the archive cannot be written. */
    void Finished();

private:
    void Step();
    void ReadPage();
    void Take(const QString& path, const audio::TitleMeasures* measures);
    void End();

    Archive& archive_;
    TitleMeasurer& measurer_;
    std::vector<qint64> numbers_;
    QList<TitleRecord> page_; ///< read and not looked at yet
    std::size_t read_ = 0;
    std::size_t done_ = 0;
    TitleRecord current_;
    int found_ = 0;
    int failed_ = 0;
    bool running_ = false;
};

} // namespace kalvo
