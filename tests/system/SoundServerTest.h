#pragma once

#include "support/PulseServer.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/ToneMeter.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <memory>

namespace kalvo::test {

inline const QString kMain = QStringLiteral("haupt"); ///< the default output
inline const QString kOther = QStringLiteral("kopfhoerer");
/** Level of a tone at full volume after the two channels are averaged: half of the second channel is missing. */
constexpr double kFull = 0.2 * 0.75;
constexpr double kInaudible = -60; ///< dBFS

inline ToneMeter Measure(const PulseRecording& recording) {
    return {recording.Mono(), PulseRecording::kSampleRate};
}

/** With a sound server of its own and two sinks that can be recorded. */
class SoundServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!server_)
            GTEST_SKIP() << "pulseaudio is not installed";
    }

    /** MP3 at 44.1 kHz, OGG at 48 kHz, so finely coded that the coding is not heard. */
    QString Tone(const char* name, double frequency, double seconds) const {
        const bool isMp3 = QByteArray(name).endsWith(".mp3");
        SoundSpec sound{.seconds = seconds, .frequency = frequency, .rate = isMp3 ? 44100 : 48000, .amplitude = 0.2};
        sound.options = (isMp3 ? QStringLiteral("-b 320") : QStringLiteral("-q 9")).split(u' ');
        sound.fadeIn = 0.05; // an abrupt start would look like a click
        return MakeSound(folder_.Path(), QLatin1String(name), sound);
    }

    TestFolder folder_;
    const QString data_ = folder_.Path(QStringLiteral("Kalvo"));
    std::unique_ptr<PulseServer> server_ = PulseServer::IsInstalled() ? std::make_unique<PulseServer>() : nullptr;
};

} // namespace kalvo::test
