#pragma once

#include "audio/AudioLibrary.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTemporaryDir>
#include <QTimer>

namespace kalvo {

class AudioLayer;

/**
 * A short tone, first left, then right, that tells which sound card a device number means. It sounds on the headphone
 * output, which is opened for it on the device and closed again, so that running music on another device goes on
 * untouched. UI thread; the audio library's events have to be dispatched as ever.
 */
class TestTone : public QObject {
    Q_OBJECT

public:
    enum class Result {
        Playing,
        MusicRuns, ///< on this device: the tone would be heard in it
        Busy,      ///< the headphone output is in use, or the last tone has not ended
        NoDevice   ///< the device cannot be opened, or is the one without sound
    };

    /** The layer outlives this. */
    explicit TestTone(AudioLayer& layer, QObject* parent = nullptr);

    /** device: as AudioLibrary numbers them. Waits until the device is open, five seconds at most. */
    Result Play(int device);
    bool IsPlaying() const { return stream_ != 0; }

    /** What to tell the user; empty when it plays. */
    static QString Text(Result result, int device);

private:
    bool IsMusicOn(int device) const;
    bool IsMusicOnHeadphones() const;
    bool WriteTone();
    void EndWhenDone();

    AudioLayer& layer_;
    QTemporaryDir folder_;
    QString path_; ///< of the tone, written at the first use
    audio::Handle stream_ = 0;
    QElapsedTimer played_;
    QTimer watch_;
};

} // namespace kalvo
