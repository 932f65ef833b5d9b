#include "app/MetaOutput.h"

#include "app/FakeWindow.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

class MetaOutputTest : public test::FakeWindow {
protected:
    void SetUp() override {
        folder.Write(u"Kalvo/kalvo.ini"_s, "[Metadata]\nStop=Pause im Programm\nAlternativ=Kalvo spielt\n");
        ASSERT_TRUE(window->Load());
    }
    void Add(int player, const char* file, const QString& artist, const QString& title) {
        desk->List(player).Append({{title, artist, {}, {}, {}, folder.Write(QLatin1String(file), "x")}});
    }
    QString Line() {
        desk->writer.Flush();
        return QString::fromUtf8(Read("meta.dat"));
    }
};

TEST_F(MetaOutputTest, FollowsTheTitleOnAir) {
    Add(1, "a-100", u"Jürgen\nund Co"_s, u"Größe"_s);
    Add(2, "b-100", {}, u"Nur Titel"_s);
    EXPECT_EQ(Line(), u"Pause im Programm\n"_s);
    desk->mixer.Play(1, -1);
    EXPECT_EQ(Line(), u"Jürgen und Co - Größe\n"_s);
    desk->mixer.Play(2, -1); // in the middle of the fader Player 1 counts
    EXPECT_EQ(Line(), u"Jürgen und Co - Größe\n"_s);
    desk->mixer.SetFader(50);
    EXPECT_EQ(Line(), u"Nur Titel\n"_s);
    desk->mixer.Stop(2);
    desk->mixer.Pause(1);
    EXPECT_EQ(Line(), u"Pause im Programm\n"_s);
}

TEST_F(MetaOutputTest, TakesTheAlternativeForATitleWithoutNames) {
    Add(1, "a-100", {}, u"  "_s);
    desk->mixer.Play(1, -1);
    EXPECT_EQ(Line(), u"Kalvo spielt\n"_s);
    desk->settings.PutSetting(u"Metadata"_s, u"Alternativ"_s, {});
    In<MetaOutput>(*window, "").Refresh();
    EXPECT_EQ(Line(), u"\n"_s);
}

} // namespace
} // namespace kalvo
