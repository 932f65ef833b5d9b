#include "archive/ui/ArchivePanel.h"

#include "archive/ArchiveStatements.h"
#include "archive/CategoryLists.h"
#include "archive/ui/ArchiveWindowTest.h"
#include "archive/ui/CategoryTree.h"
#include "archive/ui/frmExplorer.h"
#include "support/WaitUntil.h"

#include <QLineEdit>
#include <QListView>

namespace kalvo::test {
namespace {

class ArchiveCategoriesTest : public ArchiveWindowTest {
protected:
    ArchiveCategoriesTest() {
        Add(u"Abba"_s, u"Eins"_s, u"Gold"_s);
        Add(u"Guns N' Roses"_s, u"Zwei"_s, u"Rock"_s);
        Add(u"Juno"_s, u"Rock and Roll"_s);
        archive.Refresh();
        panel_.resize(1100, 400);
        panel_.show();
    }
    QWidget& Window() override { return panel_; }

    CategoryTree& Tree() { return Find<CategoryTree>("TreeView1"); }
    /** Opens the tree; missing lists are built on the way. */
    void OpenTree() {
        Press("cmdKategorien");
        EXPECT_TRUE(WaitUntil([this] { return Tree().model()->rowCount() == 8; }));
    }
    QModelIndex Node(const QString& key) {
        const QAbstractItemModel& model = *Tree().model();
        const QModelIndexList found =
            model.match(model.index(0, 0), CategoryTreeModel::keyRole, key, 1, Qt::MatchExactly | Qt::MatchRecursive);
        return found.value(0);
    }
    void ClickNode(const QString& key) {
        const QModelIndex node = Node(key);
        ASSERT_TRUE(node.isValid()) << key.toStdString();
        Tree().scrollTo(node);
        Click(*Tree().viewport(), Tree().visualRect(node).center());
    }

    ArchivePanel panel_{archive, settings, data};
};

TEST_F(ArchiveCategoriesTest, MissingListsAreBuiltAndTheTreeShowsThem) {
    OpenTree();
    QStringList texts;
    for (int row = 0; row < Tree().model()->rowCount(); ++row) {
        texts.append(Tree().model()->index(row, 0).data().toString());
        EXPECT_FALSE(Tree().isExpanded(Tree().model()->index(row, 0)));
    }
    EXPECT_EQ(texts.join(u'|'), u"Schließen|Aktualisieren| |Interpret|Album|Stil|Bewertung|Kommentar"_s);
    EXPECT_EQ(Node(u"Interpret"_s).data(CategoryTreeModel::imageRole).toString(), u"ordner"_s);
    EXPECT_EQ(Node(u"Interpret2"_s).data().toString(), u"Juno"_s);
    EXPECT_EQ(folder.Read(u"Kalvo/Interpret"_s).trimmed(), "Abba\nGuns N' Roses\nJuno");
    EXPECT_TRUE(WaitUntil([this] { return panel_.findChild<frmExplorer*>() == nullptr; })) << "it closes by itself";
}

TEST_F(ArchiveCategoriesTest, AValueFiltersAndClosingShowsEverything) {
    Find<QLineEdit>("Text1").setText(u"ju"_s);
    OpenTree();
    ClickNode(u"Interpret"_s);
    EXPECT_TRUE(Tree().isExpanded(Node(u"Interpret"_s)));
    ClickNode(u"Interpret1"_s);
    EXPECT_EQ(archive.CurrentRecordSource(),
              u"SELECT * FROM Daten  Where Interpret Like 'Guns N* Roses' Order By Interpret, Titel"_s);
    EXPECT_EQ(Text("Label23"), u"1 Titel gefunden"_s);
    EXPECT_EQ(panel_.SearchText(), QString()) << "what was typed is not what is shown";
    int told = 0;
    QObject::connect(&panel_, &ArchivePanel::TreeChanged, &panel_, [&] { ++told; });
    ClickNode(u"Schließen"_s);
    EXPECT_FALSE(Tree().isVisible());
    EXPECT_EQ(archive.CurrentRecordSource(), ArchiveStatements::Default());
    EXPECT_EQ(Text("Label23"), u"3 Titel gefunden"_s);
    EXPECT_EQ(told, 1);
}

TEST_F(ArchiveCategoriesTest, HeadsSortByTheTreesValueAndByWhatIsTypedWithoutOne) {
    OpenTree();
    ClickNode(u"Album"_s);
    ClickNode(u"Album1"_s);
    auto& grid = Find<ArchiveGrid>("DataGrid2");
    Q_EMIT grid.HeaderClicked(ArchiveField::Titel);
    const QString sorted = archive.CurrentRecordSource();
    EXPECT_TRUE(sorted.contains(u" Titel Like '*Rock*' or "_s));
    EXPECT_EQ(archive.RowCount(), 2);
    Q_EMIT grid.HeaderClicked(ArchiveField::Extra2);
    EXPECT_EQ(archive.CurrentRecordSource(), sorted);
    Find<QLineEdit>("Text1").setText(u"eins"_s);
    EXPECT_TRUE(Tree().SelectedValue().isEmpty());
    Q_EMIT grid.HeaderClicked(ArchiveField::Titel);
    EXPECT_TRUE(archive.CurrentRecordSource().contains(u" Titel Like '*eins*' or "_s));
}

TEST_F(ArchiveCategoriesTest, AktualisierenReadsTheArchiveAnew) {
    OpenTree();
    Add(u"Zoo"_s, u"Neu"_s);
    EXPECT_FALSE(Node(u"Interpret3"_s).isValid());
    ClickNode(u"Aktualisieren"_s);
    EXPECT_TRUE(WaitUntil([this] { return Node(u"Interpret3"_s).data().toString() == u"Zoo"_s; }));
}

TEST_F(ArchiveCategoriesTest, TheListUnderAHeadFilters) {
    ASSERT_TRUE(CategoryLists::Write(data, ArchiveField::Album, {u" Gold "_s, QString(), u"Rock"_s}));
    auto& grid = Find<ArchiveGrid>("DataGrid2");
    auto& list = Find<QListView>("lstKopf");
    const QPoint place = panel_.mapToGlobal(QPoint(40, 60));
    const auto choose = [&](int row) {
        Q_EMIT grid.ValueListRequested(ArchiveField::Album, QRect(place, QSize(150, 24)));
        EXPECT_EQ(list.window()->geometry().left(), place.x());
        Click(*list.viewport(), list.visualRect(list.model()->index(row, 0)).center());
        EXPECT_FALSE(list.isVisible());
    };
    choose(1);
    EXPECT_EQ(list.model()->rowCount(), 3);
    EXPECT_EQ(archive.CurrentRecordSource(),
              u"SELECT * FROM Daten  WHERE Album Like 'Gold'Order By Interpret, Titel"_s);
    EXPECT_EQ(Text("Label23"), u"1 Titel gefunden"_s);
    choose(0);
    EXPECT_EQ(archive.CurrentRecordSource(), ArchiveStatements::All());
}

TEST_F(ArchiveCategoriesTest, ANarrowWindowFoldsTheTreeUntilItsButtonIsPressed) {
    OpenTree();
    panel_.SetLayoutMode(LayoutMode::Narrow);
    EXPECT_FALSE(Tree().isVisible());
    EXPECT_TRUE(panel_.IsTreeShown());
    Press("cmdKategorien");
    EXPECT_TRUE(Tree().isVisible());
    panel_.SetLayoutMode(LayoutMode::Normal);
    EXPECT_TRUE(Tree().isVisible());
}

} // namespace
} // namespace kalvo::test
