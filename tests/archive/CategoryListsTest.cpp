#include "archive/CategoryLists.h"

#include "archive/ArchiveTree.h"
#include "archive/CategoryBuild.h"
#include "archive/ui/ArchiveDesk.h"
#include "support/WaitUntil.h"

#include <QDir>

namespace kalvo::test {
namespace {

using enum ArchiveField;

class CategoryListsTest : public ::testing::Test, protected ArchiveDesk {
protected:
    CategoryListsTest() {
        QObject::connect(&build, &CategoryBuild::Finished,
                         [this](CategoryBuild::Outcome result, const QString&) { outcomes.push_back(result); });
    }

    QString Values(ArchiveField field) const {
        return CategoryLists::Read(data, field).value_or(QStringList(u"none"_s)).join(u'|');
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

TEST_F(CategoryListsTest, CollectsSpellingsInTheOrderOfTheArtists) {
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
    ASSERT_TRUE(QDir(data.Root()).remove(u"Stil"_s));
    EXPECT_FALSE(ArchiveTree::Fill(data)) << "built anew then";
}

TEST_F(CategoryListsTest, CancelLeavesTheOldFiles) {
    for (const ArchiveField field : CategoryLists::kFields)
        ASSERT_TRUE(CategoryLists::Write(data, field, {u"alt"_s}));
    Add(u"neu"_s);
    build.Start();
    build.Cancel();
    EXPECT_EQ(Values(Interpret), u"alt"_s);
    EXPECT_EQ(outcomes, std::vector{CategoryBuild::Outcome::Cancelled});
    EXPECT_FALSE(build.IsRunning());
    RunTo(2);
    EXPECT_EQ(outcomes[1], CategoryBuild::Outcome::Written);
    EXPECT_EQ(Values(Interpret), u"neu"_s);
}

TEST_F(CategoryListsTest, TellsAFileThatCannotBeWritten) {
    Add(u"a"_s);
    ASSERT_TRUE(QDir().mkpath(data.Path(u"\\Album"_s)));
    RunTo(1);
    EXPECT_EQ(outcomes, std::vector{CategoryBuild::Outcome::Failed});
}

} // namespace
} // namespace kalvo::test
