#include "archive/GridSort.h"

#include <gtest/gtest.h>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;
using enum ArchiveField;

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

} // namespace kalvo
