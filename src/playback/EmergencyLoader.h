#pragma once

#include "audio/AudioTypes.h"
#include "base/BackgroundWorker.h"

#include <QObject>
#include <QString>

namespace kalvo {

class Mixer;

/**
 * Brings the emergency title into memory: the whole file, as it is, is read on a thread of its own, tried once, and
 * given to the mixer. Until then, and when it cannot be used, the mixer keeps the one before. UI thread.
 */
class EmergencyLoader : public QObject {
    Q_OBJECT

public:
    /** Bytes; an hour of MP3. */
    static constexpr qint64 kLargest = 150'000'000;

    /** The mixer outlives the loader. */
    explicit EmergencyLoader(Mixer& mixer, QObject* parent = nullptr);

    /** An empty path: there is to be none. atListEnd: as EmergencyTitle. The same choice again does nothing, unless it
     * failed. */
    void Choose(const QString& path, bool atListEnd);

Q_SIGNALS:
    /** The mixer has the title now. */
    void Ready();
    /** German, for the status line: why the title cannot be used. */
    void Failed(const QString& message);

private:
    void Take(const QString& path, const audio::HeldFile& file);
    bool CanPlay(const audio::HeldFile& file);

    Mixer& mixer_;
    QString path_;
    bool atListEnd_ = false;
    bool failed_ = false;     ///< the last choice: its file may be there by now
    BackgroundWorker worker_; ///< last: its jobs end before the rest goes
};

} // namespace kalvo
