#include "app/TestTone.h"

#include "app/WavFile.h"
#include "playback/AudioLayer.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace kalvo {

namespace {

constexpr int kRate = 44100;
constexpr int kBufferFrames = 1024;
constexpr int kVolume = 100;
constexpr int kWatchInterval = 50;   // ms
constexpr int kLongestPlay = 10'000; // ms; a device that was pulled out never comes to the end
constexpr double kFrequency = 660;   // Hz
constexpr double kAmplitude = 0.25;
constexpr int kToneFrames = kRate * 45 / 100;
constexpr int kEdgeFrames = kRate / 50;       // raised cosine, so that nothing clicks
constexpr int kSilentFrames = kRate * 3 / 10; // what is on its way to the loudspeakers gets there before the end

double Envelope(int frame) {
    const int fromEdge = std::min(frame, kToneFrames - 1 - frame);
    return fromEdge >= kEdgeFrames ? 1 : 0.5 - 0.5 * std::cos(std::numbers::pi * fromEdge / kEdgeFrames);
}

/** Interleaved stereo: the tone left, then right, then silence. */
std::vector<float> LeftThenRight() {
    std::vector<float> stereo(2 * static_cast<std::size_t>(2 * kToneFrames + kSilentFrames));
    for (const int side : {0, 1}) {
        for (int frame = 0; frame < kToneFrames; ++frame) {
            const double phase = 2 * std::numbers::pi * kFrequency * frame / kRate;
            stereo[2 * static_cast<std::size_t>(side * kToneFrames + frame) + static_cast<std::size_t>(side)] =
                static_cast<float>(kAmplitude * Envelope(frame) * std::sin(phase));
        }
    }
    return stereo;
}

} // namespace

TestTone::TestTone(AudioLayer& layer, QObject* parent)
    : QObject(parent), layer_(layer), path_(folder_.filePath(QStringLiteral("testton.wav"))) {
    watch_.setInterval(kWatchInterval);
    connect(&watch_, &QTimer::timeout, this, &TestTone::EndWhenDone);
}

TestTone::Result TestTone::Play(int device) {
    audio::AudioLibrary& library = layer_.Audio();
    audio::OutputInfo used;
    if (device == audio::kNoSound)
        return Result::NoDevice;
    if (IsMusicOn(device))
        return Result::MusicRuns;
    if (IsPlaying() || library.GetInfo(audio::Output::Headphones, used))
        return Result::Busy;
    if (!WriteTone() || !library.Init(audio::Output::Headphones, device, kRate, kBufferFrames))
        return Result::NoDevice;
    if (IsMusicOnHeadphones()) {
        library.Free(audio::Output::Headphones);
        return Result::MusicRuns;
    }
    library.SetVolume(audio::Output::Headphones, kVolume);
    stream_ = library.StreamCreateFile(audio::Output::Headphones, QFile::encodeName(path_).toStdString());
    if (stream_ == 0 || !library.StreamPlay(stream_, true)) {
        stream_ = 0;
        library.Free(audio::Output::Headphones);
        return Result::NoDevice;
    }
    played_.start();
    watch_.start();
    return Result::Playing;
}

QString TestTone::Text(Result result, int device) {
    switch (result) {
    case Result::MusicRuns:
        return QStringLiteral("Auf dieser Soundkarte läuft gerade Musik.");
    case Result::Busy:
        return QStringLiteral("Der Kopfhörerausgang wird gerade benutzt.");
    case Result::NoDevice:
        return QStringLiteral("Soundkarte existiert an Device: %1 nicht!").arg(device);
    case Result::Playing:
        break;
    }
    return {};
}

bool TestTone::IsMusicOn(int device) const {
    audio::OutputInfo info;
    const bool plays = layer_.Activity(1) == audio::Activity::Playing || layer_.Activity(2) == audio::Activity::Playing;
    return plays && layer_.Audio().GetInfo(audio::Output::Main, info) && info.device == device;
}

/** The standard output may be the music's device under another number; open, it tells its name. */
bool TestTone::IsMusicOnHeadphones() const {
    audio::OutputInfo main;
    audio::OutputInfo headphones;
    return layer_.Audio().GetInfo(audio::Output::Headphones, headphones) &&
           layer_.Audio().GetInfo(audio::Output::Main, main) && main.deviceName == headphones.deviceName &&
           IsMusicOn(main.device);
}

bool TestTone::WriteTone() {
    if (QFile::exists(path_))
        return true;
    WavFile wave(path_);
    const std::vector<float> stereo = LeftThenRight();
    return wave.Write(stereo.data(), stereo.size() / 2) && wave.Finish();
}

/** Somebody who has opened the output anew in the meantime has taken the stream away: then it is not ours to close. */
void TestTone::EndWhenDone() {
    audio::AudioLibrary& library = layer_.Audio();
    if (library.ChannelIsActive(stream_) == audio::Activity::Playing && !played_.hasExpired(kLongestPlay))
        return;
    watch_.stop();
    if (library.StreamFree(stream_))
        library.Free(audio::Output::Headphones);
    stream_ = 0;
}

} // namespace kalvo
