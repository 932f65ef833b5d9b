// An audio library of another version, as a module: what a program finds after a broken update.

#include "playback/FakeAudio.h"

namespace kalvo::test {

class OldLibrary final : public FakeAudio {
public:
    std::uint32_t GetVersion() const override { return 0x00090001; } // 1.9
};

} // namespace kalvo::test

extern "C" __attribute__((visibility("default"))) kalvo::audio::AudioLibrary* CreateAudioLibrary() {
    return new kalvo::test::OldLibrary;
}
