#include "app/SideCommands.h"

#include "app/FakeWindow.h"
#include "widgets/TextTable.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

constexpr QSize kWideWindow(1920, 1080);

/** A wide window with one title in the archive, whose folder holds a cover. */
struct SideCommandsTest : test::FakeWindow {
    void Start(QSize size = kWideWindow) {
        TitleRecord title = Title(u"Mara Lind"_s, u"Nachtfahrt"_s, folder.Write(u"n-60"_s, "x"));
        title.Album = u"Fahrplan"_s;
        title.Stil = u"Pop"_s;
        Show();
        AddTitle(title);
        Resize(size);
    }
    void Resize(QSize size) {
        window->resize(size);
        QApplication::processEvents();
    }
    bool IsBeside() const { return In("Seitenfeld").isVisible(); }
    QStringList Wishes() const {
        const QAbstractItemModel& model = *In<TextTable>("lstWuensche").model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row)
            rows.append(model.index(row, 0).data().toString() + u'|' + model.index(row, 1).data().toString());
        return rows;
    }
    quint64 Wish(const QString& name, const QString& guest) {
        return desk->wishes.Add({folder.Path(u"n-60"_s), WishDisplay(u"Mara Lind"_s, name), guest, {}});
    }
};

TEST_F(SideCommandsTest, AWideWindowShowsTheTitleAsACardAndALineWhereThereIsNoRoom) {
    Start();
    EXPECT_TRUE(IsBeside());
    EXPECT_EQ(Text("lblTitelname"), u"Nachtfahrt"_s);
    EXPECT_EQ(Text("lblInterpret"), u"Mara Lind"_s);
    EXPECT_EQ(Text("lblAlbum"), u"Fahrplan · Pop"_s) << "no gap for the year that is missing";
    TitleRecord changed = desk->archive.RowAt(0);
    changed.Jahr = u"2019"_s;
    ASSERT_TRUE(desk->archive.UpdateRecord(changed).done);
    EXPECT_TRUE(test::WaitUntil([this] { return Text("lblAlbum") == u"Fahrplan · 2019 · Pop"_s; }));
    for (const char* name : {"cmdListe1", "cmdKopfhoerer", "Label5"})
        EXPECT_TRUE(In("Seitenfeld").isAncestorOf(&In(name))) << name;
    for (const QSize size : {QSize(1280, 800), QSize(800, 600), kWideWindow}) {
        Resize(size);
        SCOPED_TRACE(size.width());
        EXPECT_EQ(IsBeside(), size == kWideWindow);
        EXPECT_EQ(In("Label5").isVisible(), size.width() > 800);
        EXPECT_EQ(Text("lblTitel"), u"Mara Lind - Nachtfahrt"_s);
        EXPECT_EQ(In("lblTitelname").isVisible(), size == kWideWindow);
    }
    In<QPushButton>("cmdListe2").click();
    EXPECT_EQ(desk->list2.Entries().size(), 1);
}

TEST_F(SideCommandsTest, TheMenuTakesTheColumnAwayAndTheSettingsKeepIt) {
    Start();
    ASSERT_TRUE(In<QAction>("SeitenfeldAnzeigen").isChecked());
    Trigger("SeitenfeldAnzeigen");
    EXPECT_FALSE(IsBeside());
    EXPECT_TRUE(In<QLabel>("lblPfad").isVisible()) << "the line is back";
    EXPECT_TRUE(Read("kalvo.ini").contains("Seitenfeld=0"));
    NextStart();
    Show();
    Resize(kWideWindow);
    EXPECT_FALSE(IsBeside());
    Trigger("SeitenfeldAnzeigen");
    EXPECT_TRUE(IsBeside());
}

TEST_F(SideCommandsTest, WishesComeAndGoAndEnterPutsOneIntoTheActiveList) {
    Start();
    EXPECT_EQ(Text("lblWuensche"), u"keine Wünsche"_s);
    EXPECT_TRUE(In("lblKeineWuensche").isVisible());
    const quint64 first = Wish(u"Nachtfahrt"_s, u"Jonas"_s);
    EXPECT_EQ(Text("lblWuensche"), u"1 Wunsch"_s);
    Wish(u"Sternennacht"_s, u"Tisch 4"_s);
    EXPECT_EQ(Wishes(), QStringList({u"Nachtfahrt – Mara Lind|Jonas"_s, u"Sternennacht – Mara Lind|Tisch 4"_s}));
    auto& table = In<TextTable>("lstWuensche");
    table.selectRow(1);
    desk->wishes.Remove({first});
    EXPECT_EQ(table.SelectedRows(), QList<int>{0}) << "the selection stays on its wish";
    test::PressKey(table, Qt::Key_Return);
    ASSERT_EQ(desk->list1.Entries().size(), 1);
    EXPECT_EQ(desk->list1.At(0).origin, EntryOrigin::Wish);
    Trigger("SeitenfeldAnzeigen");
    Wish(u"Golden Hour"_s, {});
    EXPECT_EQ(Wishes().size(), 1) << "hidden, it does nothing";
    Trigger("SeitenfeldAnzeigen");
    EXPECT_EQ(Text("lblWuensche"), u"2 Wünsche"_s);
}

} // namespace
} // namespace kalvo
