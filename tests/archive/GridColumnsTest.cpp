#include "archive/GridColumns.h"
#include "archive/TitleRow.h"

#include "base/Settings.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <set>

namespace kalvo {

namespace {

using test::TestFolder;

constexpr int fontHeight = 13;

void ExpectEveryFieldOnce(const QList<GridColumn>& columns) {
    std::set<ArchiveField> fields;
    for (const GridColumn& column : columns)
        fields.insert(column.field);
    EXPECT_EQ(fields, std::set<ArchiveField>(kTextFields.begin(), kTextFields.end()));
    EXPECT_EQ(columns.size(), static_cast<qsizetype>(kTextFields.size()));
}

TEST(GridColumnsTest, NothingStoredGivesTheBuiltInLayoutThatFillsTheGrid) {
    TestFolder folder;
    const Settings settings(folder.Path(QStringLiteral("kalvo.ini")));
    EXPECT_FALSE(GridColumns::AreStored(settings));
    EXPECT_EQ(GridColumns::Read(settings, fontHeight), GridColumns::Defaults(fontHeight));
    ExpectEveryFieldOnce(GridColumns::Defaults(fontHeight));
    for (const int width : {1240, 1880}) {
        int used = 0;
        for (const GridColumn& column : GridColumns::Defaults(fontHeight, width))
            used += column.width / GridColumns::twipsPerPixel;
        EXPECT_LE(used, width);
        EXPECT_GT(used, width - static_cast<int>(kTextFields.size()));
    }
}

TEST(GridColumnsTest, WrittenColumnsComeBack) {
    TestFolder folder;
    QList<GridColumn> columns = GridColumns::Defaults(fontHeight);
    columns.move(7, 0);
    columns[2].width = 1234;
    columns[5].visible = false;
    columns[3].caption = QStringLiteral("CD");
    Settings settings(folder.Path(QStringLiteral("kalvo.ini")));
    GridColumns::Write(settings, columns);
    EXPECT_EQ(GridColumns::Read(Settings(folder.Path(QStringLiteral("kalvo.ini"))), fontHeight), columns);
    EXPECT_EQ(settings.GetSetting(QStringLiteral("MA8"), QStringLiteral("Caption"), {}), QStringLiteral("Kommentar"));
    EXPECT_EQ(settings.GetSetting(QStringLiteral("MA8"), QStringLiteral("DataField"), {}), QStringLiteral("Extra1"));
    EXPECT_FALSE(GridColumns::VisibleFields(columns).contains(columns[5].field));
}

TEST(GridColumnsTest, DamagedSectionsLoseNoField) {
    const struct {
        const char* section;
        const char* key;
        const char* value;
    } damages[] = {{"MA0", "DataField", "Interpret"}, {"MA3", "DataField", "Nr"},
                   {"MA5", "DataField", "Foo"},       {"MA7", "Width", "-9"},
                   {"MA9", "Width", "99999999"},      {"MA11", "DataField", ""}};
    for (const auto& damage : damages) {
        TestFolder folder;
        Settings settings(folder.Path(QStringLiteral("kalvo.ini")));
        GridColumns::Write(settings, GridColumns::Defaults(fontHeight));
        settings.PutSetting(QString::fromLatin1(damage.section), QString::fromLatin1(damage.key),
                            QString::fromLatin1(damage.value));
        const QList<GridColumn> columns = GridColumns::Read(settings, fontHeight);
        SCOPED_TRACE(damage.value);
        ExpectEveryFieldOnce(columns);
        for (const GridColumn& column : columns)
            EXPECT_TRUE(column.width > 0 && column.width < 100000) << column.width;
    }
}

TEST(GridColumnsTest, HeadingsOfTheUsersOwnComeBack) {
    const struct {
        qsizetype column;
        const char16_t* wanted;
        const char16_t* kept;
    } cases[] = {{0, u"Lied  & Größe", u"Lied & Größe"},
                 {1, u"  ", u"Interpret"},
                 {7, u"Fehler", u"Pfad"}, // stands for a missing layout
                 {8, u"Notiz", u"Kommentar"},
                 {11, u"Fehler", u"BPM"}};
    TestFolder folder;
    Settings settings(folder.Path(QStringLiteral("kalvo.ini")));
    QList<GridColumn> columns = GridColumns::Defaults(fontHeight);
    for (const auto& one : cases)
        columns[one.column].caption = QString::fromUtf16(one.wanted);
    GridColumns::Write(settings, columns);
    for (const auto& one : cases)
        EXPECT_EQ(GridColumns::Read(settings, fontHeight)[one.column].caption, QString::fromUtf16(one.kept));
}

TEST(GridColumnsTest, OneColumnAlwaysShows) {
    TestFolder folder;
    Settings settings(folder.Path(QStringLiteral("kalvo.ini")));
    QList<GridColumn> columns = GridColumns::Defaults(fontHeight);
    for (GridColumn& column : columns)
        column.visible = false;
    GridColumns::Write(settings, columns);
    EXPECT_EQ(GridColumns::VisibleFields(GridColumns::Read(settings, fontHeight)).size(), 1);
}

TEST(TitleRowTest, PackedTitlesComeBackAndShortRowsStayEmpty) {
    TitleRecord title;
    title.Nr = 7;
    title.Titel = QStringLiteral("Über allem");
    title.Pfad = QStringLiteral("/m/a.mp3");
    title.Extra4 = QStringLiteral("128");
    const TitleRecord back = TitleRow::Unpack(TitleRow::Pack(title));
    EXPECT_EQ(back.Nr, 7);
    for (const ArchiveField field : kTextFields)
        EXPECT_EQ(FieldText(back, field), FieldText(title, field));
    EXPECT_EQ(TitleRow::Unpack({QStringLiteral("x"), QStringLiteral("Titel")}).Pfad, QString());
}

} // namespace

} // namespace kalvo
