#pragma once

#include "playback/HeadphonePlayer.h"
#include "playback/Mixer.h"

#include <QObject>

#include <memory>

namespace kalvo {

/**
 * Lets a rendered joint be heard: on the headphones' card, or on the main output as long as nothing is on air there.
 * An output is held only while something plays. UI thread; has no timer, the owner calls Tick() about every 50 ms. All
 * parts outlive this.
 */
class JointPlayer : public QObject {
    Q_OBJECT

public:
    enum class Way : unsigned char { Headphones, Main };

    explicit JointPlayer(Mixer& mixer, QObject* parent = nullptr);
    ~JointPlayer() override;

    /** Whether the main output is free for listening. */
    bool IsMainFree() const;

    /**
     * Plays from the start; what played before is stopped. volume: 0..100, of the headphones. Empty when it plays, else
     * why not, in German.
     */
    QString Play(Way way, const audio::HeldFile& file, const OutputChoice& headphones, int volume);
    void Stop();
    void Seek(double fraction);
    void SetVolume(int volume);
    void Tick();

    bool IsPlaying() const { return phones_ != nullptr || stream_ != 0; }
    /** Seconds; 0 when nothing plays. */
    double Position() const;

Q_SIGNALS:
    /** It has played to its end. */
    void Ended();
    /** German, one line: what went wrong while it played. */
    void Told(const QString& text);

private:
    QString PlayOnHeadphones(const audio::HeldFile& file, const OutputChoice& headphones, int volume);
    QString PlayOnMain(const audio::HeldFile& file);
    void TickMain();

    Mixer& mixer_;
    audio::AudioLibrary& library_;
    std::unique_ptr<HeadphonePlayer> phones_;
    audio::Handle stream_ = 0; ///< on the main output
};

} // namespace kalvo
