#pragma once

#include "live/SampleFile.h"
#include "playback/Mixer.h"

#include <QObject>

#include <array>

namespace kalvo {

/**
 * The pads: one sound at a time over the running music, for as long as its pad is held. While it is held the player on
 * the fader's side is turned down by the level reduction.
 *
 * Each assigned pad keeps a stream that is open and decoded ahead, so that a press only has to start it; after its
 * release the stream is freed and a new one opened. UI thread; the mixer outlives it. Has no timer: the owner calls
 * Tick() every 50 ms while a pad is held, KeepReady() about once a second. Pads count 1 to 10; others are a bounds
 * error.
 */
class Sampler : public QObject {
    Q_OBJECT

public:
    explicit Sampler(Mixer& mixer, QObject* parent = nullptr);
    ~Sampler() override;

    const SampleSlots& Slots() const { return slots_; }
    /** Releases what is held and opens the sounds. */
    void SetSlots(const SampleSlots& slots);
    bool IsAssigned(int pad) const { return !slots_.at(static_cast<std::size_t>(pad - 1)).path.isEmpty(); }

    /** 0..100 percent; takes effect with the next press. */
    void SetReduction(int percent) { reduction_ = percent; }
    int Reduction() const { return reduction_; }

    /** Ends the pad held before. False, with nothing done, when the pad has no sound assigned. */
    bool Press(int pad);
    /** Ends the sound and the dip; of this pad only: another one may have been pressed since. */
    void Release(int pad);
    void Release() { Release(held_); }
    /** 0: none. */
    int HeldPad() const { return held_; }
    /** How much of the held pad's sound has been played, 0..1; 1 at its end, 0 without one. */
    double Progress();

    /** Starts the held pad's sound where its file was not open yet. */
    void Tick();
    /** Opens what could not be opened before, or has been closed with the output. */
    void KeepReady();

Q_SIGNALS:
    void SlotsChanged();
    void HeldChanged(int pad);

private:
    audio::Handle& Stream(int pad) { return streams_.at(static_cast<std::size_t>(pad - 1)); }
    /** Looks at the pad's stream; opens it where there is none. */
    audio::OpenState Ready(int pad, int patience);
    void Close(int pad);
    void StartHeld(int patience);
    /** Frees the held pad's stream and opens the next. */
    void EndSound();

    Mixer& mixer_;
    audio::AudioLibrary& audio_;
    SampleSlots slots_;
    std::array<audio::Handle, kSamplePads> streams_{};
    int reduction_ = 50;
    int held_ = 0;
    bool started_ = false; ///< the held pad's sound
};

} // namespace kalvo
