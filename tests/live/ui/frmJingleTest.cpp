#include "live/ui/frmJingle.h"

#include "live/WallClock.h"
#include "live/ui/frmJingleAnzeige.h"
#include "live/ui/frmTerminPlay.h"
#include "playback/FakeDesk.h"
#include "support/PartOf.h"
#include "support/WindowActs.h"

#include <QComboBox>
#include <QTimeEdit>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace kalvo::test {

struct frmJingleTest : ::testing::Test {
    frmJingleTest() {
        JingleRecords records = file.Read();
        records[0].path = u"/m/glocke.mp3"_s;
        records[0].active = true;
        records[0].slots[0] = {u"Täglich"_s, {}, u"08:00"_s};
        file.Write(records);
        window.emplace(file, folder.Path());
        window->show();
    }
    /** What a row says: whether it is active, the file and its times. */
    QString Row(int row) {
        const QTreeWidgetItem& item = *Part<QTreeWidget>(*window, "ListView1")->topLevelItem(row);
        return item.text(1) + u'|' + item.text(2) + u'|' + item.text(3);
    }

    TestFolder folder;
    WallClock clock;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    JingleFile file{folder.Path(u"TerminPlayNeu.dll"_s), settings, clock};
    std::optional<frmJingle> window;
};

TEST_F(frmJingleTest, ShowsTwentyRowsAndWritesThemWhenItIsSaved) {
    EXPECT_EQ(Part<QTreeWidget>(*window, "ListView1")->topLevelItemCount(), 20);
    const QString bell = u"Ja|glocke.mp3|täglich 08:00"_s;
    EXPECT_EQ(Row(0), bell);
    EXPECT_EQ(Row(19), u"Nein||"_s);
    Answers answers({u"Nein"_s, u"Ja"_s});
    Part<QAbstractButton>(*window, "Command2")->click();
    EXPECT_EQ(Row(0), bell);
    Part<QAbstractButton>(*window, "Command2")->click();
    EXPECT_EQ(Row(0), u"Nein||"_s);
    EXPECT_EQ(file.Read()[0].path, u"/m/glocke.mp3"_s) << "not before it is saved";
    bool saved = false;
    QObject::connect(&*window, &frmJingle::Saved, [&saved] { saved = true; });
    Part<QAbstractButton>(*window, "Command3")->click();
    EXPECT_TRUE(saved);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(file.Read()[0].IsEmpty());
    EXPECT_EQ(file.Read()[0].slots[0], JingleSlot::Empty());
}

TEST_F(frmJingleTest, ClosingAsksBeforeChangesAreLost) {
    Part<QAction>(*window, "TerminPlayLoeschen")->trigger();
    Answers answers({u"Abbrechen"_s, u"Nein"_s});
    window->close();
    EXPECT_TRUE(window->isVisible());
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(answers.Said().last(), u"Termin-Play (Jingle)|Sollen die Änderungen gespeichert werden?"_s);
    EXPECT_FALSE(file.Read()[0].IsEmpty());
}

TEST(frmTerminPlayTest, OffersWhatTheRecordsHoldAndRefusesWhatCouldNotPlay) {
    const TestFolder folder;
    frmTerminPlay window(JingleRecord(), folder.Path());
    auto* mode = Part<QComboBox>(window, "Combo21");
    auto* weekday = Part<QComboBox>(window, "Combo41");
    EXPECT_EQ(mode->currentText(), u"Deaktiviert"_s);
    EXPECT_EQ(weekday->count(), 8) << "one of them blank";
    EXPECT_EQ(Part<QTimeEdit>(window, "combo35")->text(), u"00:00"_s);
    mode->setCurrentText(u"Wöchentlich"_s);
    Part<QTimeEdit>(window, "combo31")->setTime(QTime(7, 5));
    Part<QAbstractButton>(window, "Check1")->setChecked(true);
    Answers answers({u"ok"_s, u"ok"_s, u"ok"_s});
    window.accept();
    window.Choose(u"/"_s + QString(150, u'x'));
    EXPECT_TRUE(window.Edited().IsEmpty());
    window.Choose(u"/m/a.ogg"_s);
    window.accept();
    ASSERT_EQ(answers.Said().size(), 3);
    EXPECT_TRUE(answers.Said().at(0).contains(u"zuerst eine Datei"_s));
    EXPECT_TRUE(answers.Said().at(1).contains(u"höchstens 150 Zeichen"_s));
    EXPECT_TRUE(answers.Said().at(2).contains(u"einen Wochentag"_s));
    weekday->setCurrentText(u"Samstag"_s);
    window.accept();
    EXPECT_EQ(window.result(), int(QDialog::Accepted));
    EXPECT_EQ(window.Edited().slots[0], (JingleSlot{u"Wöchentlich"_s, u"Samstag"_s, u"07:05"_s}));
    EXPECT_EQ(window.Edited().slots[4], JingleSlot());
    EXPECT_FALSE(window.Edited().afterTitle);
}

TEST(frmJingleAnzeigeTest, StopsTheFileThatPlays) {
    FakeDesk desk;
    JinglePlayer player(desk.mixer);
    frmJingleAnzeige window(player);
    player.Add({u"/j/glocke-8"_s});
    player.Add({u"/j/gong-8"_s});
    window.show();
    auto* stop = Part<QAbstractButton>(window, "Command1");
    stop->click();
    player.Tick();
    EXPECT_EQ(player.Path(), u"/j/gong-8"_s);
    EXPECT_TRUE(window.isVisible());
    stop->click();
    EXPECT_FALSE(player.IsPlaying());
    EXPECT_FALSE(window.isVisible());
}

} // namespace kalvo::test
