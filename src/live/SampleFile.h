#pragma once

#include "base/FixedRecords.h"

#include <QString>

#include <array>

namespace kalvo {

constexpr int kSamplePads = 10;

/** What a pad of the sampler plays; an empty path: nothing. */
struct SampleSlot {
    static constexpr int kTitleWidth = 20; ///< bytes in the file
    static constexpr int kPathWidth = 150;

    QString title;
    QString path;

    bool operator==(const SampleSlot&) const = default;

    /** Whether the path goes into its field as it is. */
    static bool Fits(const QString& path);
    /** The title as its field holds it. */
    static QString CutTitle(const QString& title);
};

/** Pad n is at place n - 1. */
using SampleSlots = std::array<SampleSlot, kSamplePads>;

/** The slot file "\sample.dll": ten records of 172 bytes, each led by its pad's number. One thread at a time. */
class SampleFile {
public:
    SampleFile(const QString& path, const Clock& clock);

    /** Slots that are not there, or cannot be read, are empty. */
    SampleSlots Read() const;
    /** Whether there is a record for each pad. */
    bool IsComplete() const { return file_.Count() >= kSamplePads; }
    /** Atomically; a title is cut to its field. False when it could not be written: then nothing has changed. */
    bool Write(const SampleSlots& slots);
    /** Something else than a slot file: to be set aside before Write() would replace it. */
    static bool IsDamaged(const QString& path, const Clock& clock);

private:
    FixedRecords file_;
};

} // namespace kalvo
