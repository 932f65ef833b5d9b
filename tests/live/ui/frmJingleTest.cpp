#include "live/ui/frmJingle.h"

#include "archive/ui/WindowActs.h"
#include "live/WallClock.h"
#include "live/ui/frmJingleAnzeige.h"
#include "live/ui/frmTerminPlay.h"
#include "playback/FakeDesk.h"

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QTimeEdit>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

template<typename Widget>
Widget& In(const QWidget& window, const QString& name) {
    auto* found = window.findChild<Widget*>(name);
    if (!found)
        throw std::runtime_error(name.toStdString());
    return *found;
}

QStringList Items(const QComboBox& box) {
    QStringList items;
    for (int i = 0; i < box.count(); ++i)
        items << box.itemText(i);
    return items;
}

struct frmJingleTest : ::testing::Test {
    frmJingleTest() {
        JingleRecords records = file.Read();
        records[0].path = u"/m/glocke.mp3"_s;
        records[0].active = true;
        records[0].slots[0] = {u"Täglich"_s, {}, u"08:00"_s};
        file.Write(records);
    }
    static QString Cell(const frmJingle& window, int row, int column) {
        return In<QTreeWidget>(window, u"ListView1"_s).topLevelItem(row)->text(column);
    }

    test::TestFolder folder;
    test::WallClock clock;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    JingleFile file{folder.Path(u"TerminPlayNeu.dll"_s), settings, clock};
};

TEST_F(frmJingleTest, ShowsTwentyRowsAndWritesThemWhenItIsSaved) {
    frmJingle window(file, folder.Path());
    window.show();
    EXPECT_EQ(window.windowTitle(), u"Termin-Play (Jingle)"_s);
    EXPECT_EQ(In<QTreeWidget>(window, u"ListView1"_s).topLevelItemCount(), 20);
    EXPECT_EQ(Cell(window, 0, 1), u"Ja"_s);
    EXPECT_EQ(Cell(window, 0, 2), u"glocke.mp3"_s);
    EXPECT_EQ(Cell(window, 0, 3), u"täglich 08:00"_s);
    EXPECT_EQ(Cell(window, 19, 1), u"Nein"_s);
    auto& clear = In<QAbstractButton>(window, u"Command2"_s);
    EXPECT_EQ(clear.text(), u"Alle Termin-Play's löschen"_s);
    test::Answers answers({u"Nein"_s, u"Ja"_s});
    clear.click();
    EXPECT_EQ(Cell(window, 0, 1), u"Ja"_s);
    clear.click();
    EXPECT_EQ(Cell(window, 0, 1), u"Nein"_s);
    EXPECT_EQ(file.Read()[0].path, u"/m/glocke.mp3"_s) << "not before it is saved";
    bool saved = false;
    QObject::connect(&window, &frmJingle::Saved, [&saved] { saved = true; });
    auto& save = In<QAbstractButton>(window, u"Command3"_s);
    EXPECT_EQ(save.text(), u"Speichern und beenden"_s);
    save.click();
    EXPECT_TRUE(saved);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(file.Read()[0].IsEmpty());
    EXPECT_EQ(file.Read()[0].slots[0], JingleSlot::Empty());
}

TEST_F(frmJingleTest, ClosingAsksBeforeChangesAreLost) {
    frmJingle window(file, folder.Path());
    window.show();
    window.findChild<QAction*>(u"TerminPlayLoeschen"_s)->trigger();
    test::Answers answers({u"Abbrechen"_s, u"Nein"_s});
    window.close();
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(answers.Said().last(), u"Termin-Play (Jingle)|Sollen die Änderungen gespeichert werden?"_s);
    EXPECT_FALSE(file.Read()[0].IsEmpty());
}

TEST_F(frmJingleTest, TheEditorOffersWhatTheRecordsHoldAndRefusesWhatCouldNotPlay) {
    frmTerminPlay window(JingleRecord(), folder.Path());
    auto& mode = In<QComboBox>(window, u"Combo21"_s);
    auto& weekday = In<QComboBox>(window, u"Combo41"_s);
    EXPECT_EQ(Items(mode), (QStringList{u"Täglich"_s, u"Wöchentlich"_s, u"Deaktiviert"_s}));
    EXPECT_EQ(mode.currentText(), u"Deaktiviert"_s);
    EXPECT_EQ(Items(weekday), JingleSlot::Weekdays() + QStringList{QString()});
    EXPECT_EQ(In<QTimeEdit>(window, u"combo35"_s).text(), u"00:00"_s);
    mode.setCurrentText(u"Wöchentlich"_s);
    In<QTimeEdit>(window, u"combo31"_s).setTime(QTime(7, 5));
    In<QAbstractButton>(window, u"Check1"_s).setChecked(true);
    test::Answers answers({u"ok"_s, u"ok"_s, u"ok"_s});
    window.accept();
    window.Choose(u"/"_s + QString(150, u'x'));
    EXPECT_TRUE(window.Edited().IsEmpty());
    window.Choose(u"/m/a.ogg"_s);
    window.accept();
    EXPECT_EQ(answers.Said(), (QStringList{u"Termin-Play 0|Bitte wählen Sie zuerst eine Datei."_s,
                                           u"Termin-Play 0|Der Pfad ist zu lang, er darf höchstens 150 Zeichen "
                                           "haben:\n/"_s +
                                               QString(150, u'x'),
                                           u"Termin-Play 0|Bitte wählen Sie für jeden wöchentlichen Termin einen "
                                           "Wochentag."_s}));
    weekday.setCurrentText(u"Samstag"_s);
    window.accept();
    EXPECT_EQ(window.result(), int(QDialog::Accepted));
    EXPECT_EQ(window.Edited().slots[0], (JingleSlot{u"Wöchentlich"_s, u"Samstag"_s, u"07:05"_s}));
    EXPECT_EQ(window.Edited().slots[4], JingleSlot());
    EXPECT_FALSE(window.Edited().afterTitle);
}

TEST(frmJingleAnzeigeTest, ShowsHowFarTheFileIsAndStopsIt) {
    test::FakeDesk desk;
    JinglePlayer player(desk.mixer);
    frmJingleAnzeige window(player);
    player.Add({u"/j/glocke-8"_s});
    player.Add({u"/j/gong-8"_s});
    window.show();
    desk.fake.Advance(2);
    window.Refresh();
    EXPECT_EQ(In<QLabel>(window, u"Label1"_s).text(), u"glocke-8 (noch 1)"_s);
    EXPECT_EQ(In<QLabel>(window, u"Label2"_s).text(), u"00:02/00:08"_s);
    EXPECT_EQ(In<QProgressBar>(window, u"ProgressBar1"_s).value(), 250);
    auto& stop = In<QAbstractButton>(window, u"Command1"_s);
    EXPECT_EQ(stop.text(), u"Termin-Play stoppen"_s);
    stop.click();
    player.Tick();
    EXPECT_EQ(player.Path(), u"/j/gong-8"_s);
    EXPECT_TRUE(window.isVisible());
    stop.click();
    EXPECT_FALSE(player.IsPlaying());
    EXPECT_FALSE(window.isVisible());
}

} // namespace
} // namespace kalvo
