#include "app/MetaOutput.h"

#include "base/BackgroundWriter.h"
#include "base/RandomSource.h"
#include "base/Settings.h"
#include "playback/FakeAudio.h"
#include "playback/Mixer.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct MetaOutputTest : ::testing::Test {
    MetaOutputTest() : settings(folder.Path(QStringLiteral("kalvo.ini"))) {
        layer = std::make_unique<AudioLayer>(std::make_unique<test::FakeAudio>());
        layer->InitAudio(1, 1024);
        mixer = std::make_unique<Mixer>(*layer, list1, list2);
        settings.PutSetting(QStringLiteral("Metadata"), QStringLiteral("Stop"), QStringLiteral("Pause im Programm"));
        settings.PutSetting(QStringLiteral("Metadata"), QStringLiteral("Alternativ"), QStringLiteral("Kalvo spielt"));
        output = std::make_unique<MetaOutput>(*mixer, settings, writer, folder.Path(QStringLiteral("meta.dat")));
    }

    void Add(Playlist& list, const char* file, const QString& artist, const QString& title) {
        PlaylistEntry entry;
        entry.artist = artist;
        entry.title = title;
        entry.path = folder.Write(QLatin1String(file), "x");
        list.Append({entry});
    }

    QString Line() {
        writer.Flush();
        return QString::fromUtf8(folder.Read(QStringLiteral("meta.dat")));
    }

    test::TestFolder folder;
    SystemRandom random;
    Playlist list1{1, random};
    Playlist list2{2, random};
    Settings settings;
    BackgroundWriter writer;
    std::unique_ptr<AudioLayer> layer;
    std::unique_ptr<Mixer> mixer;
    std::unique_ptr<MetaOutput> output;
};

TEST_F(MetaOutputTest, FollowsTheTitleOnAir) {
    Add(list1, "a-100", QStringLiteral("Jürgen\nund Co"), QStringLiteral("Größe"));
    Add(list2, "b-100", {}, QStringLiteral("Nur Titel"));
    EXPECT_EQ(Line(), QStringLiteral("Pause im Programm\n"));
    mixer->Play(1, -1);
    EXPECT_EQ(Line(), QStringLiteral("Jürgen und Co - Größe\n"));
    mixer->Play(2, -1); // in the middle of the fader Player 1 counts
    EXPECT_EQ(Line(), QStringLiteral("Jürgen und Co - Größe\n"));
    mixer->SetFader(50);
    EXPECT_EQ(Line(), QStringLiteral("Nur Titel\n"));
    mixer->Stop(2);
    mixer->Pause(1);
    EXPECT_EQ(Line(), QStringLiteral("Pause im Programm\n"));
}

TEST_F(MetaOutputTest, TakesTheAlternativeForATitleWithoutNames) {
    Add(list1, "a-100", {}, QStringLiteral("  "));
    mixer->Play(1, -1);
    EXPECT_EQ(Line(), QStringLiteral("Kalvo spielt\n"));
    settings.PutSetting(QStringLiteral("Metadata"), QStringLiteral("Alternativ"), {});
    output->Refresh();
    EXPECT_EQ(Line(), QStringLiteral("\n"));
}

} // namespace
} // namespace kalvo
