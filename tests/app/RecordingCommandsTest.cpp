#include "app/FakeWindow.h"
#include "app/StatusLine.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using RecordingCommandsTest = test::FakeWindow;

TEST_F(RecordingCommandsTest, TheRecordingsWindowKeepsItsFormatAndTellsTheRoom) {
    ASSERT_TRUE(window->Load());
    In<QAction>(*window, "Mitschnitt").trigger();
    auto& dialog = In<QDialog>(*window, "frmMitschnitt");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.isModal());
    EXPECT_TRUE(test::WaitUntil([&] { return In<QLabel>(dialog, "lblFrei").text().contains(u"reicht für"_s); }));
    EXPECT_EQ(In<QLabel>(dialog, "lblOrdner").text(), folder.Path(u"Kalvo/Mitschnitte"_s));
    In<QAction>(*window, "Mitschnitt").trigger();
    EXPECT_EQ(window->findChildren<QDialog*>(u"frmMitschnitt"_s).size(), 1);
}

TEST_F(RecordingCommandsTest, TheCoversPlaceCanBeTakenAway) {
    ASSERT_TRUE(window->Load());
    window->resize(1280, 800);
    window->show();
    auto& cover = In<QWidget>(*window, "imgCover1");
    EXPECT_TRUE(test::WaitUntil([&cover] { return cover.isVisible(); }));
    In<QAction>(*window, "CoverAnzeigen").trigger();
    EXPECT_TRUE(test::WaitUntil([&cover] { return !cover.isVisible(); }));
    EXPECT_TRUE(Read("kalvo.ini").contains("Cover=0"));
}

TEST(StatusLine, TellsARecordingOnlyWhileThereIsOne) {
    StatusLine line;
    line.resize(1280, 30);
    line.show();
    const auto* label = line.findChild<QLabel*>(u"lblMitschnitt"_s);
    EXPECT_FALSE(label->isVisible());
    line.SetRecording(u"Mitschnitt 00:00:01"_s);
    EXPECT_TRUE(label->isVisible());
    line.SetRecording(QString());
    EXPECT_FALSE(label->isVisible());
}

} // namespace
} // namespace kalvo
