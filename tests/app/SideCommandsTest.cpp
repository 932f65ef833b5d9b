#include "app/SideCommands.h"

#include "app/FakeWindow.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/WindowActs.h"
#include "live/JingleFile.h"
#include "live/ui/frmJingle.h"
#include "support/WaitUntil.h"
#include "widgets/CoverView.h"
#include "widgets/TextTable.h"

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QPushButton>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

constexpr QSize kWideWindow(1920, 1080);

/** A wide window with one title in the archive, whose folder holds a cover. */
struct SideCommandsTest : test::FakeWindow {
    void SetUp() override {
        title.Titel = u"Nachtfahrt"_s;
        title.Interpret = u"Mara Lind"_s;
        title.Album = u"Fahrplan"_s;
        title.Stil = u"Pop"_s;
        title.Pfad = folder.Write(u"n-60"_s, "x");
    }
    void Show(QSize size = kWideWindow) {
        ASSERT_TRUE(window->Load());
        window->show();
        ASSERT_TRUE(test::WaitUntil([this] { return desk->archive.IsIndexReady(); }));
        ASSERT_TRUE(desk->archive.AddTitle(title).done);
        desk->archive.Refresh();
        window->findChild<ArchivePanel*>()->GoToRow(0);
        Resize(size);
    }
    void Resize(QSize size) {
        window->resize(size);
        QApplication::processEvents();
    }
    bool IsBeside() const { return In<QWidget>(*window, "Seitenfeld").isVisible(); }
    QString Text(const char* label) const { return In<QLabel>(*window, label).text(); }
    QStringList Wishes() const {
        const QAbstractItemModel& model = *In<TextTable>(*window, "lstWuensche").model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row)
            rows.append(model.index(row, 0).data().toString() + u'|' + model.index(row, 1).data().toString());
        return rows;
    }
    quint64 Wish(const QString& name, const QString& guest) {
        return desk->wishes.Add({title.Pfad, WishDisplay(u"Mara Lind"_s, name), guest, {}});
    }

    TitleRecord title;
};

TEST_F(SideCommandsTest, AWideWindowShowsTheTitleAsACardAndALineWhereThereIsNoRoom) {
    Show();
    EXPECT_TRUE(IsBeside());
    EXPECT_EQ(Text("lblTitelname"), u"Nachtfahrt"_s);
    EXPECT_EQ(Text("lblInterpret"), u"Mara Lind"_s);
    EXPECT_EQ(Text("lblAlbum"), u"Fahrplan · Pop"_s) << "no gap for the year that is missing";
    TitleRecord changed = desk->archive.RowAt(0);
    changed.Jahr = u"2019"_s;
    ASSERT_TRUE(desk->archive.UpdateRecord(changed).done);
    EXPECT_TRUE(test::WaitUntil([this] { return Text("lblAlbum") == u"Fahrplan · 2019 · Pop"_s; }));
    for (const char* name : {"cmdListe1", "cmdKopfhoerer", "Label5"})
        EXPECT_TRUE(In<QWidget>(*window, "Seitenfeld").isAncestorOf(&In<QWidget>(*window, name))) << name;
    for (const QSize size : {QSize(1280, 800), QSize(800, 600), kWideWindow}) {
        Resize(size);
        EXPECT_EQ(IsBeside(), size == kWideWindow) << size.width();
        EXPECT_EQ(In<QWidget>(*window, "Label5").isVisible(), size.width() > 800) << size.width();
        EXPECT_EQ(Text("lblTitel"), u"Mara Lind - Nachtfahrt"_s);
        EXPECT_EQ(In<QWidget>(*window, "lblTitelname").isVisible(), size == kWideWindow) << size.width();
    }
    Wish(u"Nachtfahrt"_s, {});
    const QWidget* next = &In<QWidget>(*window, "Label5");
    do
        next = next->nextInFocusChain();
    while (!next->isVisible() || !(next->focusPolicy() & Qt::TabFocus));
    EXPECT_EQ(next->objectName(), u"lstWuensche"_s) << "Tab goes on down the column";
    In<QPushButton>(*window, "cmdListe2").click();
    EXPECT_EQ(desk->list2.Entries().size(), 1);
}

TEST_F(SideCommandsTest, TheMenuTakesTheColumnAwayAndTheSettingsKeepIt) {
    Show();
    auto& action = In<QAction>(*window, "SeitenfeldAnzeigen");
    ASSERT_TRUE(action.isChecked());
    action.trigger();
    EXPECT_FALSE(IsBeside());
    EXPECT_TRUE(In<QLabel>(*window, "lblPfad").isVisible()) << "the line is back";
    EXPECT_TRUE(Read("kalvo.ini").contains("Seitenfeld=0"));
    window.reset();
    window = std::make_unique<Form1>(*desk, CommandLine());
    ASSERT_TRUE(window->Load());
    window->show();
    Resize(kWideWindow);
    EXPECT_FALSE(IsBeside());
    In<QAction>(*window, "SeitenfeldAnzeigen").trigger();
    EXPECT_TRUE(IsBeside());
}

TEST_F(SideCommandsTest, TheCoverComesWithTheColumn) {
    QImage(8, 8, QImage::Format_RGB32).save(folder.Path(u"cover.png"_s));
    Show({1280, 800});
    auto& cover = In<CoverView>(*window, "imgCover");
    const auto isKnown = [&cover] { return cover.accessibleName() == u"Coverbild"_s; };
    Resize(kWideWindow);
    EXPECT_TRUE(test::WaitUntil(isKnown));
    EXPECT_TRUE(cover.isVisible());
    In<QAction>(*window, "CoverAnzeigen").trigger();
    EXPECT_FALSE(cover.isVisible() || isKnown());
}

TEST_F(SideCommandsTest, WishesComeAndGoAndEnterPutsOneIntoTheActiveList) {
    Show();
    EXPECT_EQ(Text("lblWuensche"), u"keine Wünsche"_s);
    EXPECT_TRUE(In<QWidget>(*window, "lblKeineWuensche").isVisible());
    const quint64 first = Wish(u"Nachtfahrt"_s, u"Jonas"_s);
    EXPECT_EQ(Text("lblWuensche"), u"1 Wunsch"_s);
    Wish(u"Sternennacht"_s, u"Tisch 4"_s);
    EXPECT_EQ(Wishes(), QStringList({u"Nachtfahrt – Mara Lind|Jonas"_s, u"Sternennacht – Mara Lind|Tisch 4"_s}));
    auto& table = In<TextTable>(*window, "lstWuensche");
    table.selectRow(1);
    desk->wishes.Remove({first});
    EXPECT_EQ(table.SelectedRows(), QList<int>{0}) << "the selection stays on its wish";
    test::PressKey(table, Qt::Key_Return);
    ASSERT_EQ(desk->list1.Entries().size(), 1);
    EXPECT_EQ(desk->list1.At(0).origin, EntryOrigin::Wish);
    In<QAction>(*window, "SeitenfeldAnzeigen").trigger();
    Wish(u"Golden Hour"_s, {});
    EXPECT_EQ(Wishes().size(), 1) << "hidden, it does nothing";
    In<QAction>(*window, "SeitenfeldAnzeigen").trigger();
    EXPECT_EQ(Text("lblWuensche"), u"2 Wünsche"_s);
}

TEST_F(SideCommandsTest, TheNextJingleIsToldWithItsTime) {
    JingleFile file(desk->folder.Path(u"\\TerminPlayNeu.dll"_s), desk->settings, desk->clock);
    JingleRecords records = file.Read();
    Show();
    EXPECT_TRUE(test::WaitUntil([this] { return Text("lblNaechsterJingle") == u"Kein Jingle geplant"_s; }));
    EXPECT_EQ(Text("lblJingleZeit"), QString());
    records[3].path = u"/jingles/Stationskennung.mp3"_s;
    records[3].active = true;
    const QDateTime later = desk->clock.Now().addSecs(7200);
    records[3].slots[0] = {JingleSlot::Daily(), {}, later.toString(u"HH:mm"_s)};
    ASSERT_TRUE(file.Write(records));
    In<QAction>(*window, "TerminPlay").trigger();
    Q_EMIT In<frmJingle>(*window, "frmJingle").Saved();
    EXPECT_TRUE(test::WaitUntil([this] {
        return Text("lblNaechsterJingle") == u"Nächster Jingle: Stationskennung"_s &&
               Text("lblJingleZeit").startsWith(u"in 01:"_s);
    }));
}

} // namespace
} // namespace kalvo
