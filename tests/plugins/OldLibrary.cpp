// Every component in another version, as one module: what a program finds after a broken update.

#include "audio/EncoderLibrary.h"
#include "playback/FakeAudio.h"
#include "tags/DiscDatabase.h"

namespace kalvo::test {

constexpr std::uint32_t kOldVersion = 0x00090001; // 1.9

class OldLibrary final : public FakeAudio {
public:
    std::uint32_t GetVersion() const override { return kOldVersion; }
};

class OldEncoder final : public audio::EncoderLibrary {
public:
    using Audio = audio::AudioLibrary;
    using Settings = audio::EncodeSettings;
    std::uint32_t GetVersion() const override { return kOldVersion; }
    audio::EncodeError ErrorGetCode() const override { return {}; }
    audio::Handle Encode_Start(Audio&, audio::Output, const std::string&, const Settings&) override { return 0; }
    audio::Handle Encode_Start(Audio&, audio::Handle, const std::string&, const Settings&) override { return 0; }
    bool Encode_Stop(audio::Handle) override { return false; }
    bool Encode_GetState(audio::Handle, audio::EncodeState&) override { return false; }
};

class OldDiscDatabase final : public DiscDatabase {
public:
    quint32 GetVersion() const override { return kOldVersion; }
    QString DiscId(const DiscToc&) const override { return {}; }
    std::optional<DiscEntry> Read(const QString&, const DiscToc&) const override { return {}; }
    bool Write(const QString&, const DiscToc&, const DiscEntry&) const override { return false; }
};

} // namespace kalvo::test

extern "C" {
[[gnu::visibility("default")]] kalvo::audio::AudioLibrary* CreateAudioLibrary() {
    return new kalvo::test::OldLibrary;
}
[[gnu::visibility("default")]] kalvo::audio::EncoderLibrary* CreateEncoderLibrary() {
    return new kalvo::test::OldEncoder;
}
[[gnu::visibility("default")]] kalvo::DiscDatabase* CreateDiscDatabase() {
    return new kalvo::test::OldDiscDatabase;
}
}
