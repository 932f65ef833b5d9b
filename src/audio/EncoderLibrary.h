#pragma once

#include "audio/AudioLibrary.h"

#include <cstdint>
#include <string>

// The encoder library as its users see it: an abstract class, loaded at run time as a module of its own. It writes what
// the audio library plays into files. No Qt, no exceptions across this border.
//
// Threads: every operation is called on the audio library's control thread. Files are written by a thread of their own;
// the audio thread only copies into a ring.
namespace kalvo::audio {

enum class EncodeFormat : std::uint8_t { Wav, Flac, Ogg, Mp3 };

enum class EncodeError : std::uint8_t {
    None,
    Argument,      ///< a value out of range, or one that the format does not know
    InvalidHandle, ///< no such recording
    Source,        ///< no such stream, the output is not open, or it has four recordings already
    Exists,        ///< there is a file of this name; nothing is ever overwritten
    File,          ///< the file cannot be created or written
    DiskFull,      ///< no room is left; what has been written is kept
    Format,        ///< the encoder refuses this sound, e.g. its sample rate
    Timeout        ///< the disk hangs; the recording ends when it answers again
};

struct EncodeSettings {
    EncodeFormat format = EncodeFormat::Wav;
    int bits = 16;        ///< WAV: 16, 24, or 32 for floating point; FLAC: 16 or 24
    int bitrate = 0;      ///< MP3: constant rate in kbit/s, 64..320; 0 = by quality
    double quality = 0.6; ///< OGG, and MP3 without a bit rate: 0..1, 1 = best and largest; the bit rate varies
    std::string title;    ///< UTF-8, goes into the file's tags; empty = none
    std::string artist;
    std::uint64_t mostBytes = 4'000'000'000; ///< WAV: the recording goes on in "Name-2.wav" before a file grows larger
};

enum class EncodeStatus : std::uint8_t {
    Running,
    Finished, ///< the stream or output is gone; the file is complete
    Failed    ///< error tells why; the file holds what was written until then
};

struct EncodeState {
    EncodeStatus status = EncodeStatus::Running;
    EncodeError error = EncodeError::None;
    std::uint64_t frames = 0; ///< given to the encoder so far
    std::uint64_t lost = 0;   ///< frames that were played but not written, since the disk was slower than its buffer
    std::uint64_t bytes = 0;  ///< size of the file being written
    std::string path;         ///< the file being written
};

/**
 * Every operation that returns bool or a handle reports failure by false or 0 and leaves the reason in ErrorGetCode().
 * A file can be played at any moment, also when the program or the machine dies: a WAV file's header is renewed four
 * times a second and everything reaches the disk every five seconds; the other formats lose what their encoder holds.
 */
class EncoderLibrary {
public:
    EncoderLibrary() = default;
    EncoderLibrary(const EncoderLibrary&) = delete;
    EncoderLibrary& operator=(const EncoderLibrary&) = delete;
    /** Stops every recording. The audio library may have gone before. */
    virtual ~EncoderLibrary() = default;

    /** Low word major, high word minor: "2.0" is 0x00000002. */
    virtual std::uint32_t GetVersion() const = 0;
    /** The reason of the last failure; None after a success. */
    virtual EncodeError ErrorGetCode() const = 0;

    /**
     * Writes what a whole output plays, after its limiter, from now on. path: UTF-8 or the file system's raw bytes.
     * Another device chosen for the output with the same sample rate does not end it. The handle is this library's own.
     */
    virtual Handle Encode_Start(AudioLibrary& audio, Output output, const std::string& path,
                                const EncodeSettings& settings) = 0;
    /** The same for one stream, with its effects, volume and pan; nothing is written while it is silent. */
    virtual Handle Encode_Start(AudioLibrary& audio, Handle stream, const std::string& path,
                                const EncodeSettings& settings) = 0;
    /**
     * Ends a recording and closes its file; waits two seconds at most for the disk. With Timeout the handle stays valid
     * and can be stopped again. With any other failure, which is the recording's own, the handle is gone.
     */
    virtual bool Encode_Stop(Handle recording) = 0;
    virtual bool Encode_GetState(Handle recording, EncodeState& state) = 0;
};

/** Name and type of the module's one entry; the caller owns the library that it returns. */
constexpr const char* kEncoderFactoryName = "CreateEncoderLibrary";
using EncoderFactory = EncoderLibrary* (*)();

} // namespace kalvo::audio
