#include "app/ListenCommands.h"

#include "FakeWindow.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/SelectedTitleView.h"
#include "playback/ui/frmKopfhoerer.h"
#include "support/WaitUntil.h"
#include "widgets/xMessageBox.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <chrono>

namespace kalvo {

namespace {

struct ListenCommandsTest : test::FakeWindow {
    ListenCommandsTest() {
        EXPECT_TRUE(window->Load());
        window->show();
    }
    QString File(const char* name) { return folder.Write(QString::fromLatin1(name), "x"); }
    void FillArchive() {
        ASSERT_TRUE(test::WaitUntil([this] { return desk->archive.IsIndexReady(); }));
        TitleRecord title;
        title.Titel = QStringLiteral("Nachtfahrt");
        title.Interpret = QStringLiteral("Mara Lind");
        title.Pfad = File("n-60");
        ASSERT_TRUE(desk->archive.AddTitle(title).done);
        desk->archive.Refresh();
        window->findChild<ArchivePanel*>()->GoToRow(0);
    }
    void FillLists() {
        for (const char* name : {"a-60", "b-60"})
            desk->list1.Append({{QString::fromLatin1(name), {}, {}, {}, {}, File(name)}});
    }
    QAction& Action(const char* name) { return In<QAction>(*window, name); }
    QPushButton& Button(const char* name) { return In<QPushButton>(*window, name); }
    QString Caption(const char* label) { return In<QLabel>(*window, label).text(); }
    /** What the message box says that an act opens, now or soon; it is closed. */
    template<typename Act>
    QString SaidBy(Act act) {
        QString said;
        QTimer closing;
        QObject::connect(&closing, &QTimer::timeout, window.get(), [&said] {
            auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            for (const QLabel* label : box->findChildren<QLabel*>())
                said += label->text();
            box->accept();
        });
        closing.start(5);
        act();
        test::WaitUntil([&said] { return !said.isEmpty(); });
        return said;
    }
};

} // namespace

TEST_F(ListenCommandsTest, PreListensFromTheArchive) {
    FillArchive();
    const QString caption = Caption("Label16");
    QTest::mouseClick(&Button("Label5"), Qt::LeftButton);
    ASSERT_TRUE(test::WaitUntil([this] { return desk->mixer.IsListened(1); }));
    EXPECT_EQ(Caption("Label16"), QStringLiteral("Player 1       Probehören aus Musikarchiv"));
    EXPECT_EQ(Caption("LSong1"), QStringLiteral("Nachtfahrt"));
    EXPECT_EQ(Caption("LArtist1"), QStringLiteral("Mara Lind"));
    EXPECT_EQ(Caption("lblStatus1"), QStringLiteral("play"));
    Button("cmdStop1").click();
    EXPECT_TRUE(test::WaitUntil([&] { return Caption("Label16") == caption; }));
    QFile::remove(folder.Path(QStringLiteral("n-60")));
    desk->mixer.SetPatience(std::chrono::seconds(20)); // for the disk of a busy machine
    QTest::keyClick(&In<QAbstractItemView>(*window, "DataGrid2"), Qt::Key_Return);
    EXPECT_EQ(Caption("lblInterpret"), QStringLiteral("Datei nicht gefunden"));
    EXPECT_FALSE(desk->mixer.IsListening());
}

TEST_F(ListenCommandsTest, ThePlayThroughLocksTheTransportAndFreesItAgain) {
    FillLists();
    QStringList free;
    for (const char* name : {"cmdPlay1", "cmdPause1", "Command1", "cmdPlay2", "cmdStop2", "Command6"})
        free << QLatin1String(name);
    const auto enabled = [&] {
        return std::count_if(free.begin(), free.end(),
                             [this](const QString& name) { return Button(name.toLatin1().constData()).isEnabled(); });
    };
    Action("TitelAnspielen").trigger();
    EXPECT_EQ(Caption("lblStatus1"), QStringLiteral("scan"));
    EXPECT_EQ(enabled(), 0);
    EXPECT_FALSE(Action("PlayerWiedergabe1").isEnabled());
    EXPECT_TRUE(Button("cmdStop1").isEnabled());
    Button("cmdStop1").click();
    EXPECT_TRUE(test::WaitUntil([&] { return enabled() == free.size(); })) << "however it ends";
    Action("TitelAnspielen").trigger();
    EXPECT_EQ(enabled(), 0);
    Action("TitelAnspielen").trigger();
    EXPECT_EQ(enabled(), free.size());
    EXPECT_TRUE(Action("PlayerWiedergabe1").isEnabled());
    EXPECT_FALSE(desk->mixer.IsListening());
}

TEST_F(ListenCommandsTest, HeadphonesNeedATitleAndASecondCard) {
    EXPECT_EQ(SaidBy([this] { QTest::mouseClick(&Button("Label5"), Qt::RightButton); }),
              QStringLiteral("Funktion 'Vorhören mit Kopfhörer' kann nicht aufgerufen werden, da sich kein Titel im "
                             "Musikarchiv befindet"));
    FillArchive();
    EXPECT_TRUE(
        SaidBy([this] { Action("TitelMitKopfhörerVorhören").trigger(); }).contains(HeadphonePlayer::NoCardText()));
    FillLists();
    In<QAbstractItemView>(*window, "List1")
        .selectionModel()
        ->select(desk->list1.index(1, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    EXPECT_TRUE(SaidBy([this] { Action("TitelVorhoerenWL").trigger(); }).contains(HeadphonePlayer::NoCardText()));
    const QList<frmKopfhoerer*> windows = window->findChildren<frmKopfhoerer*>();
    ASSERT_EQ(windows.size(), 1) << "one window";
    EXPECT_EQ(windows.front()->Title().title, QStringLiteral("b-60"));
    Q_EMIT windows.front()->CueWanted(windows.front()->Title(), QStringLiteral("12.4"));
    EXPECT_EQ(desk->list1.At(1).info, QStringLiteral("12.4"));
    EXPECT_EQ(windows.front()->Title().cue, 12.4);
    Action("Rueckgaengig").trigger();
    EXPECT_EQ(windows.front()->Title().cue, -1) << "the window follows the list";
}

} // namespace kalvo
