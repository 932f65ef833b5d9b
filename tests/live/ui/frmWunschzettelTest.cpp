#include "live/ui/frmWunschzettel.h"
#include "archive/TestClock.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "widgets/TextTable.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

class frmWunschzettelTest : public ::testing::Test {
protected:
    frmWunschzettelTest() {
        for (const char* name : {"a", "b", "c"})
            Wished(QLatin1String(name));
    }
    void Wished(const QString& name) {
        list.Add({u"/music/"_s + name, WishDisplay(u"Mara Lind"_s, name), u"Anna"_s, {}});
    }
    QStringList Row(const frmWunschzettel& window, int row) const {
        const QAbstractItemModel* model = window.findChild<TextTable*>(u"ListView1"_s)->model();
        QStringList texts;
        for (int column = 0; column < model->columnCount(); ++column)
            texts.append(model->index(row, column).data().toString());
        return texts;
    }
    int Rows(const frmWunschzettel& window) const {
        return window.findChild<TextTable*>(u"ListView1"_s)->model()->rowCount();
    }
    void Select(const frmWunschzettel& window, int row) const {
        window.findChild<TextTable*>(u"ListView1"_s)->selectRow(row);
    }
    void Trigger(const frmWunschzettel& window, const QString& action) const {
        window.findChild<QAction*>(action)->trigger();
    }

    TestFolder folder;
    TestClock clock;
    SystemRandom random;
    Playlist first{1, random};
    Playlist second{2, random};
    WishList list{folder.Path(u"WZ"_s), clock};
};

TEST_F(frmWunschzettelTest, ShowsTheWishesAndTheNewOnesWithTheirTimeAlone) {
    frmWunschzettel window(list, first, second);
    EXPECT_EQ(Row(window, 1), QStringList({u"Mara Lind - b"_s, u"Anna"_s, u"07.03.2026 20:15"_s, QString()}));
    Select(window, 2);
    Wished(u"d"_s);
    EXPECT_EQ(Row(window, 3).at(2), u"20:15"_s);
    EXPECT_EQ(window.findChild<TextTable*>(u"ListView1"_s)->SelectedRows(), QList<int>{2});
    EXPECT_EQ(window.windowTitle(), u"Wunschzettel (4)"_s);
}

TEST_F(frmWunschzettelTest, DeletedWishesComeBackWithoutLosingNewOnes) {
    frmWunschzettel window(list, first, second);
    Select(window, 0);
    Trigger(window, u"TitelLoeschen"_s);
    Select(window, 1);
    Trigger(window, u"TitelLoeschen"_s);
    Wished(u"neu"_s);
    EXPECT_EQ(Rows(window), 2);
    Trigger(window, u"LoeschenRueckgaengig"_s);
    Trigger(window, u"LoeschenRueckgaengig"_s);
    EXPECT_FALSE(window.findChild<QAction*>(u"LoeschenRueckgaengig"_s)->isEnabled());
    for (int row = 0; row < 4; ++row)
        EXPECT_EQ(NamesOfWish(Row(window, row).at(0)).title, QStringList({u"a"_s, u"b"_s, u"c"_s, u"neu"_s}).at(row));
}

TEST_F(frmWunschzettelTest, AskedForWhatIsSelected) {
    frmWunschzettel window(list, first, second);
    QStringList asked;
    QObject::connect(&window, &frmWunschzettel::AddRequested, &window, [&asked](int player, const QList<Wish>& wishes) {
        asked.append(QString::number(player) + wishes.at(0).path);
    });
    QObject::connect(&window, &frmWunschzettel::PlayRequested, &window,
                     [&asked](const Wish& wish) { asked.append(u"play "_s + wish.path); });
    for (const char* action : {"TitelzumPlayer1hinzufügen", "TitelzumPlayer2hinzufügen", "TitelAbspielen"})
        EXPECT_FALSE(window.findChild<QAction*>(QString::fromUtf8(action))->isEnabled()) << action;
    Select(window, 1);
    for (const char* action : {"TitelzumPlayer1hinzufügen", "TitelzumPlayer2hinzufügen", "TitelAbspielen"})
        Trigger(window, QString::fromUtf8(action));
    EXPECT_EQ(asked, QStringList({u"1/music/b"_s, u"2/music/b"_s, u"play /music/b"_s}));
}

TEST_F(frmWunschzettelTest, ClosingAnEmptyListLeavesAnEmptyFile) {
    list.Clear();
    QFile::remove(folder.Path(u"WZ"_s));
    frmWunschzettel window(list, first, second);
    EXPECT_FALSE(window.findChild<QLabel*>(u"lblLeer"_s)->isHidden());
    window.show();
    window.close();
    EXPECT_TRUE(QFile::exists(folder.Path(u"WZ"_s)));
    EXPECT_EQ(folder.Read(u"WZ"_s).size(), 0);
}

} // namespace
} // namespace kalvo::test
