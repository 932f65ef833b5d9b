#include "archive/CategoryLists.h"

#include "archive/ArchiveTree.h"
#include "archive/CategoryBuild.h"
#include "archive/ui/ArchiveDesk.h"
#include "support/WaitUntil.h"

#include <QDir>

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
    QString Values(ArchiveField field) const {
        return CategoryLists::Read(data, field).value_or(QStringList(u"none"_s)).join(u'|');
    }
};

class CategoryBuildTest : public CategoryListsTest {
protected:
    CategoryBuildTest() {
        QObject::connect(&build, &CategoryBuild::Finished,
                         [this](CategoryBuild::Outcome result, const QString&) { outcomes.push_back(result); });
    }

    void Add(const QString& artist, const QString& album = {}, const QString& style = {}, const QString& comment = {}) {
        TitleRecord record;
        record.Interpret = artist;
        record.Album = album;
        record.Stil = style;
        record.Extra1 = comment;
        ASSERT_TRUE(archive.AddTitle(record));
    }

    void RunTo(std::size_t ends) {
        build.Start();
        ASSERT_TRUE(WaitUntil([&] { return outcomes.size() == ends; }));
        EXPECT_FALSE(build.IsRunning());
    }

    CategoryBuild build{archive, data};
    std::vector<CategoryBuild::Outcome> outcomes;
};

} // namespace

TEST_F(CategoryListsTest, AFileIsOneLineOfValues) {
    ASSERT_TRUE(CategoryLists::Write(data, Extra1, {u"für"_s, QString(), u"Rock 'n' Roll"_s}));
    EXPECT_EQ(folder.Read(u"Kalvo/Kommentar"_s), "f\xFCr\n\nRock 'n' Roll\r\n");
    EXPECT_EQ(Values(Extra1), u"für||Rock 'n' Roll"_s);
    ASSERT_TRUE(CategoryLists::Write(data, Stil, {u"Ωmega"_s, u"für"_s}));
    EXPECT_EQ(Values(Stil), u"Ωmega|für"_s);
    ASSERT_TRUE(CategoryLists::Write(data, Stil, {}));
    EXPECT_EQ(CategoryLists::Read(data, Stil), QStringList());
    EXPECT_EQ(CategoryLists::Read(data, Album), std::nullopt);
}

TEST_F(CategoryListsTest, ColumnListsOfferTrimmedValues) {
    ASSERT_TRUE(CategoryLists::Write(data, Album, {u" Best "_s, u"  "_s, QString(), u"Gold"_s}));
    EXPECT_EQ(CategoryLists::Entries(*CategoryLists::Read(data, Album)).join(u'|'), u"<alle>|Best|Gold"_s);
    EXPECT_EQ(CategoryLists::Entries({}), QStringList{u"<alle>"_s});
    const std::pair<QString, std::optional<ArchiveField>> captions[] = {
        {u"Album"_s, Album},        {u"Interpret <"_s, Interpret}, {u"Kommentar >"_s, Extra1},
        {u"Titel"_s, {}},           {u"Zuletzt Gespielt"_s, {}},   {u"Extra1"_s, {}},
        {u"Bewertung"_s, Bewertung}};
    for (const auto& [caption, field] : captions)
        EXPECT_EQ(CategoryLists::FieldOfCaption(caption), field) << caption.toStdString();
}

TEST_F(CategoryListsTest, ATreesValueKnowsItsPlaceAndItsStatement) {
    WriteAll({u"Abba"_s, QString(), u"O'Neil"_s});
    const auto branches = ArchiveTree::Fill(data);
    ASSERT_TRUE(branches);
    ASSERT_EQ(branches->last().Count(), 2);
    const ArchiveTree::Node comment = branches->last().ValueAt(1);
    EXPECT_EQ(comment.key, u"Kommentar2"_s);
    EXPECT_EQ(comment.image, u"auswahl"_s);
    EXPECT_EQ(ArchiveTree::Statement(comment.key, comment.text),
              u"SELECT * FROM Daten  Where Extra1 Like 'O*Neil' Order By Interpret, Titel"_s);
    ASSERT_TRUE(QDir(data.Root()).remove(u"Stil"_s));
    EXPECT_FALSE(ArchiveTree::Fill(data));
}

TEST_F(CategoryBuildTest, CollectsSpellingsInTheOrderOfTheArtists) {
    Add(u"Zappa"_s, u"Live"_s, u"rock"_s);
    Add(u"Abba"_s, u"Gold"_s, u"Pop"_s, u"laut"_s);
    Add(u"abba"_s, u"Live"_s, u"Rock"_s);
    Add(u"Abba"_s, u"gold"_s, u"Pop"_s, u"für"_s);
    build.Start();
    RunTo(1); // is running already
    EXPECT_EQ(outcomes, std::vector{CategoryBuild::Outcome::Written});
    EXPECT_EQ(Values(Interpret), u"Abba|abba|Zappa"_s);
    EXPECT_EQ(Values(Album), u"Gold|Live|gold"_s);
    EXPECT_EQ(Values(Stil), u"Pop|Rock|rock"_s);
    EXPECT_EQ(CategoryLists::Entries(*CategoryLists::Read(data, Extra1)).join(u'|'), u"<alle>|laut|für"_s);
    EXPECT_TRUE(ArchiveTree::Fill(data));
}

TEST_F(CategoryBuildTest, CancelLeavesTheOldFiles) {
    WriteAll({u"alt"_s});
    Add(u"neu"_s);
    build.Start();
    build.Cancel();
    EXPECT_EQ(outcomes, std::vector{CategoryBuild::Outcome::Cancelled});
    EXPECT_FALSE(build.IsRunning());
    RunTo(2);
    EXPECT_EQ(outcomes[1], CategoryBuild::Outcome::Written);
    EXPECT_EQ(Values(Interpret), u"neu"_s);
}

TEST_F(CategoryBuildTest, TellsAFileThatCannotBeWritten) {
    Add(u"a"_s);
    ASSERT_TRUE(QDir().mkpath(data.Path(u"\\Album"_s)));
    RunTo(1);
    EXPECT_EQ(outcomes, std::vector{CategoryBuild::Outcome::Failed});
}

} // namespace kalvo::test
