#include "app/FakeWindow.h"
#include "app/FirstStepsState.h"
#include "support/SoundMaker.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using Step = FirstStepsState::Step;

TEST(FirstStepsStateTest, TheNextStepFollowsFromWhatIsThere) {
    const struct {
        qint64 archived;
        int listed;
        bool isImporting;
        Step next;
    } cases[] = {{0, 0, false, Step::Music}, {0, 0, true, Step::Music}, {7, 0, true, Step::Music},
                 {7, 0, false, Step::Lists}, {7, 2, false, Step::Play}, {0, 2, false, Step::Play}};
    for (const auto& [archived, listed, isImporting, next] : cases) {
        const FirstStepsState state{{}, false, archived, listed, isImporting, {}};
        EXPECT_EQ(state.Next(), next) << archived << ' ' << listed << ' ' << isImporting;
        EXPECT_TRUE(ViewOfStep(state, static_cast<std::size_t>(next)).isEnabled);
        EXPECT_EQ(ViewOfStep(state, 2).isEnabled, listed > 0);
    }
}

/** A home with a music folder. */
struct FirstStepsTest : test::FakeWindow {
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", folder.Path(u"config"_s).toUtf8());
        folder.Write(u"config/user-dirs.dirs"_s, "XDG_MUSIC_DIR=\"" + folder.Path(u"Musik"_s).toUtf8() + "\"\n");
    }
    void TearDown() override { qunsetenv("XDG_CONFIG_HOME"); }
    void ShowWhole() {
        Show();
        ASSERT_TRUE(test::WaitUntil([this] { return desk->archive.IsIndexReady(); }));
    }
    QAbstractButton& Button(const char* name) { return In<QAbstractButton>(name); }
    bool IsShown() { return In("ErsteSchritte").isVisible(); }
};

TEST_F(FirstStepsTest, ThreePressesLeadFromAnEmptyArchiveToThePlayingTitle) {
    for (const char* name : {"a.mp3", "unten/b.ogg", "unten/c.mp3"})
        test::MakeSound(folder.Path(u"Musik"_s), QString::fromLatin1(name));
    ShowWhole();
    ASSERT_TRUE(IsShown());
    EXPECT_FALSE(Button("cmdSchritt3").isEnabled());
    ASSERT_TRUE(test::WaitUntil([this] { return Button("cmdSchritt1").text() == u"„Musik“ einlesen"_s; }));
    Button("cmdSchritt1").click();
    ASSERT_TRUE(test::WaitUntil([this] { return Button("cmdSchritt2").isEnabled(); }));
    EXPECT_EQ(desk->archive.Count(), 3);
    Button("cmdSchritt2").click();
    ASSERT_TRUE(test::WaitUntil([this] { return desk->list1.Count() + desk->list2.Count() == 3; }));
    EXPECT_EQ(desk->list1.Count(), 2) << "in turn";
    Button("cmdSchritt3").click();
    EXPECT_TRUE(test::WaitUntil([this] { return desk->mixer.OnAirPlayer() == 1; }));
    EXPECT_FALSE(IsShown()) << "the desk is in use";
    EXPECT_TRUE(In("DataGrid2").isVisible());
}

TEST_F(FirstStepsTest, IsClosedForGoodAndComesBackFromTheMenu) {
    ShowWhole();
    EXPECT_EQ(Button("cmdSchritt1Anders").text(), u"Titel zum Probieren"_s) << "no music of one's own";
    Button("cmdErsteSchritteSchliessen").click();
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(Read("kalvo.ini").contains("ErsteSchritte=0"));
    Trigger("ErsteSchritteZeigen");
    EXPECT_TRUE(IsShown());
    NextStart();
    ShowWhole();
    EXPECT_FALSE(IsShown()) << "at the next start";
}

TEST_F(FirstStepsTest, GivesWayToTitlesOfAnotherImportAndToASearch) {
    ShowWhole();
    TitleRecord title = Title({}, {}, folder.Write(u"lied.mp3"_s, "x"));
    ASSERT_TRUE(desk->archive.AddTitle(title));
    EXPECT_FALSE(IsShown());
    Trigger("ErsteSchritteZeigen");
    ASSERT_TRUE(IsShown());
    In<QLineEdit>("Text1").setText(u"lied"_s);
    EXPECT_FALSE(IsShown());
    NextStart();
    ShowWhole();
    EXPECT_FALSE(IsShown()) << "where there is something already";
}

} // namespace
} // namespace kalvo
