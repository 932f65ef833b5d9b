#pragma once

#include "audio/AudioLibrary.h"

#include <QString>

namespace kalvo {

/** Plays a file once on the main output, to hear what it is. UI thread; the library outlives it. */
class SampleTrial {
public:
    explicit SampleTrial(audio::AudioLibrary& audio) : audio_(audio) {}
    ~SampleTrial() { Stop(); }
    SampleTrial(const SampleTrial&) = delete;
    SampleTrial& operator=(const SampleTrial&) = delete;

    /** Ends what plays and opens the file; it starts in Tick(). */
    void Play(const QString& path);
    void Stop();
    /** To be called every 50 ms while IsBusy(). False, once, when the file cannot be played. */
    bool Tick();
    /** Opens or plays. */
    bool IsBusy() const { return state_ != State::Idle; }

private:
    enum class State : unsigned char { Idle, Opening, Playing };

    audio::AudioLibrary& audio_;
    audio::Handle stream_ = 0;
    State state_ = State::Idle;
};

} // namespace kalvo
