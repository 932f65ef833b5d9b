#pragma once

#include "audio/AudioLibrary.h"
#include "audio/Channel.h"
#include "audio/FrameSource.h"
#include "audio/OutputPort.h"
#include "audio/SdlAudio.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace kalvo::audio {

/** Checks handles and ranges, keeps the tables, reports errors; the work is done by OutputPort, Channel and Bus. */
class AudioLibraryImpl final : public AudioLibrary {
public:
    explicit AudioLibraryImpl(SourceOpener opener = OpenFileSource);
    ~AudioLibraryImpl() override;

    std::uint32_t GetVersion() const override { return 0x00000002; }
    ErrorCode ErrorGetCode() const override { return error_; }

    std::string GetDeviceDescription(int device) override;
    bool Init(Output output, int device, int sampleRate, int bufferFrames) override;
    bool Free(Output output) override;
    bool GetInfo(Output output, OutputInfo& info) const override;
    bool SetVolume(Output output, int volume) override;
    int GetVolume(Output output) const override;
    bool Stop(Output output) override;
    bool Render(Output output, float* stereo, std::size_t frames) override;
    Levels GetOutputLevels(Output output) override;
    std::size_t GetOutputData(Output output, DataKind kind, float* values, std::size_t count) override;

    Handle StreamCreateFile(Output output, const std::string& path) override;
    Handle StreamOpenFile(Output output, const std::string& path) override;
    Handle StreamOpenHeld(Output output, const HeldFile& file) override;
    OpenState StreamAwaitOpen(Handle stream, int milliseconds) override;
    bool StreamPlay(Handle stream, bool fromStart) override;
    bool StreamFree(Handle stream) override;
    std::uint64_t StreamGetLength(Handle stream) override;
    double ChannelBytes2Seconds(Handle stream, std::uint64_t bytes) override;
    std::uint64_t ChannelSeconds2Bytes(Handle stream, double seconds) override;
    std::uint64_t ChannelGetPosition(Handle stream) override;
    bool ChannelSetPosition(Handle stream, std::uint64_t bytes) override;
    Activity ChannelIsActive(Handle stream) override;
    bool ChannelPause(Handle stream) override;
    bool ChannelResume(Handle stream) override;
    bool ChannelStop(Handle stream) override;
    bool ChannelGetInfo(Handle stream, ChannelInfo& info) override;

    bool ChannelSetAttributes(Handle stream, int frequency, int volume, int pan) override;
    bool ChannelGetAttributes(Handle stream, Attributes& attributes) override;
    bool ChannelSlideAttributes(Handle stream, int frequency, int volume, int pan, int milliseconds) override;

    bool ChannelSetGain(Handle stream, float decibel) override;
    Handle ChannelSetSync(Handle stream, std::uint32_t type, std::uint64_t parameter, SyncProcedure procedure,
                          void* user) override;
    bool ChannelRemoveSync(Handle stream, Handle sync) override;
    void DispatchEvents() override;

    Levels ChannelGetLevel(Handle stream) override;
    std::size_t ChannelGetData(Handle stream, DataKind kind, float* values, std::size_t count) override;

    bool AddSink(Output output, SoundSink& sink) override;
    bool AddSink(Handle stream, SoundSink& sink) override;
    void RemoveSink(SoundSink& sink) override;

    Handle ChannelSetFX(Handle stream, EffectType type) override;
    bool ChannelRemoveFX(Handle stream, Handle effect) override;
    bool FXSetParameters(Handle effect, const EffectParameters& parameters) override;
    bool FXGetParameters(Handle effect, EffectParameters& parameters) override;

private:
    struct OutputSlot {
        std::unique_ptr<OutputPort> port;
        int device = kNoSound; // as asked for
        int volume = 100;
        std::vector<SoundSink*> sinks; // of the whole output; stay while it is opened anew
    };

    struct Opening {
        Output output;
        std::unique_ptr<FrameSource> source;
    };

    OutputSlot& Slot(Output output) { return outputs_[std::size_t(output)]; }
    const OutputSlot& Slot(Output output) const { return outputs_[std::size_t(output)]; }
    /** Null, with the error noted, when the output or the stream does not exist. */
    OutputPort* Find(Output output) const;
    Channel* Find(Handle stream);
    /** One operation of a stream, its error noted. */
    template<class... Parameters, class... Arguments>
    bool Do(Handle stream, ErrorCode (Channel::*operation)(Parameters...), Arguments... arguments) {
        Channel* channel = Find(stream);
        return channel != nullptr && Report((channel->*operation)(arguments...));
    }
    bool Report(ErrorCode error) const;
    Handle Refuse(ErrorCode error) const;

    /** Frees all streams and the port; the sinks stay. */
    void Close(Output output);
    bool OpenDevice(OutputPort& port, Output output, int device);
    const DeviceNames& Names();
    std::optional<std::string> DeviceName(int device);
    int DeviceNumber(const OutputSlot& slot, const std::string& name) const;
    bool SendVolume(OutputSlot& slot);
    void TakeSinksAlong(OutputSlot& slot);
    bool RoomFor(Output output);
    Handle Open(Output output, const SourceOpener& opener, const std::string& path);
    ErrorCode MakeChannel(Handle stream, Opening opening);
    void Dispatch(Handle stream, bool deviceLost);

    SourceOpener opener_;
    mutable ErrorCode error_ = ErrorCode::None;
    Handle lastHandle_ = 0;
    SdlAudio audio_;
    std::optional<DeviceNames> names_; // as the numbers were given out last
    std::array<OutputSlot, 2> outputs_;
    std::map<Handle, Opening> openings_;                  // streams on their way
    std::map<Handle, std::unique_ptr<Channel>> channels_; // goes before the outputs
    std::map<Handle, Handle> effects_;                    // effect → stream
};

} // namespace kalvo::audio
