#include "app/FakeWindow.h"
#include "app/FirstStepsState.h"
#include "archive/ui/WindowActs.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using Step = FirstStepsState::Step;

TEST(FirstStepsStateTest, TheNextStepFollowsFromWhatIsThere) {
    struct Case {
        qint64 archived;
        int listed;
        bool isImporting;
        Step next;
    };
    for (const Case& c :
         {Case{0, 0, false, Step::Music}, Case{0, 0, true, Step::Music}, Case{7, 0, true, Step::Music},
          Case{7, 0, false, Step::Lists}, Case{7, 2, false, Step::Play}, Case{0, 2, false, Step::Play}}) {
        FirstStepsState state;
        state.archived = c.archived;
        state.listed = c.listed;
        state.isImporting = c.isImporting;
        EXPECT_EQ(state.Next(), c.next) << c.archived << ' ' << c.listed << ' ' << c.isImporting;
        EXPECT_TRUE(ViewOfStep(state, static_cast<std::size_t>(c.next)).isEnabled);
        EXPECT_EQ(ViewOfStep(state, 2).isEnabled, c.listed > 0);
    }
}

TEST(FirstStepsStateTest, TheMusicFolderIsOfferedWhereThereIsMusicElseTitlesToTry) {
    FirstStepsState state;
    state.folder = u"/home/anna/Musik"_s;
    EXPECT_EQ(ViewOfStep(state, 0).button, u"Ordner wählen..."_s);
    EXPECT_EQ(ViewOfStep(state, 0).other, u"Titel zum Probieren"_s);
    state.hasMusic = true;
    EXPECT_EQ(ViewOfStep(state, 0).button, u"„Musik“ einlesen"_s);
    state.isImporting = true;
    state.progress = u"3 von 9 Titeln"_s;
    EXPECT_EQ(ViewOfStep(state, 0).hint, state.progress);
    EXPECT_EQ(ViewOfStep(state, 0).button, u"Abbrechen"_s);
}

TEST(FirstStepsStateTest, RowsAreSpreadOverTheWholeArchive) {
    EXPECT_EQ(SpreadRows(0, 10), QList<int>());
    EXPECT_EQ(SpreadRows(3, 10), (QList<int>{0, 1, 2}));
    EXPECT_EQ(SpreadRows(1000, 4), (QList<int>{0, 250, 500, 750}));
}

/** A home with a music folder. */
struct FirstStepsTest : test::FakeWindow {
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", folder.Path(u"config"_s).toUtf8());
        folder.Write(u"config/user-dirs.dirs"_s, "XDG_MUSIC_DIR=\"" + folder.Path(u"Musik"_s).toUtf8() + "\"\n");
    }
    void TearDown() override { qunsetenv("XDG_CONFIG_HOME"); }
    void Show() {
        ASSERT_TRUE(window->Load());
        window->show();
        ASSERT_TRUE(test::WaitUntil([this] { return desk->archive.IsIndexReady(); }));
    }
    QAbstractButton& Button(const char* name) { return In<QAbstractButton>(*window, name); }
    bool IsShown() { return In<QWidget>(*window, "ErsteSchritte").isVisible(); }
};

TEST_F(FirstStepsTest, ThreePressesLeadFromAnEmptyArchiveToThePlayingTitle) {
    for (const char* name : {"a.mp3", "unten/b.ogg", "unten/c.mp3"})
        test::MakeSound(folder.Path(u"Musik"_s), QString::fromLatin1(name));
    Show();
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
    EXPECT_TRUE(In<QWidget>(*window, "DataGrid2").isVisible());
}

TEST_F(FirstStepsTest, IsClosedForGoodAndComesBackFromTheMenu) {
    Show();
    EXPECT_EQ(Button("cmdSchritt1Anders").text(), u"Titel zum Probieren"_s) << "no music of one's own";
    Button("cmdErsteSchritteSchliessen").click();
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(Read("kalvo.ini").contains("ErsteSchritte=0"));
    In<QAction>(*window, "ErsteSchritteZeigen").trigger();
    EXPECT_TRUE(IsShown());
    window.reset();
    window = std::make_unique<Form1>(*desk, CommandLine());
    Show();
    EXPECT_FALSE(IsShown()) << "at the next start";
}

TEST_F(FirstStepsTest, GivesWayToTitlesOfAnotherImportAndToASearch) {
    Show();
    TitleRecord title;
    title.Pfad = folder.Write(u"lied.mp3"_s, "x");
    ASSERT_TRUE(desk->archive.AddTitle(title));
    EXPECT_FALSE(IsShown());
    In<QAction>(*window, "ErsteSchritteZeigen").trigger();
    ASSERT_TRUE(IsShown());
    In<QLineEdit>(*window, "Text1").setText(u"lied"_s);
    EXPECT_FALSE(IsShown());
}

TEST_F(FirstStepsTest, DoesNotShowItselfWhereThereIsSomethingAlready) {
    desk->list2.Append({{u"a"_s, {}, {}, {}, {}, folder.Write(u"a-60"_s, "x")}});
    desk->keeper.SaveNow();
    Show();
    EXPECT_FALSE(IsShown());
}

} // namespace
} // namespace kalvo
