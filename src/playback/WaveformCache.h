#pragma once

#include "base/Waveform.h"

#include <QString>

#include <optional>

namespace kalvo {

/**
 * Waveforms that have been measured, a small file for each title in a folder of their own. A file goes by the title's
 * path, size and time of change, so that a changed title is measured anew. Everything in the folder can be made again:
 * damaged files count as missing, and what cannot be written is passed over. Any thread; waits for the disk.
 */
class WaveformCache {
public:
    /** How many are kept, two kilobytes each. */
    static constexpr int kMost = 5000;

    /** folder: made with the first waveform. */
    explicit WaveformCache(QString folder) : folder_(std::move(folder)) {}

    /** None when it is not there, is damaged, or the title is not there. Marks it as used. */
    std::optional<Waveform> Find(const QString& titlePath) const;
    void Keep(const QString& titlePath, const Waveform& waveform) const;
    /** Once there are more than `most`, those unused for longest go until a quarter of it is free again. */
    void Trim(int most = kMost) const;

private:
    /** Empty when the title is not there. */
    QString FileOf(const QString& titlePath) const;

    QString folder_;
};

} // namespace kalvo
