#include "app/DemoSynth.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <numbers>

namespace kalvo {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kBeatsPerBar = 4;
constexpr float kPeak = 0.5F;

/** Where and how loud something sounds; times in seconds, pan -1 left .. 1 right. */
struct Placement {
    double begin = 0;
    double length = 0;
    double level = 0;
    double pan = 0;
};

struct Timbre {
    std::array<double, 3> harmonics{1, 0, 0};
    double attack = 0.01;   ///< s
    double release = 0.05;  ///< s, inside the note's length
    double halfLife = 1000; ///< s
};

const Timbre kPad{{1, 0.25, 0.12}, 0.15, 0.35, 1000};
const Timbre kBass{{1, 0.5, 0.15}, 0.008, 0.06, 0.5};
const Timbre kPluck{{1, 0.4, 0.2}, 0.004, 0.08, 0.12};

double Frequency(int note) {
    return 440.0 * std::exp2((note - 69) / 12.0);
}

/** 0 at the ends of a sound, 1 in between, with the rounded slopes that keep it from clicking. */
double Edge(double second, double length, const Timbre& timbre) {
    const double rise = std::min(1.0, second / timbre.attack);
    const double fall = std::clamp((length - second) / timbre.release, 0.0, 1.0);
    return rise * rise * (3 - 2 * rise) * fall * fall * (3 - 2 * fall);
}

class Track {
public:
    explicit Track(double seconds) : stereo_(2 * static_cast<std::size_t>(seconds * kDemoSampleRate)) {}

    void AddNote(const Placement& place, const Timbre& timbre, int note);
    void AddKick(const Placement& place);
    void AddHat(const Placement& place);
    std::vector<float> Finished();

private:
    /** sound(second) gives a mono value for each frame of the placement. */
    template<typename Sound>
    void Add(const Placement& place, Sound sound);

    std::vector<float> stereo_;
    std::uint32_t noise_ = 1;
};

template<typename Sound>
void Track::Add(const Placement& place, Sound sound) {
    const auto first = static_cast<std::size_t>(place.begin * kDemoSampleRate);
    const auto frames = static_cast<std::size_t>(place.length * kDemoSampleRate);
    const std::size_t end = std::min(first + frames, stereo_.size() / 2);
    const double left = place.level * (1 - place.pan) / 2;
    const double right = place.level * (1 + place.pan) / 2;
    for (std::size_t frame = first; frame < end; ++frame) {
        const double value = sound(static_cast<double>(frame - first) / kDemoSampleRate);
        stereo_[2 * frame] += static_cast<float>(left * value);
        stereo_[2 * frame + 1] += static_cast<float>(right * value);
    }
}

void Track::AddNote(const Placement& place, const Timbre& timbre, int note) {
    // A turning pointer is many times faster than a sine for each frame; its powers are the harmonics.
    const std::complex<double> turn = std::polar(1.0, 2 * kPi * Frequency(note) / kDemoSampleRate);
    const double decay = std::exp2(-1.0 / (timbre.halfLife * kDemoSampleRate));
    std::complex<double> pointer = 1;
    double strength = 1;
    Add(place, [&, length = place.length](double second) {
        const double s = pointer.imag();
        const double c = pointer.real();
        const double second2 = 2 * s * c;
        const double third = 3 * s - 4 * s * s * s;
        pointer *= turn;
        strength *= decay;
        const auto& level = timbre.harmonics;
        return strength * Edge(second, length, timbre) * (level[0] * s + level[1] * second2 + level[2] * third);
    });
}

void Track::AddKick(const Placement& place) {
    const Timbre shape{{1, 0, 0}, 0.002, 0.05, 1000};
    Add(place, [&shape, length = place.length](double second) {
        const double cycles = 45 * second + 4.0 * (1 - std::exp(-second * 30));
        return std::exp(-second * 12) * Edge(second, length, shape) * std::sin(2 * kPi * cycles);
    });
}

void Track::AddHat(const Placement& place) {
    const Timbre shape{{1, 0, 0}, 0.001, 0.02, 1000};
    double before = 0;
    Add(place, [this, &shape, &before, length = place.length](double second) {
        noise_ = noise_ * 1664525U + 1013904223U;
        const double white = static_cast<double>(noise_) / 2147483648.0 - 1;
        const double bright = white - before;
        before = white;
        return std::exp(-second * 60) * Edge(second, length, shape) * bright;
    });
}

std::vector<float> Track::Finished() {
    float peak = 0;
    for (const float sample : stereo_)
        peak = std::max(peak, std::abs(sample));
    if (peak > 0) {
        for (float& sample : stereo_)
            sample *= kPeak / peak;
    }
    return std::move(stereo_);
}

/** The notes of a chord as DemoTune writes it. */
std::array<int, 3> Chord(int key, int chord) {
    const bool minor = chord < 0;
    const int root = key + (minor ? -chord - 100 : chord);
    return {root, root + (minor ? 3 : 4), root + 7};
}

void AddBar(Track& track, const std::array<int, 3>& chord, double begin, double beat, bool isLast) {
    const double overlap = isLast ? 0 : kPad.release;
    const double barLength = kBeatsPerBar * beat;
    for (std::size_t voice = 0; voice < chord.size(); ++voice)
        track.AddNote({begin, barLength + overlap, 0.16, (static_cast<double>(voice) - 1) * 0.6}, kPad, chord[voice]);
    for (int half = 0; half < 2 * kBeatsPerBar; ++half) {
        const double when = begin + half * beat / 2;
        const std::array<int, 4> figure{chord[0], chord[1], chord[2], chord[0] + 12};
        track.AddNote({when, beat / 2, 0.22, half % 2 == 0 ? -0.4 : 0.4}, kPluck,
                      figure[static_cast<std::size_t>(half) % 4] + 12);
        track.AddHat({when, beat / 4, half % 2 == 0 ? 0.05 : 0.1, 0.2});
    }
    for (int count = 0; count < kBeatsPerBar; ++count) {
        const double when = begin + count * beat;
        track.AddKick({when, std::min(beat, 0.4), 0.7, 0});
        track.AddNote({when, beat * 0.9, 0.35, 0}, kBass, chord[0] - 24);
    }
}

} // namespace

double DemoLength(const DemoTune& tune) {
    return tune.bars * kBeatsPerBar * 60.0 / tune.tempo;
}

std::vector<float> RenderDemoTune(const DemoTune& tune) {
    const double beat = 60.0 / tune.tempo;
    Track track(DemoLength(tune));
    for (int bar = 0; bar < tune.bars; ++bar) {
        const int chord = tune.chords[static_cast<std::size_t>(bar) % tune.chords.size()];
        AddBar(track, Chord(tune.key, chord), bar * kBeatsPerBar * beat, beat, bar + 1 == tune.bars);
    }
    return track.Finished();
}

} // namespace kalvo
