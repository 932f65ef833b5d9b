#include "audio/AudioLibraryImpl.h"
#include "playback/OfflineMix.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"

#include <QFile>
#include <gtest/gtest.h>

#include <cmath>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

/** Seconds of silence at the longest, from the first sound to the last. */
class LongestGap {
public:
    void Hear(const float* stereo, std::size_t frames) {
        for (std::size_t i = 0; i < frames; ++i) {
            ++quiet_;
            if (std::abs(stereo[2 * i]) < 0.001F)
                continue;
            longest_ = std::max(longest_, heard_ ? quiet_ : 0);
            heard_ = true;
            quiet_ = 0;
        }
    }
    double Seconds() const { return longest_ / 44100.0; }

private:
    int quiet_ = 0;
    int longest_ = 0;
    bool heard_ = false;
};

PlaylistEntry Title(const TestFolder& folder, const QString& name, double seconds) {
    SoundSpec sound;
    sound.seconds = seconds;
    PlaylistEntry entry;
    entry.path = MakeSound(folder.Path(), name, sound);
    return entry;
}

TEST(CutFileTest, ATitleThatIsCutOrDeletedWhileItPlaysIsFollowedAtOnce) {
    const TestFolder folder;
    SystemRandom random;
    Playlist list1(1, random);
    Playlist list2(2, random);
    AudioLayer layer(std::make_unique<audio::AudioLibraryImpl>());
    ASSERT_TRUE(layer.InitAudio(audio::kOffline, 1024));
    Mixer mixer(layer, list1, list2);
    OfflineMix mix(mixer);
    const PlaylistEntry cut = Title(folder, u"gekürzt.wav"_s, 90); // longer than what is read ahead
    const PlaylistEntry gone = Title(folder, u"gelöscht.wav"_s, 50);
    list1.Append({cut, Title(folder, u"danach.mp3"_s, 3)});
    list2.Append({gone});
    mixer.Play(1, -1);
    LongestGap gap;
    QList<double> starts;
    QObject::connect(&mixer, &Mixer::TitleStarted, [&] { starts.append(mix.Seconds()); });
    EXPECT_TRUE(mix.Run([&](const float* stereo, std::size_t frames) {
        gap.Hear(stereo, frames);
        if (mix.Seconds() > 3) {
            QFile::resize(cut.path, 8'000'000); // 45 s
        }
        if (starts.size() == 1) {
            QFile::remove(gone.path);
        }
        return true;
    }));
    ASSERT_EQ(starts.size(), 2) << "after the first, which was started before";
    EXPECT_NEAR(starts[0], 45, 1) << "by what was read already, and a block of the file";
    EXPECT_NEAR(starts[1], starts[0] + 41, 1) << "an open file is not gone: the regular hand-over";
    EXPECT_LT(gap.Seconds(), 0.2);
}

} // namespace
} // namespace kalvo::test
