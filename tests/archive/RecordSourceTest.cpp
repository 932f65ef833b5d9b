#include "archive/RecordSource.h"

#include "archive/ui/ArchiveDesk.h"

namespace kalvo::test {

using enum ArchiveField;

TEST(RecordSourceTest, UnderstandsTheDialect) {
    const struct {
        QString statement;
        RecordSource source;
    } cases[] = {
        {u"Select * From Daten"_s, {}},
        {u"Select * From Daten Order By Interpret, Titel"_s, {{}, {{Interpret}, {Titel}}}},
        {u"select*from daten order by nr desc"_s, {{}, {{Nr, true}}}},
        {u"Select * From Daten Order By Album DESC, Album, Extra3"_s, {{}, {{Album, true}, {Album}, {Extra3}}}},
        {u"SELECT * FROM Daten  Where  Titel Like '*abc*' or  Interpret Like '*abc*'Order By Interpret, Titel"_s,
         {{{Titel, true, u"*abc*"_s}, {Interpret, true, u"*abc*"_s}}, {{Interpret}, {Titel}}}},
        {u"SELECT * FROM Daten  WHERE extra1 Like '*x*'Order By Titel ASC"_s, {{{Extra1, true, u"*x*"_s}}, {{Titel}}}},
        {u"SELECT * FROM Daten Where Stil='' Or Jahr = '2001 or '"_s,
         {{{Stil, false, u""_s}, {Jahr, false, u"2001 or "_s}}, {}}},
    };
    for (const auto& one : cases)
        EXPECT_EQ(ParseRecordSource(one.statement), one.source) << one.statement.toStdString();
}

TEST(RecordSourceTest, RefusesEverythingElse) {
    for (const QString& statement :
         {u""_s, u"Select"_s, u"Select Titel From Daten"_s, u"Select * From Player1"_s, u"Delete From Daten"_s,
          u"Select * From Daten Where"_s, u"Select * From Daten Where Titel Like '*a"_s,
          u"Select * From Daten Where Titel Like '*a*' or"_s, u"Select * From Daten Where Farbe = 'rot'"_s,
          u"Select * From Daten Where Titel Like '*O'Neil*'"_s,
          u"Select * From Daten Where Titel = 'a' and Album = 'b'"_s, u"Select * From Daten Order By"_s,
          u"Select * From Daten Order By Titel,"_s, u"Select * From Daten Order Titel"_s,
          u"Select * From Daten Order By Titel; Drop Table Daten"_s})
        EXPECT_EQ(ParseRecordSource(statement), std::nullopt) << statement.toStdString();
}

} // namespace kalvo::test
