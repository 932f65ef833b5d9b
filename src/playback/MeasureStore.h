#pragma once

#include "audio/TitleMeasure.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace kalvo {

/** Tells whether a file is still the one that was measured. */
struct FileStamp {
    qint64 size = -1; ///< bytes; -1: there is no file
    qint64 time = 0;  ///< of its last change, ms since 1970

    /** Asks the file system, which may take long. */
    static FileStamp Of(const QString& path);
    bool operator==(const FileStamp&) const = default;
};

struct MeasuredTitle {
    FileStamp stamp;
    audio::TitleMeasures measures;
};

/** What titles have been measured to, by their paths. A value; its file is "\Messung.json". */
class MeasureStore {
public:
    /** None when the bytes are no such file. Entries that cannot be understood are left out. */
    static std::optional<MeasureStore> FromJson(const QByteArray& bytes);
    QByteArray ToJson() const;

    /** Null when the path was never measured. Valid until the next Put(). */
    const MeasuredTitle* Find(const QString& path) const;
    void Put(const QString& path, const MeasuredTitle& title);

private:
    QHash<QString, MeasuredTitle> titles_;
};

/**
 * The gain in dB that brings a title to -16 LUFS: 12 dB down and 6 dB up at most, and upwards never so far that its
 * peak would need the limiter. 0 for silence.
 */
double LevellingGain(const audio::TitleMeasures& measures);

} // namespace kalvo
