#include "archive/GridColumns.h"

#include "archive/GridSort.h"
#include "archive/ui/ArchiveDesk.h"

#include <set>

namespace kalvo::test {
namespace {

using enum ArchiveField;

constexpr int fontHeight = 13;

void ExpectEveryFieldOnce(const QList<GridColumn>& columns) {
    std::set<ArchiveField> fields;
    for (const GridColumn& column : columns)
        fields.insert(column.field);
    EXPECT_EQ(fields, std::set<ArchiveField>(kTextFields.begin(), kTextFields.end()));
    EXPECT_EQ(columns.size(), static_cast<qsizetype>(kTextFields.size()));
}

struct GridColumnsTest : ::testing::Test {
    QList<GridColumn> Stored() const { return GridColumns::Read(Settings(folder.Path(u"kalvo.ini"_s)), fontHeight); }

    TestFolder folder;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    QList<GridColumn> columns = GridColumns::Defaults(fontHeight);
};

TEST_F(GridColumnsTest, NothingStoredGivesTheBuiltInLayout) {
    EXPECT_FALSE(GridColumns::AreStored(settings));
    EXPECT_EQ(Stored(), columns);
    ExpectEveryFieldOnce(columns);
}

TEST_F(GridColumnsTest, DamagedSectionsLoseNoField) {
    const struct {
        const char* section;
        const char* key;
        const char* value;
    } damages[] = {{"MA0", "DataField", "Interpret"}, {"MA3", "DataField", "Nr"},
                   {"MA5", "DataField", "Foo"},       {"MA7", "Width", "-9"},
                   {"MA9", "Width", "99999999"},      {"MA11", "DataField", ""}};
    for (const auto& damage : damages) {
        GridColumns::Write(settings, columns);
        settings.PutSetting(QString::fromLatin1(damage.section), QString::fromLatin1(damage.key),
                            QString::fromLatin1(damage.value));
        SCOPED_TRACE(damage.value);
        ExpectEveryFieldOnce(Stored());
        for (const GridColumn& column : Stored())
            EXPECT_TRUE(column.width > 0 && column.width < 100000) << column.width;
    }
}

TEST_F(GridColumnsTest, HeadingsOfTheUsersOwnComeBack) {
    const struct {
        qsizetype column;
        const char16_t* wanted;
        const char16_t* kept;
    } cases[] = {{0, u"Lied  & Größe", u"Lied & Größe"},
                 {1, u"  ", u"Interpret"},
                 {7, u"Fehler", u"Pfad"}, // stands for a missing layout
                 {8, u"Notiz", u"Kommentar"},
                 {11, u"Fehler", u"BPM"}};
    for (const auto& one : cases)
        columns[one.column].caption = QString::fromUtf16(one.wanted);
    GridColumns::Write(settings, columns);
    for (const auto& one : cases)
        EXPECT_EQ(Stored()[one.column].caption, QString::fromUtf16(one.kept));
}

TEST_F(GridColumnsTest, OneColumnAlwaysShows) {
    for (GridColumn& column : columns)
        column.visible = false;
    GridColumns::Write(settings, columns);
    EXPECT_EQ(GridColumns::VisibleFields(Stored()).size(), 1);
}

GridFilter Search(const QString& text) {
    return {text, false, {}, {Titel, Interpret}};
}

TEST(GridSortTest, ClicksGiveStatementsAndTheMark) {
    const GridFilter none = Search(u"a"_s);
    const GridFilter typed = Search(u"ab"_s);
    GridFilter tree = Search(u"abba"_s);
    tree.treeShown = true;
    tree.treeValue = u"Rock 'n' Roll"_s;
    const QString rock = u"SELECT * FROM Daten  Where  Titel Like '*Rock *n* Roll*' or  Interpret Like "
                         "'*Rock *n* Roll*'Order By "_s;
    const struct {
        ArchiveField field;
        const GridFilter& filter;
        QString statement; ///< empty: nothing changes
        QString caption;   ///< of the field
    } clicks[] = {{Titel, none, u"Select * From Daten Order By Titel, Interpret, Titel"_s, u"Titel >"_s},
                  {Titel, none, u"Select * From Daten Order By Titel DESC, Interpret, Titel"_s, u"Titel <"_s},
                  {Titel, none, u"Select * From Daten Order By Titel, Interpret, Titel"_s, u"Titel >"_s},
                  {Extra2, typed, {}, u"Zuletzt Gespielt"_s},
                  {Extra3, tree, {}, u"Track"_s},
                  {Extra2, none, u"Select * From Daten Order By Extra2, Interpret, Titel"_s, u"Zuletzt Gespielt >"_s},
                  {Album, none, u"Select * From Daten Order By Album, Album, Extra3"_s, u"Album >"_s},
                  {Album, typed,
                   u"SELECT * FROM Daten  Where  Titel Like '*ab*' or  Interpret Like '*ab*'"
                   "Order By Album DESC, Interpret, Titel"_s,
                   u"Album <"_s},
                  {Extra1, tree, rock + u"Extra1, Interpret, Titel"_s, u"Kommentar >"_s}};
    GridSort sort;
    for (const auto& click : clicks) {
        EXPECT_EQ(sort.HeaderClick(click.field, click.filter), click.statement);
        EXPECT_EQ(sort.Caption(click.field), click.caption);
    }
    EXPECT_EQ(sort.Caption(Titel), u"Titel"_s) << "one column has the mark";
}

} // namespace
} // namespace kalvo::test
