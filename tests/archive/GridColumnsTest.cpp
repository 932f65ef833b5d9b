#include "archive/GridColumns.h"
#include "archive/TitleRow.h"

#include "base/Settings.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <set>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

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

    test::TestFolder folder;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    QList<GridColumn> columns = GridColumns::Defaults(fontHeight);
};

TEST_F(GridColumnsTest, NothingStoredGivesTheBuiltInLayoutThatFillsTheGrid) {
    EXPECT_FALSE(GridColumns::AreStored(settings));
    EXPECT_EQ(Stored(), columns);
    ExpectEveryFieldOnce(columns);
    for (const int width : {1240, 1880}) {
        int used = 0;
        for (const GridColumn& column : GridColumns::Defaults(fontHeight, width))
            used += column.width / GridColumns::twipsPerPixel;
        EXPECT_LE(used, width);
        EXPECT_GT(used, width - static_cast<int>(kTextFields.size()));
    }
}

TEST_F(GridColumnsTest, WrittenColumnsComeBack) {
    columns.move(7, 0);
    columns[2].width = 1234;
    columns[5].visible = false;
    columns[3].caption = u"CD"_s;
    GridColumns::Write(settings, columns);
    EXPECT_EQ(Stored(), columns);
    EXPECT_EQ(settings.GetSetting(u"MA8"_s, u"Caption"_s, {}), u"Kommentar"_s);
    EXPECT_EQ(settings.GetSetting(u"MA8"_s, u"DataField"_s, {}), u"Extra1"_s);
    EXPECT_FALSE(GridColumns::VisibleFields(columns).contains(columns[5].field));
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

TEST(TitleRowTest, PackedTitlesComeBackAndShortRowsStayEmpty) {
    TitleRecord title;
    title.Nr = 7;
    title.Titel = u"Über allem"_s;
    title.Pfad = u"/m/a.mp3"_s;
    title.Extra4 = u"128"_s;
    const TitleRecord back = TitleRow::Unpack(TitleRow::Pack(title));
    EXPECT_EQ(back.Nr, 7);
    for (const ArchiveField field : kTextFields)
        EXPECT_EQ(FieldText(back, field), FieldText(title, field));
    EXPECT_EQ(TitleRow::Unpack({u"x"_s, u"Titel"_s}).Pfad, QString());
}

} // namespace

} // namespace kalvo
