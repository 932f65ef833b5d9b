#include "archive/GridSort.h"

#include <gtest/gtest.h>

namespace kalvo {

namespace {

GridFilter Search(const QString& text) {
    return {text, false, {}, {ArchiveField::Titel, ArchiveField::Interpret}};
}

TEST(GridSortTest, ClicksGiveStatementsAndTheMark) {
    const GridFilter none = Search(QStringLiteral("a"));
    const GridFilter typed = Search(QStringLiteral("ab"));
    GridFilter tree = Search(QStringLiteral("abba"));
    tree.treeShown = true;
    tree.treeValue = QStringLiteral("Rock 'n' Roll");
    const QString rock = QStringLiteral("SELECT * FROM Daten  Where  Titel Like '*Rock *n* Roll*' or  Interpret Like "
                                        "'*Rock *n* Roll*'Order By ");
    const struct {
        ArchiveField field;
        const GridFilter& filter;
        QString statement; ///< empty: nothing changes
        QString caption;   ///< of the field
    } clicks[] = {
        {ArchiveField::Titel, none, QStringLiteral("Select * From Daten Order By Titel, Interpret, Titel"),
         QStringLiteral("Titel >")},
        {ArchiveField::Titel, none, QStringLiteral("Select * From Daten Order By Titel DESC, Interpret, Titel"),
         QStringLiteral("Titel <")},
        {ArchiveField::Titel, none, QStringLiteral("Select * From Daten Order By Titel, Interpret, Titel"),
         QStringLiteral("Titel >")},
        {ArchiveField::Extra2, typed, {}, QStringLiteral("Zuletzt Gespielt")},
        {ArchiveField::Extra3, tree, {}, QStringLiteral("Track")},
        {ArchiveField::Extra2, none, QStringLiteral("Select * From Daten Order By Extra2, Interpret, Titel"),
         QStringLiteral("Zuletzt Gespielt >")},
        {ArchiveField::Album, none, QStringLiteral("Select * From Daten Order By Album, Album, Extra3"),
         QStringLiteral("Album >")},
        {ArchiveField::Album, typed,
         QStringLiteral("SELECT * FROM Daten  Where  Titel Like '*ab*' or  Interpret Like '*ab*'"
                        "Order By Album DESC, Interpret, Titel"),
         QStringLiteral("Album <")},
        {ArchiveField::Extra1, tree, rock + QStringLiteral("Extra1, Interpret, Titel"), QStringLiteral("Kommentar >")}};
    GridSort sort;
    for (const auto& click : clicks) {
        EXPECT_EQ(sort.HeaderClick(click.field, click.filter), click.statement);
        EXPECT_EQ(sort.Caption(click.field), click.caption);
    }
    EXPECT_EQ(sort.Caption(ArchiveField::Titel), QStringLiteral("Titel")) << "one column has the mark";
}

} // namespace

} // namespace kalvo
