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

using namespace Qt::StringLiterals;

struct MetaOutputTest : ::testing::Test {
    MetaOutputTest() : settings(folder.Path(u"kalvo.ini"_s)) {
        layer = std::make_unique<AudioLayer>(std::make_unique<test::FakeAudio>());
        layer->InitAudio(1, 1024);
        mixer = std::make_unique<Mixer>(*layer, list1, list2);
        settings.PutSetting(u"Metadata"_s, u"Stop"_s, u"Pause im Programm"_s);
        settings.PutSetting(u"Metadata"_s, u"Alternativ"_s, u"Kalvo spielt"_s);
        output = std::make_unique<MetaOutput>(*mixer, settings, writer, folder.Path(u"meta.dat"_s));
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
        return QString::fromUtf8(folder.Read(u"meta.dat"_s));
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
    Add(list1, "a-100", u"Jürgen\nund Co"_s, u"Größe"_s);
    Add(list2, "b-100", {}, u"Nur Titel"_s);
    EXPECT_EQ(Line(), u"Pause im Programm\n"_s);
    mixer->Play(1, -1);
    EXPECT_EQ(Line(), u"Jürgen und Co - Größe\n"_s);
    mixer->Play(2, -1); // in the middle of the fader Player 1 counts
    EXPECT_EQ(Line(), u"Jürgen und Co - Größe\n"_s);
    mixer->SetFader(50);
    EXPECT_EQ(Line(), u"Nur Titel\n"_s);
    mixer->Stop(2);
    mixer->Pause(1);
    EXPECT_EQ(Line(), u"Pause im Programm\n"_s);
}

TEST_F(MetaOutputTest, TakesTheAlternativeForATitleWithoutNames) {
    Add(list1, "a-100", {}, u"  "_s);
    mixer->Play(1, -1);
    EXPECT_EQ(Line(), u"Kalvo spielt\n"_s);
    settings.PutSetting(u"Metadata"_s, u"Alternativ"_s, {});
    output->Refresh();
    EXPECT_EQ(Line(), u"\n"_s);
}

} // namespace
} // namespace kalvo
