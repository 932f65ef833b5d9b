#pragma once

#include "audio/EncoderLibrary.h"

#include <QDateTime>
#include <QString>

#include <vector>

namespace kalvo {

class Settings;

/** A format that can be chosen for a recording. */
struct RecordingFormat {
    const char* key; ///< in the settings
    const char16_t* text;
    const char* ending; ///< of the file, with its dot
    audio::EncodeSettings encoder;
    int bytesPerSecond; ///< of music, about; exact for WAV
};

/** All formats, the default first. */
const std::vector<RecordingFormat>& RecordingFormats();
/** An unknown key gives the default. */
const RecordingFormat& RecordingFormatOf(const QString& key);

/** Section "Mitschnitt" of the settings. */
struct RecordingOptions {
    QString format; ///< key
    QString folder; ///< absolute

    /** fallbackFolder: where nothing else has been chosen. */
    static RecordingOptions Read(const Settings& settings, const QString& fallbackFolder);
    void Write(Settings& settings) const;
};

/** "Mitschnitt 2026-11-21 23.15" */
QString DefaultRecordingName(const QDateTime& now);
/** As a file's name: without separators, control characters and a format's ending; empty when nothing is left. */
QString CleanRecordingName(const QString& text);
/** name, or "name-2", "name-3", …: the first of which there is neither a sound file nor a cue sheet. Waits for the
 * disk.
 */
QString FreeRecordingName(const QString& folder, const QString& name, const QString& ending);

} // namespace kalvo
