#include "live/GuestCatalog.h"

#include "live/GuestSupport.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

std::vector<qint64> Numbers(const GuestCatalog::Found& found) {
    std::vector<qint64> numbers;
    for (const GuestTitle& title : found.titles)
        numbers.push_back(title.nr);
    return numbers;
}

TEST(GuestCatalog, FindsWordsInArtistAndTitleWithoutCaseAndAccents) {
    const auto catalog = SomeTitles();
    const std::vector<std::pair<const char*, std::vector<qint64>>> cases{
        {"männer", {7}},
        {"MANNER", {7}},
        {"grün män", {7}},
        {"män grün", {7}},
        {"strasse älgfors", {3}},
        {"  regen ", {5, 3}}, // what begins with the word comes first
        {"regen zitter", {5}},
        {"regen männer", {}},
        {"", {}},
        {" \t", {}},
        {"%", {}},
        {"*", {}},
        {"\x01", {}},
        {"a b c d e f g h nirgends", {}}};
    for (const auto& [text, numbers] : cases)
        EXPECT_EQ(Numbers(catalog->Search(QString::fromUtf8(text), 10)), numbers) << text;
}

TEST(GuestCatalog, GivesNoMoreThanWantedButCountsAll) {
    GuestCatalog catalog;
    for (int i = 100; i > 0; --i)
        catalog.Append(i, "Lied " + std::to_string(100 + i), "Wer", "1:00");
    catalog.Settle();
    const GuestCatalog::Found found = catalog.Search(QStringLiteral("lied"), 3);
    EXPECT_EQ(found.count, 100U);
    EXPECT_EQ(Numbers(found), (std::vector<qint64>{1, 2, 3}));
}

TEST(GuestCatalog, FindsATitleByItsNumber) {
    const auto catalog = SomeTitles();
    const std::optional<GuestTitle> title = catalog->Find(3);
    ASSERT_TRUE(title);
    EXPECT_EQ(title->title, QStringLiteral("Straße im Regen"));
    EXPECT_EQ(title->artist, QStringLiteral("Älgfors"));
    EXPECT_EQ(title->duration, QStringLiteral("4:02"));
    for (const qint64 unknown : {0, 4, 10, -1})
        EXPECT_FALSE(catalog->Find(unknown)) << unknown;
    EXPECT_FALSE(GuestCatalog().Find(1));
}

} // namespace
} // namespace kalvo::test
