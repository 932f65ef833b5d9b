#pragma once

#include "audio/AudioTypes.h"
#include "audio/SoundSink.h"

#include <cstddef>
#include <cstdint>
#include <string>

// The audio library as its users see it: an abstract class, so that the module is loaded at run time and nothing of it
// is linked. No Qt, no exceptions across this border.
//
// Threads: every operation is called on one control thread (the user-interface thread). The audio callback runs beside
// it and is reached through lock-free queues only. Sync procedures run on the control thread, inside DispatchEvents().
namespace kalvo::audio {

/**
 * Every operation that returns bool or a handle reports failure by false or 0 and leaves the reason in ErrorGetCode().
 * Streams count positions and lengths in bytes of 16-bit stereo at the file's own rate: four bytes a frame.
 */
class AudioLibrary : public SoundSource {
public:
    /** Low word major, high word minor: "2.0" is 0x00000002. */
    virtual std::uint32_t GetVersion() const = 0;
    /** The reason of the last failure; None after a success. */
    virtual ErrorCode ErrorGetCode() const = 0;

    // ---- outputs

    /** Name of a device in UTF-8; empty past the last one. Device 0 is "Kein Ton". Enumerates anew at device 0. */
    virtual std::string GetDeviceDescription(int device) = 0;
    /** Opens an output; sampleRate in Hz. bufferFrames: 512, 1024 or 2048. An open output is closed first. */
    virtual bool Init(Output output, int device, int sampleRate, int bufferFrames) = 0;
    /** Frees all streams of the output and closes it. */
    virtual bool Free(Output output) = 0;
    virtual bool GetInfo(Output output, OutputInfo& info) const = 0;
    /** Overall volume of an output, 0..100. */
    virtual bool SetVolume(Output output, int volume) = 0;
    virtual int GetVolume(Output output) const = 0;
    /** Stops every stream of the output. */
    virtual bool Stop(Output output) = 0;
    /** Output at kOffline only: the next frames as interleaved stereo; waits for the decoders, never starves. */
    virtual bool Render(Output output, float* stereo, std::size_t frames) = 0;
    /** Peak levels of the whole bus, after the limiter. */
    virtual Levels GetOutputLevels(Output output) = 0;
    /** Data of the whole bus, as ChannelGetData. */
    virtual std::size_t GetOutputData(Output output, DataKind kind, float* values, std::size_t count) = 0;

    // ---- streams

    /**
     * Opens an MP3, OGG (Vorbis, Opus) or WAV file for an output, chosen by its first bytes, not by its name.
     * path: UTF-8 or the file system's raw bytes. The stream is stopped, at its start, with its data being read ahead.
     * Waits for the file, three seconds at most.
     */
    virtual Handle StreamCreateFile(Output output, const std::string& path) = 0;
    /** The same without waiting: until StreamAwaitOpen() has found it Ready, StreamFree() alone is possible. */
    virtual Handle StreamOpenFile(Output output, const std::string& path) { return StreamCreateFile(output, path); }
    /** The same for a file in memory, as its bytes: no disk is touched while it plays. */
    virtual Handle StreamOpenHeld(Output /*output*/, const HeldFile& /*file*/) { return 0; }
    /** Waits for the opening, 0 just looks. After Failed the handle is invalid, the reason is in ErrorGetCode(). */
    virtual OpenState StreamAwaitOpen(Handle /*stream*/, int /*milliseconds*/) { return OpenState::Ready; }
    virtual bool StreamPlay(Handle stream, bool fromStart) = 0;
    /** Fades out within 256 frames and frees; the handle is invalid at once. */
    virtual bool StreamFree(Handle stream) = 0;
    /** Bytes; 0 on failure. Of a long file it may change once, shortly after opening, from an estimate to exact. */
    virtual std::uint64_t StreamGetLength(Handle stream) = 0;
    virtual double ChannelBytes2Seconds(Handle stream, std::uint64_t bytes) = 0;
    virtual std::uint64_t ChannelSeconds2Bytes(Handle stream, double seconds) = 0;
    virtual std::uint64_t ChannelGetPosition(Handle stream) = 0;
    /** Bytes from the start; beyond the end is an Argument error. */
    virtual bool ChannelSetPosition(Handle stream, std::uint64_t bytes) = 0;
    virtual Activity ChannelIsActive(Handle stream) = 0;
    virtual bool ChannelPause(Handle stream) = 0;
    virtual bool ChannelResume(Handle stream) = 0;
    virtual bool ChannelStop(Handle stream) = 0;
    virtual bool ChannelGetInfo(Handle stream, ChannelInfo& info) = 0;

    /** Frequency in Hz, volume 0..100, pan -100..100; kKeep… leaves one alone. Ends a running slide of what it sets. */
    virtual bool ChannelSetAttributes(Handle stream, int frequency, int volume, int pan) = 0;
    virtual bool ChannelGetAttributes(Handle stream, Attributes& attributes) = 0;
    /** Moves to the given values evenly within the time, sample by sample. */
    virtual bool ChannelSlideAttributes(Handle stream, int frequency, int volume, int pan, int milliseconds) = 0;

    /**
     * A gain in dB, -24..24, besides the volume; 0 leaves the sound bit by bit. The bus limits what becomes too loud.
     */
    virtual bool ChannelSetGain(Handle /*stream*/, float /*decibel*/) { return true; }

    /** type: a SyncType, kOneTime added where it shall fire once. Returns the sync. */
    virtual Handle ChannelSetSync(Handle stream, std::uint32_t type, std::uint64_t parameter, SyncProcedure procedure,
                                  void* user) = 0;
    virtual bool ChannelRemoveSync(Handle stream, Handle sync) = 0;
    /** Runs the procedures of the events that have come since; also watches the devices. Call every 50 ms or oftener.
     */
    virtual void DispatchEvents() = 0;

    virtual Levels ChannelGetLevel(Handle stream) = 0;
    /** Returns how many values were written; 0 when the stream does not play. */
    virtual std::size_t ChannelGetData(Handle stream, DataKind kind, float* values, std::size_t count) = 0;

    // ---- effects

    virtual Handle ChannelSetFX(Handle stream, EffectType type) = 0;
    virtual bool ChannelRemoveFX(Handle stream, Handle effect) = 0;
    virtual bool FXSetParameters(Handle effect, const EffectParameters& parameters) = 0;
    virtual bool FXGetParameters(Handle effect, EffectParameters& parameters) = 0;
};

/** Name and type of the module's one entry; the caller owns the library that it returns. */
constexpr const char* kFactoryName = "CreateAudioLibrary";
using Factory = AudioLibrary* (*)();

} // namespace kalvo::audio
