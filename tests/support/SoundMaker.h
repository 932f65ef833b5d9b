#pragma once

#include <QString>
#include <QStringList>

namespace kalvo::test {

/** A sound to be made: a sine on the first channel, the same at half the height on every other one. */
struct SoundSpec {
    double seconds = 1;
    double frequency = 440; ///< Hz; 0 = silence
    int rate = 44100;       ///< Hz
    int channels = 2;
    double amplitude = 0.5;   ///< of the first channel, 0..1
    QStringList options = {}; ///< further arguments of the encoder, e.g. {"-V", "2", "-t"}
    QString title = {};       ///< tags, written by the encoder where not empty (not into WAV)
    QString artist = {};
    int coverBytes = 0; ///< size of a cover picture to embed in an MP3 (at most 128,000); 0 = none
    double fadeIn = 0;  ///< seconds in which the sound swells at its start; 0 = it starts abruptly

    /** Exact length of the sound that goes into the encoder. */
    qint64 Frames() const { return qRound64(seconds * rate); }
};

/**
 * Makes folder/name with the encoder that its ending asks for: .mp3 (lame), .ogg (oggenc), .opus (opusenc), or .wav
 * (16 bit). Folders in between are made too. Returns the absolute path; a failure fails the running test.
 */
QString MakeSound(const QString& folder, const QString& name, const SoundSpec& spec = {});

} // namespace kalvo::test
