#pragma once

#include "audio/AudioLibrary.h"

#include <functional>
#include <map>
#include <string>

namespace kalvo {

/**
 * An audio library without sound, in which only time passes: titles have their lengths, positions and ends. With it the
 * mixer plays a whole night in a moment. Time passes in Advance() alone. One thread.
 */
class TimelineAudio final : public audio::AudioLibrary {
public:
    /** Seconds of a file; 0 when it cannot be played. */
    using Length = std::function<double(const std::string& path)>;
    explicit TimelineAudio(Length length) : length_(std::move(length)) {}

    /** Ends that come with it are told by the next DispatchEvents(). */
    void Advance(double seconds);

    std::uint32_t GetVersion() const override { return 2; }
    audio::ErrorCode ErrorGetCode() const override { return audio::ErrorCode::None; }
    std::string GetDeviceDescription(int) override { return {}; }
    bool Init(audio::Output, int, int, int) override { return true; }
    bool Free(audio::Output) override { return true; }
    bool GetInfo(audio::Output, audio::OutputInfo& info) const override;
    bool SetVolume(audio::Output, int) override { return true; }
    int GetVolume(audio::Output) const override { return 100; }
    bool Stop(audio::Output) override { return true; }
    bool Render(audio::Output, float*, std::size_t) override { return false; }
    audio::Levels GetOutputLevels(audio::Output) override { return {}; }
    std::size_t GetOutputData(audio::Output, audio::DataKind, float*, std::size_t) override { return 0; }
    bool AddSink(audio::Output, audio::SoundSink&) override { return false; }
    bool AddSink(audio::Handle, audio::SoundSink&) override { return false; }
    void RemoveSink(audio::SoundSink&) override {}

    audio::Handle StreamCreateFile(audio::Output output, const std::string& path) override;
    bool StreamPlay(audio::Handle stream, bool fromStart) override;
    bool StreamFree(audio::Handle stream) override { return streams_.erase(stream) == 1; }
    std::uint64_t StreamGetLength(audio::Handle stream) override;
    double ChannelBytes2Seconds(audio::Handle stream, std::uint64_t bytes) override;
    std::uint64_t ChannelSeconds2Bytes(audio::Handle stream, double seconds) override;
    std::uint64_t ChannelGetPosition(audio::Handle stream) override;
    bool ChannelSetPosition(audio::Handle stream, std::uint64_t bytes) override;
    audio::Activity ChannelIsActive(audio::Handle stream) override;
    bool ChannelPause(audio::Handle stream) override { return Become(stream, audio::Activity::Paused); }
    bool ChannelResume(audio::Handle stream) override { return Become(stream, audio::Activity::Playing); }
    bool ChannelStop(audio::Handle stream) override { return Become(stream, audio::Activity::Stopped); }
    bool ChannelGetInfo(audio::Handle stream, audio::ChannelInfo& info) override;
    bool ChannelSetAttributes(audio::Handle stream, int frequency, int volume, int pan) override;
    bool ChannelGetAttributes(audio::Handle, audio::Attributes&) override { return false; }
    bool ChannelSlideAttributes(audio::Handle, int, int, int, int) override { return true; }
    audio::Handle ChannelSetSync(audio::Handle stream, std::uint32_t type, std::uint64_t parameter,
                                 audio::SyncProcedure procedure, void* user) override;
    bool ChannelRemoveSync(audio::Handle, audio::Handle) override { return true; }
    void DispatchEvents() override;
    audio::Levels ChannelGetLevel(audio::Handle) override { return {}; }
    std::size_t ChannelGetData(audio::Handle, audio::DataKind, float*, std::size_t) override { return 0; }
    audio::Handle ChannelSetFX(audio::Handle, audio::EffectType) override { return 1; }
    bool ChannelRemoveFX(audio::Handle, audio::Handle) override { return true; }
    bool FXSetParameters(audio::Handle, const audio::EffectParameters&) override { return true; }
    bool FXGetParameters(audio::Handle, audio::EffectParameters&) override { return false; }

private:
    struct Stream {
        double length = 0;
        double position = 0;
        double speed = 1;
        audio::Activity activity = audio::Activity::Stopped;
        audio::SyncProcedure onEnd = nullptr;
        void* user = nullptr;
        bool ended = false; ///< and not told yet
    };

    /** Null for a stream that is gone. */
    Stream* Find(audio::Handle stream);
    bool Become(audio::Handle stream, audio::Activity activity);

    Length length_;
    std::map<audio::Handle, Stream> streams_;
    audio::Handle last_ = 0;
    std::uint64_t steps_ = 0;
};

} // namespace kalvo
