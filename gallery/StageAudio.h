#pragma once

#include "playback/FakeAudio.h"

#include <array>

namespace kalvo::gallery {

/** Three cards, music that can be seen, and files as long as they are said to be. Nothing sounds. */
class StageAudio : public test::FakeAudio {
public:
    std::map<std::string, double> lengths; ///< seconds, by path; other files have four minutes

    audio::Handle StreamCreateFile(audio::Output output, const std::string& path) override {
        const audio::Handle handle = test::FakeAudio::StreamCreateFile(output, path);
        if (handle != 0) {
            const auto known = lengths.find(path);
            At(handle).length = known == lengths.end() ? 240 : known->second;
        }
        return handle;
    }
    std::string GetDeviceDescription(int device) override { return Card(device); }
    bool Init(audio::Output, int, int, int) override { return true; }
    bool GetInfo(audio::Output output, audio::OutputInfo& info) const override {
        info.device = output == audio::Output::Main ? 2 : 3;
        info.deviceName = Card(info.device);
        info.sampleRate = kStageRate;
        return test::FakeAudio::GetInfo(output, info);
    }
    audio::Levels ChannelGetLevel(audio::Handle handle) override {
        return At(handle).activity == audio::Activity::Playing ? GetOutputLevels({}) : audio::Levels();
    }
    audio::Levels GetOutputLevels(audio::Output) override {
        return IsPlaying() ? audio::Levels{0.62F, 0.5F} : audio::Levels();
    }
    std::size_t GetOutputData(audio::Output, audio::DataKind kind, float* target, std::size_t count) override {
        for (std::size_t i = 0; i < count; ++i) {
            const auto place = static_cast<float>(i);
            const bool isSpectrum = kind != audio::DataKind::Samples;
            target[i] = isSpectrum ? 0.4F * (1.3F + std::sin(place * 0.9F)) / (1.0F + place * 0.35F)
                                   : 0.5F * std::sin(place * 0.11F) * std::sin(place * 0.004F);
        }
        return IsPlaying() ? count : 0;
    }

private:
    static std::string Card(int device) {
        static const std::array<const char*, 4> kNames{"Kein Ton", "Standard", "USB-Audio, Analog Stereo",
                                                       "Internes Audio, Analog Stereo"};
        return device >= 0 && device < 4 ? kNames.at(static_cast<std::size_t>(device)) : "";
    }
    bool IsPlaying() const {
        return std::any_of(streams.begin(), streams.end(),
                           [](const auto& stream) { return stream.second.activity == audio::Activity::Playing; });
    }

    static constexpr int kStageRate = 48000;
};

} // namespace kalvo::gallery
