#pragma once

#include "FakeAudio.h"

#include <array>

namespace kalvo::test {

/** Three cards; the last one is the same as the first under another number. */
class FakeCards : public FakeAudio {
public:
    std::string GetDeviceDescription(int device) override {
        static const std::array<std::string, 5> names = {"Kein Ton", "Standard", "A", "B", "A too"};
        return device < 5 ? names.at(static_cast<std::size_t>(device)) : "";
    }
    bool Init(audio::Output output, int device, int, int) override {
        opens[output] = device;
        return device != unpluggable;
    }
    bool Free(audio::Output output) override { return opens.erase(output) == 1; }
    bool GetInfo(audio::Output output, audio::OutputInfo& info) const override {
        const auto found = opens.find(output);
        if (found == opens.end())
            return false;
        const bool gone = output == audio::Output::Headphones && lost;
        info.device = gone ? audio::kNoSound : found->second;
        info.deviceName = gone ? "Kein Ton" : found->second == 3 ? "B" : "A";
        return true;
    }
    bool SetVolume(audio::Output output, int volume) override {
        volumes[output] = volume;
        return true;
    }

    std::map<audio::Output, int> opens, volumes;
    int unpluggable = -7;
    bool lost = false;
};

} // namespace kalvo::test
