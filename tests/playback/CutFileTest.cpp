#include "audio/AudioLibraryImpl.h"
#include "playback/OfflineMix.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/ToneMeter.h"

#include <QFile>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

PlaylistEntry Title(const TestFolder& folder, const QString& name, double seconds) {
    SoundSpec sound;
    sound.seconds = seconds;
    return {name, {}, {}, {}, {}, MakeSound(folder.Path(), name, sound)};
}

TEST(CutFileTest, ATitleThatIsCutOrDeletedWhileItPlaysIsFollowedAtOnce) {
    const TestFolder folder;
    SystemRandom random;
    Playlist list1(1, random), list2(2, random);
    AudioLayer layer(std::make_unique<audio::AudioLibraryImpl>());
    ASSERT_TRUE(layer.InitAudio(audio::kOffline, 1024));
    Mixer mixer(layer, list1, list2);
    OfflineMix mix(mixer);
    const PlaylistEntry cut = Title(folder, u"gekürzt.wav"_s, 90); // longer than what is read ahead
    const PlaylistEntry gone = Title(folder, u"gelöscht.wav"_s, 50);
    list1.Append({cut, Title(folder, u"danach.mp3"_s, 3)});
    list2.Append({gone});
    mixer.Play(1, -1);
    std::vector<float> left;
    QList<double> starts;
    QObject::connect(&mixer, &Mixer::TitleStarted, [&] { starts.append(mix.Seconds()); });
    EXPECT_TRUE(mix.Run([&](const float* stereo, std::size_t frames) {
        for (std::size_t i = 0; i < frames; ++i)
            left.push_back(stereo[2 * i]);
        if (mix.Seconds() > 3)
            QFile::resize(cut.path, 8'000'000); // 45 s
        if (starts.size() == 1)
            QFile::remove(gone.path);
        return true;
    }));
    ASSERT_EQ(starts.size(), 2) << "after the first, which was started before";
    EXPECT_NEAR(starts[0], 45, 1) << "by what was read already, and a block of the file";
    EXPECT_NEAR(starts[1], starts[0] + 41, 1) << "an open file is not gone: the regular hand-over";
    EXPECT_LT(ToneMeter(std::move(left), 44100).LongestSilence(0.001, 0.1, starts[1] + 2), 0.2);
}

} // namespace
} // namespace kalvo::test
