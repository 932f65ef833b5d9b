#include "archive/RecordSource.h"

#include "archive/ArchiveStatements.h"

#include <gtest/gtest.h>

#include <random>

namespace kalvo::test {

using namespace Qt::StringLiterals;
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

TEST(RecordSourceTest, StatementsAreTheGivenOnesLetterForLetter) {
    const std::pair<QString, QString> cases[] = {
        {ArchiveStatements::Default(), u"Select * From Daten Order By Interpret, Titel"_s},
        {ArchiveStatements::All(), u"SELECT * FROM Daten Order By Interpret, Titel"_s},
        {ArchiveStatements::QuickSearch(u"abc"_s, {Titel, Interpret}),
         u"SELECT * FROM Daten  Where  Titel Like '*abc*' or  Interpret Like '*abc*'Order By Interpret, Titel"_s},
        {ArchiveStatements::Sorted(Extra1, true), u"Select * From Daten Order By Extra1 DESC, Interpret, Titel"_s},
        {ArchiveStatements::SortedSearch(u"abc"_s, {Titel}, Extra3, false), QString()},
        {ArchiveStatements::ColumnValue(Album, u"Gold"_s),
         u"SELECT * FROM Daten  WHERE Album Like 'Gold'Order By Interpret, Titel"_s},
        {ArchiveStatements::TreeValue(Stil, u"Rock"_s),
         u"SELECT * FROM Daten  Where Stil = 'Rock' Order By Interpret, Titel"_s},
        {ArchiveStatements::DuplicateCheck(u"/m/Guns N' Roses/a.mp3"_s),
         u"SELECT * FROM Daten  WHERE Pfad Like '/m/Guns N* Roses/a.mp3'"_s},
        {ArchiveStatements::SearchField(u"d'or"_s, Extra1),
         u"SELECT * FROM Daten  WHERE extra1 Like '*d*or*'Order By Interpret, Titel"_s},
        {ArchiveStatements::Categories(), u"SELECT * FROM Daten ORDER BY Interpret"_s},
        {ArchiveStatements::DuplicateCandidates(), u"SELECT * FROM Daten ORDER BY Titel"_s},
        {ArchiveStatements::FileNameDuplicates(u"Don't.mp3"_s),
         u"SELECT * FROM Daten WHERE Pfad LIKE '*Don*t.mp3*' ORDER BY Pfad"_s},
        {ArchiveStatements::TitleDuplicates(u"Don't"_s),
         u"SELECT * FROM Daten WHERE Titel LIKE 'Don*t' ORDER BY Titel"_s},
        {ArchiveStatements::DrawnTitles(Interpret, u"O'Neil"_s),
         u"SELECT * FROM Daten WHERE Interpret Like '*O*Neil*'Order By Interpret, Titel"_s},
    };
    for (const auto& [built, expected] : cases) {
        EXPECT_EQ(built, expected);
        EXPECT_TRUE(built.isEmpty() || ParseRecordSource(built)) << built.toStdString();
    }
    EXPECT_EQ(ArchiveStatements::SearchField(QString(), Titel), QString());
    const QString criterion = ArchiveStatements::PathCriterion(u"/m/Guns N' Roses/a.mp3"_s);
    EXPECT_EQ(criterion, u"Pfad Like '/m/Guns N* Roses/a.mp3'"_s);
    EXPECT_EQ(ParseCriterion(criterion), (RecordSource{{{Pfad, true, u"/m/Guns N* Roses/a.mp3"_s}}, {}}));
    EXPECT_EQ(ParseCriterion(u"Pfad Like 'a' Order By Titel"), std::nullopt);
}

TEST(RecordSourceTest, NoTextChangesAStatementsShape) {
    std::mt19937 random(7);
    const QString pieces[] = {u"'"_s,     u"''"_s,           u" or "_s, u"Order By"_s, u"*"_s,  u"\\"_s,
                              u"--"_s,    u"\""_s,           u";"_s,    u"ä"_s,        u"\n"_s, u"%"_s,
                              u"Titel"_s, QString(QChar(0)), u"ab"_s};
    const QList<ArchiveField> columns = {Titel, Pfad, Extra4};
    for (int round = 0; round < 3000; ++round) {
        QString text;
        for (auto count = random() % 8; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        const auto source = ParseRecordSource(ArchiveStatements::SortedSearch(text, columns, Jahr, true));
        ASSERT_TRUE(source) << text.toStdString();
        ASSERT_EQ(source->conditions.size(), 3);
        EXPECT_EQ(source->conditions.at(1).field, Pfad);
        EXPECT_EQ(source->conditions.at(1).text, u"*"_s + QString(text).replace(u'\'', u'*') + u"*"_s);
        EXPECT_EQ(source->order, (QList<RecordOrder>{{Jahr, true}, {Interpret}, {Titel}}));
    }
}

} // namespace kalvo::test
