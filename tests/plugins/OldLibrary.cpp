// Two components in another version, as one module: what a program finds after a broken update.

#include "playback/FakeAudio.h"
#include "tags/DiscDatabase.h"

namespace kalvo::test {

constexpr std::uint32_t kOldVersion = 0x00090001; // 1.9

class OldLibrary final : public FakeAudio {
public:
    std::uint32_t GetVersion() const override { return kOldVersion; }
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
[[gnu::visibility("default")]] kalvo::DiscDatabase* CreateDiscDatabase() {
    return new kalvo::test::OldDiscDatabase;
}
}
