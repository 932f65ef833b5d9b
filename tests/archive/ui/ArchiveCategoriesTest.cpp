#include "archive/ui/ArchivePanel.h"

#include "archive/ArchiveStatements.h"
#include "archive/CategoryLists.h"
#include "archive/ui/ArchiveDesk.h"
#include "archive/ui/CategoryTree.h"
#include "archive/ui/WindowActs.h"
#include "archive/ui/frmExplorer.h"
#include "support/WaitUntil.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>

namespace kalvo {
namespace {

using test::ArchiveDesk;
using test::WaitUntil;

class ArchiveCategoriesTest : public ::testing::Test {
protected:
    void SetUp() override {
        desk_.Add(QStringLiteral("Abba"), QStringLiteral("Eins"), QStringLiteral("Gold"));
        desk_.Add(QStringLiteral("Guns N' Roses"), QStringLiteral("Zwei"), QStringLiteral("Rock"));
        desk_.Add(QStringLiteral("Juno"), QStringLiteral("Rock and Roll"));
        desk_.archive.Refresh();
        panel_.resize(1100, 400);
        panel_.show();
    }

    template<typename Widget>
    Widget& Find(const char* name) {
        auto* found = panel_.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    CategoryTree& Tree() { return Find<CategoryTree>("TreeView1"); }
    /** Opens the tree; missing lists are built on the way. */
    void OpenTree() {
        Find<QAbstractButton>("cmdKategorien").click();
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
        test::Click(*Tree().viewport(), Tree().visualRect(node).center());
    }
    QString Found() { return Find<QLabel>("Label23").text(); }

    ArchiveDesk desk_;
    ArchivePanel panel_{desk_.archive, desk_.settings, desk_.data};
};

TEST_F(ArchiveCategoriesTest, MissingListsAreBuiltAndTheTreeShowsThem) {
    OpenTree();
    QStringList texts;
    QStringList images;
    for (int row = 0; row < Tree().model()->rowCount(); ++row) {
        texts.append(Tree().model()->index(row, 0).data().toString());
        images.append(Tree().model()->index(row, 0).data(CategoryTreeModel::imageRole).toString());
        EXPECT_FALSE(Tree().isExpanded(Tree().model()->index(row, 0)));
    }
    EXPECT_EQ(texts.join(u'|'), QStringLiteral("Schließen|Aktualisieren| |Interpret|Album|Stil|Bewertung|Kommentar"));
    EXPECT_EQ(images.join(u'|'), QStringLiteral("schließen|aktualisieren||ordner|ordner|ordner|ordner|ordner"));
    EXPECT_EQ(Node(QStringLiteral("Interpret2")).data().toString(), QStringLiteral("Juno"));
    EXPECT_EQ(Node(QStringLiteral("Interpret2")).data(CategoryTreeModel::imageRole).toString(),
              QStringLiteral("auswahl"));
    EXPECT_EQ(desk_.folder.Read(QStringLiteral("Kalvo/Interpret")).trimmed(), "Abba\nGuns N' Roses\nJuno");
    EXPECT_TRUE(WaitUntil([this] { return panel_.findChild<frmExplorer*>() == nullptr; })) << "it closes by itself";
}

TEST_F(ArchiveCategoriesTest, AValueFiltersAndClosingShowsEverything) {
    Find<QLineEdit>("Text1").setText(QStringLiteral("ju"));
    OpenTree();
    ClickNode(QStringLiteral("Interpret"));
    EXPECT_TRUE(Tree().isExpanded(Node(QStringLiteral("Interpret"))));
    ClickNode(QStringLiteral("Interpret1"));
    EXPECT_EQ(desk_.archive.CurrentRecordSource(),
              QStringLiteral("SELECT * FROM Daten  Where Interpret Like 'Guns N* Roses' Order By Interpret, Titel"));
    EXPECT_EQ(Found(), QStringLiteral("1 Titel gefunden"));
    EXPECT_EQ(panel_.SearchText(), QString()) << "what was typed is not what is shown";
    int told = 0;
    QObject::connect(&panel_, &ArchivePanel::TreeChanged, &panel_, [&] { ++told; });
    ClickNode(QStringLiteral("Schließen"));
    EXPECT_FALSE(Tree().isVisible());
    EXPECT_EQ(desk_.archive.CurrentRecordSource(), ArchiveStatements::Default());
    EXPECT_EQ(Found(), QStringLiteral("3 Titel gefunden"));
    EXPECT_EQ(told, 1);
}

TEST_F(ArchiveCategoriesTest, HeadsSortByTheTreesValueAndByWhatIsTypedWithoutOne) {
    OpenTree();
    ClickNode(QStringLiteral("Album"));
    ClickNode(QStringLiteral("Album1"));
    auto& grid = Find<ArchiveGrid>("DataGrid2");
    Q_EMIT grid.HeaderClicked(ArchiveField::Titel);
    EXPECT_TRUE(desk_.archive.CurrentRecordSource().contains(QStringLiteral(" Titel Like '*Rock*' or ")));
    EXPECT_EQ(desk_.archive.RowCount(), 2);
    const QString sorted = desk_.archive.CurrentRecordSource();
    Q_EMIT grid.HeaderClicked(ArchiveField::Extra2);
    EXPECT_EQ(desk_.archive.CurrentRecordSource(), sorted);
    Find<QLineEdit>("Text1").setText(QStringLiteral("eins"));
    EXPECT_TRUE(Tree().SelectedValue().isEmpty());
    Q_EMIT grid.HeaderClicked(ArchiveField::Titel);
    EXPECT_TRUE(desk_.archive.CurrentRecordSource().contains(QStringLiteral(" Titel Like '*eins*' or ")));
}

TEST_F(ArchiveCategoriesTest, AktualisierenReadsTheArchiveAnew) {
    OpenTree();
    desk_.Add(QStringLiteral("Zoo"), QStringLiteral("Neu"));
    EXPECT_FALSE(Node(QStringLiteral("Interpret3")).isValid());
    ClickNode(QStringLiteral("Aktualisieren"));
    EXPECT_TRUE(WaitUntil([this] { return Node(QStringLiteral("Interpret3")).isValid(); }));
    EXPECT_EQ(Node(QStringLiteral("Interpret3")).data().toString(), QStringLiteral("Zoo"));
}

TEST_F(ArchiveCategoriesTest, TheListUnderAHeadFilters) {
    ASSERT_TRUE(CategoryLists::Write(desk_.data, ArchiveField::Album,
                                     {QStringLiteral(" Gold "), QString(), QStringLiteral("Rock")}));
    auto& grid = Find<ArchiveGrid>("DataGrid2");
    auto& list = Find<QListView>("lstKopf");
    const auto choose = [&](int row) {
        Q_EMIT grid.ValueListRequested(ArchiveField::Album, QRect(panel_.mapToGlobal(QPoint(40, 60)), QSize(150, 24)));
        EXPECT_EQ(list.window()->geometry().left(), panel_.mapToGlobal(QPoint(40, 60)).x());
        test::Click(*list.viewport(), list.visualRect(list.model()->index(row, 0)).center());
        EXPECT_FALSE(list.isVisible());
    };
    choose(1);
    EXPECT_EQ(list.model()->index(0, 0).data().toString(), QStringLiteral("<alle>"));
    EXPECT_EQ(list.model()->rowCount(), 3);
    EXPECT_EQ(desk_.archive.CurrentRecordSource(),
              QStringLiteral("SELECT * FROM Daten  WHERE Album Like 'Gold'Order By Interpret, Titel"));
    EXPECT_EQ(Found(), QStringLiteral("1 Titel gefunden"));
    choose(0);
    EXPECT_EQ(desk_.archive.CurrentRecordSource(), ArchiveStatements::All());
}

TEST_F(ArchiveCategoriesTest, ANarrowWindowFoldsTheTreeUntilItsButtonIsPressed) {
    OpenTree();
    panel_.SetLayoutMode(LayoutMode::Narrow);
    EXPECT_FALSE(Tree().isVisible());
    EXPECT_TRUE(panel_.IsTreeShown());
    Find<QAbstractButton>("cmdKategorien").click();
    EXPECT_TRUE(Tree().isVisible());
    panel_.SetLayoutMode(LayoutMode::Normal);
    EXPECT_TRUE(Tree().isVisible());
}

} // namespace
} // namespace kalvo
