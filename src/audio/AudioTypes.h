#pragma once

#include "audio/Handle.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// What goes in and out of the audio library: plain values.
namespace kalvo::audio {

enum class ErrorCode : std::uint8_t {
    None,
    NotInitialised, ///< the output has not been initialised
    Device,         ///< no such device, or it cannot be opened
    InvalidHandle,  ///< no such stream, effect or sync
    File,           ///< the file does not exist or cannot be read
    Format,         ///< the file holds no sound that can be decoded
    Timeout,        ///< the file did not open in time (a hanging network share)
    Argument        ///< a value out of range
};

enum class Activity : std::uint8_t { Stopped = 0, Playing = 1, Paused = 3 };

/** Device numbers: 0 no sound, 1 the system's default output, 2 and up the others as enumerated. */
constexpr int kNoSound = 0;
constexpr int kDefaultDevice = 1;
/** Not a device: nothing plays by itself, the caller takes the sound with Render(). */
constexpr int kOffline = -1;

enum class OpenState : std::uint8_t { Opening, Ready, Failed };

/** Values of ChannelSetAttributes that leave a setting unchanged. */
constexpr int kKeepFrequency = -1;
constexpr int kKeepVolume = -1;
constexpr int kKeepPan = -101;

/** A sound file's bytes, whole, shared with whoever plays it. */
using HeldFile = std::shared_ptr<const std::vector<std::byte>>;

struct OutputInfo {
    int directSoundVersion = 9; ///< 8 or more: effects are available
    int device = kNoSound;      ///< the device that plays now; differs from the wanted one after a fall-back
    std::string deviceName;
    int sampleRate = 0;            ///< Hz
    int bufferFrames = 0;          ///< frames per callback
    std::uint64_t callbacks = 0;   ///< buffers rendered so far
    std::uint64_t starvations = 0; ///< how often a playing stream had no data ready
    std::uint64_t overruns = 0;    ///< buffers whose rendering took longer than they play
    double load = 0;               ///< mean share of the callback's time budget that rendering took, 0..1
};

struct ChannelInfo {
    int sampleRate = 0; ///< Hz, of the file
    int channels = 0;   ///< of the file
    bool variableRate = false;
    int bitrate = 0;    ///< kbit/s, 0 = unknown; the average for variable bit rates
    int outputRate = 0; ///< Hz, of the output that the stream plays on
};

struct Attributes {
    int frequency = 0; ///< playback sample rate in Hz
    int volume = 100;  ///< 0..100
    int pan = 0;       ///< -100 left .. 100 right
};

enum class SyncType : std::uint32_t {
    End = 2,          ///< the stream has played to its end
    SlideEnd = 5,     ///< an attribute slide has arrived
    DeviceLost = 1000 ///< the output device has gone; the stream parameter is ignored
};
/** Added to a sync type: the sync fires once and is gone. */
constexpr std::uint32_t kOneTime = 0x80000000U;

/** Runs on the control thread, inside DispatchEvents(). */
using SyncProcedure = void (*)(Handle sync, Handle channel, std::uint32_t data, void* user);

enum class EffectType : std::uint8_t { EqualiserBand = 7, Reverb = 8 };

struct EffectParameters {
    float centre = 1000;     ///< Hz (equaliser band)
    float bandwidth = 12;    ///< semitones (equaliser band)
    float gain = 0;          ///< dB, -15..15 (equaliser band)
    float reverbMix = -96;   ///< dB, -96..0 (reverb); -96 = dry
    float reverbTime = 1000; ///< ms, 1..3000 (reverb)
};

/** What ChannelGetData returns. */
enum class DataKind : std::uint8_t {
    Samples, ///< interleaved stereo, -1..1, the newest first written last
    Fft512,  ///< 256 magnitudes 0..1 of the mono sum, Hann window, from 0 Hz up to half the output's rate
    Fft1024, ///< 512 magnitudes
    Fft2048  ///< 1024 magnitudes
};

struct Levels {
    float left = 0; ///< peak since the last call, 0..1
    float right = 0;
};

} // namespace kalvo::audio
