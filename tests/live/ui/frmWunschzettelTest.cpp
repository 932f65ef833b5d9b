#include "live/ui/frmWunschzettel.h"
#include "archive/TestClock.h"
#include "playlists/PlaylistSupport.h"
#include "support/PartOf.h"
#include "support/TestFolder.h"
#include "widgets/TextTable.h"

#include <QAction>
#include <gtest/gtest.h>

namespace kalvo::test {

struct frmWunschzettelTest : ::testing::Test, TwoLists {
    frmWunschzettelTest() {
        for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
            Wished(name);
        window.emplace(list, first, second);
        table = Part<TextTable>(*window, "ListView1");
    }
    void Wished(const QString& name) {
        list.Add({u"/music/"_s + name, WishDisplay(u"Mara Lind"_s, name), u"Anna"_s, {}});
    }
    QString Cell(int row, int column) const { return table->model()->index(row, column).data().toString(); }
    QAction* Action(const QString& name) const { return window->findChild<QAction*>(name); }

    TestFolder folder;
    TestClock clock;
    WishList list{folder.Path(u"WZ"_s), clock};
    std::optional<frmWunschzettel> window;
    TextTable* table = nullptr;
};

TEST_F(frmWunschzettelTest, DeletedWishesComeBackWithoutLosingNewOnes) {
    for (const int row : {0, 1}) {
        table->selectRow(row);
        Action(u"TitelLoeschen"_s)->trigger();
    }
    table->selectRow(0);
    Wished(u"neu"_s);
    EXPECT_EQ(table->SelectedRows(), QList<int>{0}) << "a new wish leaves the selection alone";
    EXPECT_EQ(window->windowTitle(), u"Wunschzettel (2)"_s);
    Action(u"LoeschenRueckgaengig"_s)->trigger();
    Action(u"LoeschenRueckgaengig"_s)->trigger();
    EXPECT_FALSE(Action(u"LoeschenRueckgaengig"_s)->isEnabled());
    QStringList titles;
    for (int row = 0; row < table->model()->rowCount(); ++row)
        titles.append(NamesOfWish(Cell(row, 0)).title);
    EXPECT_EQ(titles, QStringList({u"a"_s, u"b"_s, u"c"_s, u"neu"_s}));
}

TEST_F(frmWunschzettelTest, AskedForWhatIsSelected) {
    QStringList asked;
    QObject::connect(&*window, &frmWunschzettel::AddRequested, [&asked](int player, const QList<Wish>& wishes) {
        asked.append(QString::number(player) + wishes.at(0).path);
    });
    QObject::connect(&*window, &frmWunschzettel::PlayRequested,
                     [&asked](const Wish& wish) { asked.append(u"play "_s + wish.path); });
    const QStringList acts{u"TitelzumPlayer1hinzufügen"_s, u"TitelzumPlayer2hinzufügen"_s, u"TitelAbspielen"_s};
    for (const QString& act : acts)
        EXPECT_FALSE(Action(act)->isEnabled()) << act.toStdString();
    table->selectRow(1);
    for (const QString& act : acts)
        Action(act)->trigger();
    EXPECT_EQ(asked, QStringList({u"1/music/b"_s, u"2/music/b"_s, u"play /music/b"_s}));
}

} // namespace kalvo::test
