#include "app/ListenCommands.h"

#include "app/FakeWindow.h"
#include "archive/ui/SelectedTitleView.h"
#include "playback/ui/frmKopfhoerer.h"

#include <QTest>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct ListenCommandsTest : test::FakeWindow {
    void SetUp() override { Show(); }
    void FillArchive() { AddTitle(Title(u"Mara Lind"_s, u"Nachtfahrt"_s, folder.Write(u"n-60"_s, "x"))); }
    QPushButton& Button(const char* name) { return In<QPushButton>(name); }
    /** What the message box says that an act opens, now or soon; it is closed. */
    static QString SaidBy(const std::function<void()>& act) {
        test::Answers answers({u"OK"_s});
        act();
        test::WaitUntil([&answers] { return answers.AllGiven(); });
        return answers.Said().value(0);
    }
};

TEST_F(ListenCommandsTest, PreListensFromTheArchive) {
    FillArchive();
    const QString caption = Text("Label16");
    QTest::mouseClick(&Button("Label5"), Qt::LeftButton);
    ASSERT_TRUE(test::WaitUntil([this] { return desk->mixer.IsListened(1); }));
    EXPECT_EQ(Text("Label16"), u"Player 1       Probehören aus Musikarchiv"_s);
    EXPECT_EQ(Text("LSong1"), u"Nachtfahrt"_s);
    EXPECT_EQ(Text("LArtist1"), u"Mara Lind"_s);
    EXPECT_EQ(Text("lblStatus1"), u"play"_s);
    Button("cmdStop1").click();
    EXPECT_TRUE(test::WaitUntil([&] { return Text("Label16") == caption; }));
    QFile::remove(folder.Path(u"n-60"_s));
    desk->mixer.SetPatience(std::chrono::seconds(20)); // for the disk of a busy machine
    QTest::keyClick(&In<QAbstractItemView>("DataGrid2"), Qt::Key_Return);
    EXPECT_EQ(Text("lblInterpret"), u"Datei nicht gefunden"_s);
    EXPECT_FALSE(desk->mixer.IsListening());
}

TEST_F(ListenCommandsTest, ThePlayThroughLocksTheTransportAndFreesItAgain) {
    Append(1, {"a-60", "b-60"});
    const std::array locked{"cmdPlay1", "cmdPause1", "Command1", "cmdPlay2", "cmdStop2", "Command6"};
    const auto enabled = [&] {
        return std::count_if(locked.begin(), locked.end(), [this](const char* name) { return In(name).isEnabled(); });
    };
    Trigger("TitelAnspielen");
    EXPECT_EQ(Text("lblStatus1"), u"scan"_s);
    EXPECT_EQ(enabled(), 0);
    EXPECT_FALSE(In<QAction>("PlayerWiedergabe1").isEnabled());
    EXPECT_TRUE(Button("cmdStop1").isEnabled());
    Button("cmdStop1").click();
    EXPECT_TRUE(test::WaitUntil([&] { return enabled() == 6; })) << "however it ends";
    Trigger("TitelAnspielen");
    EXPECT_EQ(enabled(), 0);
    Trigger("TitelAnspielen");
    EXPECT_EQ(enabled(), 6);
    EXPECT_TRUE(In<QAction>("PlayerWiedergabe1").isEnabled());
    EXPECT_FALSE(desk->mixer.IsListening());
}

TEST_F(ListenCommandsTest, HeadphonesNeedATitleAndASecondCard) {
    const QString said = SaidBy([this] { QTest::mouseClick(&Button("Label5"), Qt::RightButton); });
    EXPECT_TRUE(said.endsWith(u"da sich kein Titel im Musikarchiv befindet"_s)) << said.toStdString();
    FillArchive();
    EXPECT_TRUE(SaidBy([this] { Trigger("TitelMitKopfhörerVorhören"); }).contains(HeadphonePlayer::NoCardText()));
    Append(1, {"a-60", "b-60"});
    In<QTableView>("List1").selectRow(1);
    EXPECT_TRUE(SaidBy([this] { Trigger("TitelVorhoerenWL"); }).contains(HeadphonePlayer::NoCardText()));
    const QList<frmKopfhoerer*> windows = window->findChildren<frmKopfhoerer*>();
    ASSERT_EQ(windows.size(), 1) << "one window";
    EXPECT_EQ(windows.front()->Title().title, u"b-60"_s);
    Q_EMIT windows.front()->CueWanted(windows.front()->Title(), u"12.4"_s);
    EXPECT_EQ(desk->list1.At(1).info, u"12.4"_s);
    EXPECT_EQ(windows.front()->Title().cue, 12.4);
    Trigger("Rueckgaengig");
    EXPECT_EQ(windows.front()->Title().cue, -1) << "the window follows the list";
}

} // namespace
} // namespace kalvo
