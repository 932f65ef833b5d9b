#include "playback/OfflineMix.h"

#include <chrono>
#include <vector>

namespace kalvo {

namespace {

constexpr qint64 kRate = 44100;
constexpr qint64 kStepMilliseconds = 5; // the fastest fade's interval
constexpr qint64 kHandOverInterval = 100;

} // namespace

OfflineMix::OfflineMix(Mixer& mixer) : mixer_(mixer) {
    mixer_.SetPatience(std::chrono::seconds(10)); // its time stands still meanwhile
}

double OfflineMix::Seconds() const {
    return static_cast<double>(frames_) / static_cast<double>(kRate);
}

bool OfflineMix::Step(const Sink& sink) {
    milliseconds_ += kStepMilliseconds;
    const auto frames = static_cast<std::size_t>(milliseconds_ * kRate / 1000 - frames_);
    std::vector<float> stereo(frames * 2);
    if (!mixer_.Layer().Audio().Render(audio::Output::Main, stereo.data(), frames) || !sink(stereo.data(), frames)) {
        return false;
    }
    frames_ += static_cast<qint64>(frames);
    mixer_.Dispatch();
    if (milliseconds_ % kHandOverInterval == 0) {
        mixer_.CheckHandOver();
    }
    if (milliseconds_ >= nextFade_) {
        mixer_.StepFade();
        nextFade_ = milliseconds_ + mixer_.Options().fadeInterval;
    }
    return true;
}

bool OfflineMix::Run(const Sink& sink) {
    constexpr int kSilentStepsAtEnd = 40; // lets the last ramp and the limiter's delay out
    for (int silentSteps = 0; silentSteps < kSilentStepsAtEnd;) {
        if (!Step(sink)) {
            return false;
        }
        silentSteps = mixer_.OnAirPlayer() == 0 ? silentSteps + 1 : 0;
    }
    return true;
}

} // namespace kalvo
