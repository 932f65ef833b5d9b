#pragma once

#include "base/FixedRecords.h"
#include "base/Settings.h"
#include "live/JingleRecord.h"

#include <array>

namespace kalvo {

constexpr int kJingleRecords = 20;
using JingleRecords = std::array<JingleRecord, kJingleRecords>;

/**
 * The schedule file "\TerminPlayNeu.dll": twenty records of 299 bytes. Whether a record waits for the end of the title
 * has no place in it and stands in the settings, "Termin-Play"/`NachTitel`n. UI thread. The settings outlive it.
 */
class JingleFile {
public:
    JingleFile(const QString& path, Settings& settings, const Clock& clock);

    /** A missing file is created empty; records that are not there are empty. */
    JingleRecords Read();
    /** Atomically. Records behind the twentieth stay. False when it could not be written: then nothing has changed. */
    bool Write(const JingleRecords& records);
    /** Something else than a schedule file: to be set aside before Write() would replace it. */
    static bool IsDamaged(const QString& path, const Clock& clock);

private:
    QString path_;
    Settings& settings_;
    FixedRecords file_;
};

} // namespace kalvo
