#pragma once

#include "audio/AudioLibrary.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <utility>
#include <vector>

namespace kalvo::test {

/**
 * Stands for the audio library where only time matters: a file's length is told by its name ("…-12.mp3": 12 seconds at
 * 1000 frames each), "broken" in it does not open, "slow" opens two seconds late, "hanging" never, "stalling" stands
 * still after three seconds. A file in memory has a second a byte. Time passes in Advance().
 */
class FakeAudio : public audio::AudioLibrary {
public:
    struct Stream {
        std::string path;
        double length = 0;
        double position = 0;
        audio::Activity activity = audio::Activity::Stopped;
        audio::Attributes attributes;
        double volume = 100; ///< the same as in the attributes, not rounded
        double slideTo = 0;
        double slideLeft = 0; ///< seconds
        audio::SyncProcedure onEnd = nullptr;
        void* user = nullptr;
        bool ended = false;
        double opensIn = 0;
    };
    static constexpr int kRate = 1000;
    static constexpr double kSlow = 2;
    static constexpr double kStall = 3;

    std::map<audio::Handle, Stream> streams;
    bool deviceTakes = true; ///< the output device asks for sound
    int opened = 0;
    int enumerations = 0;     ///< of the devices
    std::vector<float> gains; ///< set so far
    int effects = 0;          ///< that stand in the streams' paths

    /** Lets time pass for everything that plays; ends are told in DispatchEvents. */
    void Advance(double seconds) {
        callbacks_ += deviceTakes ? 1 : 0;
        for (auto& [handle, stream] : streams) {
            stream.opensIn -= seconds;
            Slide(stream, seconds);
            if (stream.activity != audio::Activity::Playing || !deviceTakes)
                continue;
            const bool stalls = stream.path.find("stalling") != std::string::npos;
            stream.position = std::min(stream.position + seconds, stalls ? kStall : stream.length);
            stream.ended = stream.position == stream.length;
            stream.activity = stream.ended ? audio::Activity::Stopped : stream.activity;
        }
    }

    Stream& At(audio::Handle handle) { return streams.at(handle); }

    std::uint32_t GetVersion() const override { return 2; }
    audio::ErrorCode ErrorGetCode() const override { return {}; }
    std::string GetDeviceDescription(int device) override {
        enumerations += device == 0 ? 1 : 0;
        return device == 0 ? "Kein Ton" : "";
    }
    bool Init(audio::Output, int device, int, int) override { return device <= 1; }
    bool Free(audio::Output) override { return true; }
    bool GetInfo(audio::Output, audio::OutputInfo& info) const override {
        info.callbacks = callbacks_;
        return true;
    }
    bool SetVolume(audio::Output, int) override { return true; }
    int GetVolume(audio::Output) const override { return 100; }
    bool Stop(audio::Output) override { return true; }
    bool Render(audio::Output, float*, std::size_t) override { return false; }
    audio::Levels GetOutputLevels(audio::Output) override { return {}; }
    std::size_t GetOutputData(audio::Output, audio::DataKind, float*, std::size_t) override { return 0; }

    bool AddSink(audio::Output, audio::SoundSink&) override { return false; }
    bool AddSink(audio::Handle, audio::SoundSink&) override { return false; }
    void RemoveSink(audio::SoundSink&) override {}

    audio::Handle StreamCreateFile(audio::Output, const std::string& path) override {
        if (path.find("broken") != std::string::npos)
            return 0;
        Stream stream;
        stream.path = path;
        stream.length = std::atof(path.substr(path.rfind('-') + 1).c_str());
        streams[++opened] = stream;
        return static_cast<audio::Handle>(opened);
    }
    audio::Handle StreamOpenFile(audio::Output output, const std::string& path) override {
        const audio::Handle handle = StreamCreateFile(output, path);
        if (handle != 0) {
            const bool never = path.find("hanging") != std::string::npos;
            At(handle).opensIn = never ? 1e9 : path.find("slow") != std::string::npos ? kSlow : 0;
        }
        return handle;
    }
    audio::Handle StreamOpenHeld(audio::Output output, const audio::HeldFile& file) override {
        return StreamCreateFile(output, "held-" + std::to_string(file->size()));
    }
    audio::OpenState StreamAwaitOpen(audio::Handle handle, int /*milliseconds*/) override {
        return At(handle).opensIn > 1e-9 ? audio::OpenState::Opening : audio::OpenState::Ready;
    }
    bool StreamPlay(audio::Handle handle, bool fromStart) override {
        At(handle).position = fromStart ? 0 : At(handle).position;
        return Become(handle, audio::Activity::Playing);
    }
    bool StreamFree(audio::Handle handle) override { return streams.erase(handle) == 1; }
    std::uint64_t StreamGetLength(audio::Handle handle) override { return Bytes(At(handle).length); }
    double ChannelBytes2Seconds(audio::Handle, std::uint64_t bytes) override {
        return static_cast<double>(bytes) / (4.0 * kRate);
    }
    std::uint64_t ChannelSeconds2Bytes(audio::Handle, double seconds) override { return Bytes(seconds); }
    std::uint64_t ChannelGetPosition(audio::Handle handle) override { return Bytes(At(handle).position); }
    bool ChannelSetPosition(audio::Handle handle, std::uint64_t bytes) override {
        At(handle).position = ChannelBytes2Seconds(handle, bytes);
        return true;
    }
    audio::Activity ChannelIsActive(audio::Handle handle) override { return At(handle).activity; }
    bool ChannelPause(audio::Handle handle) override { return Become(handle, audio::Activity::Paused); }
    bool ChannelResume(audio::Handle handle) override { return Become(handle, audio::Activity::Playing); }
    bool ChannelStop(audio::Handle handle) override { return Become(handle, audio::Activity::Stopped); }
    bool ChannelGetInfo(audio::Handle, audio::ChannelInfo& info) override {
        info.sampleRate = kRate;
        info.bitrate = 192;
        return true;
    }
    bool ChannelSetAttributes(audio::Handle handle, int frequency, int volume, int pan) override {
        audio::Attributes& attributes = At(handle).attributes;
        attributes.frequency = frequency == audio::kKeepFrequency ? attributes.frequency : frequency;
        if (volume != audio::kKeepVolume)
            SetVolume(At(handle), volume);
        attributes.pan = pan == audio::kKeepPan ? attributes.pan : pan;
        return true;
    }
    bool ChannelGetAttributes(audio::Handle handle, audio::Attributes& attributes) override {
        attributes = At(handle).attributes;
        return true;
    }
    /** Of volumes only. */
    bool ChannelSlideAttributes(audio::Handle handle, int, int volume, int, int milliseconds) override {
        At(handle).slideTo = volume;
        At(handle).slideLeft = milliseconds / 1000.0;
        return true;
    }
    bool ChannelSetGain(audio::Handle, float decibel) override {
        gains.push_back(decibel);
        return true;
    }
    audio::Handle ChannelSetSync(audio::Handle handle, std::uint32_t type, std::uint64_t,
                                 audio::SyncProcedure procedure, void* user) override {
        if (type == (static_cast<std::uint32_t>(audio::SyncType::End) | audio::kOneTime)) {
            At(handle).onEnd = procedure;
            At(handle).user = user;
        }
        return 1;
    }
    bool ChannelRemoveSync(audio::Handle, audio::Handle) override { return true; }
    void DispatchEvents() override {
        for (const auto& [handle, before] : std::map(streams)) { // a procedure may free streams
            if (before.ended && streams.count(handle) == 1 && std::exchange(At(handle).ended, false) && before.onEnd)
                before.onEnd(1, handle, 0, before.user);
        }
    }
    audio::Levels ChannelGetLevel(audio::Handle) override { return {}; }
    std::size_t ChannelGetData(audio::Handle, audio::DataKind, float*, std::size_t) override { return 0; }
    audio::Handle ChannelSetFX(audio::Handle, audio::EffectType) override {
        return static_cast<audio::Handle>(++effects);
    }
    bool ChannelRemoveFX(audio::Handle, audio::Handle) override { return --effects >= 0; }
    bool FXSetParameters(audio::Handle, const audio::EffectParameters&) override { return true; }
    bool FXGetParameters(audio::Handle, audio::EffectParameters&) override { return true; }

private:
    std::uint64_t callbacks_ = 0;

    static void SetVolume(Stream& stream, double volume) {
        stream.volume = volume;
        stream.attributes.volume = static_cast<int>(std::lround(volume));
        stream.slideLeft = 0;
    }
    static void Slide(Stream& stream, double seconds) {
        if (stream.slideLeft <= seconds) {
            if (stream.slideLeft > 0)
                SetVolume(stream, stream.slideTo);
            return;
        }
        const double left = stream.slideLeft - seconds;
        SetVolume(stream, stream.volume + (stream.slideTo - stream.volume) * seconds / stream.slideLeft);
        stream.slideLeft = left;
    }
    bool Become(audio::Handle handle, audio::Activity activity) {
        At(handle).activity = activity;
        return true;
    }
    static std::uint64_t Bytes(double seconds) { return static_cast<std::uint64_t>(seconds * kRate + 0.5) * 4; }
};

} // namespace kalvo::test
