#include "archive/CategoryLists.h"

#include "archive/ArchiveTree.h"
#include "archive/CategoryBuild.h"
#include "archive/ui/ArchiveDesk.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;
using enum ArchiveField;

class CategoryListsTest : public ::testing::Test, protected ArchiveDesk {
protected:
    void WriteAll(const QStringList& values) const {
        for (const ArchiveField field : CategoryLists::kFields)
            EXPECT_TRUE(CategoryLists::Write(data, field, values));
    }
};

class CategoryBuildTest : public CategoryListsTest {
protected:
    CategoryBuildTest() {
        QObject::connect(&build, &CategoryBuild::Finished,
                         [this](CategoryBuild::Outcome result, const QString&) { outcomes.push_back(result); });
    }

    void Add(const QString& artist, const QString& album, const QString& style, const QString& comment) {
        TitleRecord record;
        record.Interpret = artist;
        record.Album = album;
        record.Stil = style;
        record.Extra1 = comment;
        ASSERT_TRUE(archive.AddTitle(record));
    }

    CategoryBuild build{archive, data};
    std::vector<CategoryBuild::Outcome> outcomes;
};

} // namespace

TEST_F(CategoryListsTest, AFileIsOneLineOfValues) {
    ASSERT_TRUE(CategoryLists::Write(data, Extra1, {u"für"_s, QString(), u"Rock 'n' Roll"_s}));
    EXPECT_EQ(folder.Read(u"Kalvo/Kommentar"_s), "f\xFCr\n\nRock 'n' Roll\r\n");
    EXPECT_EQ(CategoryLists::Read(data, Extra1), (QStringList{u"für"_s, QString(), u"Rock 'n' Roll"_s}));
    ASSERT_TRUE(CategoryLists::Write(data, Stil, {u"Ωmega"_s, u"für"_s}));
    EXPECT_EQ(CategoryLists::Read(data, Stil), (QStringList{u"Ωmega"_s, u"für"_s}));
    ASSERT_TRUE(CategoryLists::Write(data, Stil, {}));
    EXPECT_EQ(CategoryLists::Read(data, Stil), QStringList());
    EXPECT_EQ(CategoryLists::Read(data, Album), std::nullopt);
}

TEST_F(CategoryListsTest, ColumnListsOfferTrimmedValues) {
    ASSERT_TRUE(CategoryLists::Write(data, Album, {u" Best "_s, u"  "_s, QString(), u"Gold"_s}));
    EXPECT_EQ(CategoryLists::Entries(data, Album), (QStringList{u"<alle>"_s, u"Best"_s, u"Gold"_s}));
    EXPECT_EQ(CategoryLists::Entries(data, Stil), QStringList{u"<alle>"_s});
    EXPECT_EQ(CategoryLists::Statement(Extra1, u"<alle>"_s), u"SELECT * FROM Daten Order By Interpret, Titel"_s);
    EXPECT_EQ(CategoryLists::Statement(Extra1, u"live"_s),
              u"SELECT * FROM Daten  WHERE Extra1 Like 'live'Order By Interpret, Titel"_s);
    const std::pair<QString, std::optional<ArchiveField>> captions[] = {
        {u"Album"_s, Album},        {u"Interpret <"_s, Interpret}, {u"Kommentar >"_s, Extra1},
        {u"Titel"_s, {}},           {u"Zuletzt Gespielt"_s, {}},   {u"Extra1"_s, {}},
        {u"Bewertung"_s, Bewertung}};
    for (const auto& [caption, field] : captions)
        EXPECT_EQ(CategoryLists::FieldOfCaption(caption), field) << caption.toStdString();
}

TEST_F(CategoryListsTest, ATreesValueKnowsItsPlaceAndItsStatement) {
    WriteAll({u"Abba"_s, QString(), u"O'Neil"_s});
    const auto nodes = ArchiveTree::Fill(data);
    ASSERT_TRUE(nodes);
    const ArchiveTree::Node& comments = nodes->last();
    ASSERT_EQ(comments.values.size(), 2);
    EXPECT_EQ(comments.values.at(1).key, u"Kommentar2"_s);
    EXPECT_EQ(comments.values.at(1).image, u"auswahl"_s);
    EXPECT_EQ(ArchiveTree::Statement(comments.values.at(1).key, comments.values.at(1).text),
              u"SELECT * FROM Daten  Where Extra1 Like 'O*Neil' Order By Interpret, Titel"_s);
    ASSERT_TRUE(QDir(data.Root()).remove(u"Stil"_s));
    EXPECT_FALSE(ArchiveTree::Fill(data));
}

TEST_F(CategoryListsTest, AClickMeansWhatTheKeySays) {
    using enum ArchiveTree::Click;
    const std::pair<QString, ArchiveTree::Click> cases[] = {
        {u"Schließen"_s, Close}, {u"Aktualisieren"_s, Rebuild}, {u"Interpret5"_s, Value}, {u"Kommentar120"_s, Value},
        {u"Album"_s, Nothing},   {QString(), Nothing},          {u"Titel3"_s, Nothing},   {u"7"_s, Nothing}};
    for (const auto& [key, click] : cases) {
        EXPECT_EQ(ArchiveTree::ClickOn(key), click) << key.toStdString();
        EXPECT_EQ(ArchiveTree::Statement(key, u"x"_s).isEmpty(), click != Value) << key.toStdString();
    }
}

TEST_F(CategoryBuildTest, CollectsSpellingsInTheOrderOfTheArtists) {
    Add(u"Zappa"_s, u"Live"_s, u"rock"_s, {});
    Add(u"Abba"_s, u"Gold"_s, u"Pop"_s, u"laut"_s);
    Add(u"abba"_s, u"Live"_s, u"Rock"_s, {});
    Add(u"Abba"_s, u"gold"_s, u"Pop"_s, u"für"_s);
    build.Start();
    build.Start(); // is running already
    ASSERT_TRUE(WaitUntil([this] { return !outcomes.empty(); }));
    EXPECT_EQ(outcomes, std::vector{CategoryBuild::Outcome::Written});
    EXPECT_FALSE(build.IsRunning());
    EXPECT_EQ(CategoryLists::Read(data, Interpret), (QStringList{u"Abba"_s, u"abba"_s, u"Zappa"_s}));
    EXPECT_EQ(CategoryLists::Read(data, Album), (QStringList{u"Gold"_s, u"Live"_s, u"gold"_s}));
    EXPECT_EQ(CategoryLists::Read(data, Stil), (QStringList{u"Pop"_s, u"Rock"_s, u"rock"_s}));
    EXPECT_EQ(CategoryLists::Entries(data, Extra1), (QStringList{u"<alle>"_s, u"laut"_s, u"für"_s}));
    EXPECT_TRUE(ArchiveTree::Fill(data));
}

TEST_F(CategoryBuildTest, CancelLeavesTheOldFiles) {
    WriteAll({u"alt"_s});
    Add(u"neu"_s, {}, {}, {});
    build.Start();
    build.Cancel();
    EXPECT_EQ(outcomes, std::vector{CategoryBuild::Outcome::Cancelled});
    EXPECT_FALSE(build.IsRunning());
    build.Start();
    ASSERT_TRUE(WaitUntil([this] { return outcomes.size() == 2; }));
    EXPECT_EQ(outcomes[1], CategoryBuild::Outcome::Written);
    EXPECT_EQ(CategoryLists::Read(data, Interpret), QStringList{u"neu"_s});
}

TEST_F(CategoryBuildTest, TellsAFileThatCannotBeWritten) {
    Add(u"a"_s, {}, {}, {});
    ASSERT_TRUE(QDir().mkpath(data.Path(u"\\Album"_s)));
    build.Start();
    ASSERT_TRUE(WaitUntil([this] { return !outcomes.empty(); }));
    EXPECT_EQ(outcomes, std::vector{CategoryBuild::Outcome::Failed});
}

} // namespace kalvo::test
