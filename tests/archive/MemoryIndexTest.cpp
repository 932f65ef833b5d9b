#include "archive/MemoryIndex.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace kalvo::test {
namespace {

using enum ArchiveField;

/** So many titles that two threads share the sorting, with many alike; all texts are their own sort keys. */
class ManyTitles {
public:
    static constexpr qint64 kTitles = 160'000;

    ManyTitles() {
        std::mt19937 random(7);
        titles_.resize(kTitles);
        for (qint64 nr = 1; nr <= kTitles; ++nr) {
            auto& texts = titles_[static_cast<std::size_t>(nr - 1)];
            texts[Place(Titel)] = "title " + std::to_string(random() % 30'000);
            texts[Place(Interpret)] = "artist " + std::to_string(random() % 2000);
            texts[Place(Album)] = "album " + std::to_string(random() % 5000);
            texts[Place(Extra3)] = std::to_string(random() % 20);
            texts[Place(Pfad)] = "/" + std::to_string(random() % 9000) + "/" + std::to_string(random() % 50);
            MemoryIndex::Texts views;
            std::copy(texts.begin(), texts.end(), views.begin());
            index.Append(nr, views);
        }
        index.Pack();
    }

    void Change(qint64 nr, ArchiveField field, const char* text) {
        titles_[static_cast<std::size_t>(nr - 1)][Place(field)] = text;
        index.Put(Record(nr));
    }

    TitleRecord Record(qint64 nr) const {
        TitleRecord record;
        for (const ArchiveField each : kTextFields)
            FieldPlace(record, each) = QString::fromStdString(TextOf(nr, each));
        record.Nr = nr;
        return record;
    }

    /** Whether the title of this number stands before the other one. */
    bool IsBefore(qint64 left, qint64 right, const QList<RecordOrder>& order) const {
        for (const RecordOrder& key : order)
            if (const int found = TextOf(left, key.field).compare(TextOf(right, key.field)); found != 0)
                return (found < 0) != key.descending;
        return left < right;
    }

    const std::string& TextOf(qint64 nr, ArchiveField field) const {
        return titles_[static_cast<std::size_t>(nr - 1)][Place(field)];
    }

    MemoryIndex index;

private:
    static std::size_t Place(ArchiveField field) { return static_cast<std::size_t>(field) - 1; }

    std::vector<std::array<std::string, kTextFields.size()>> titles_;
};

TEST(MemoryIndexTest, ManyTitlesComeInEveryOrderAlsoWhenAThirdOfThemHasGone) {
    const QList<QList<RecordOrder>> orders = {{},
                                              {{Titel, false}},
                                              {{Titel, true}},
                                              {{Pfad, true}},
                                              {{Album, true}, {Extra3, false}},
                                              {{Album, false}, {Extra3, false}},
                                              {{Extra3, false}},
                                              {{Album, false}, {Titel, true}},
                                              {{Extra3, true}, {Album, false}, {Pfad, true}}};
    constexpr qint64 kLongNumber = 5'000'000'000;
    ManyTitles titles;
    std::size_t left = ManyTitles::kTitles;
    const auto expectOrders = [&](const char* when, std::size_t longOnes) {
        for (const QList<RecordOrder>& keys : orders) {
            const QList<RecordOrder> order = keys + QList<RecordOrder>{{Interpret}, {Titel}};
            std::vector<qint64> found = titles.index.Select({{}, order});
            EXPECT_EQ(std::erase(found, kLongNumber), longOnes);
            ASSERT_EQ(found.size(), left);
            const auto isMisplaced = [&](qint64 one, qint64 next) { return !titles.IsBefore(one, next, order); };
            EXPECT_EQ(std::adjacent_find(found.begin(), found.end(), isMisplaced), found.end())
                << "order " << orders.indexOf(keys) << ", " << when;
        }
    };
    expectOrders("all", 0);
    titles.Change(77, Album, "album zz");
    expectOrders("one on another album", 0);
    const auto remove = [&](qint64 every) {
        std::vector<qint64> gone;
        for (qint64 nr = 1; nr <= ManyTitles::kTitles; nr += every)
            gone.push_back(nr);
        titles.index.Remove(gone);
        left = static_cast<std::size_t>(titles.index.Count());
        return gone;
    };
    const std::vector<qint64> gone = remove(5);
    EXPECT_EQ(left, ManyTitles::kTitles - gone.size());
    expectOrders("some gone", 0);
    QList<TitleRecord> back;
    for (std::size_t i = 0; i < gone.size(); i += 2)
        back.append(titles.Record(gone[i]));
    titles.index.Put(back);
    left += static_cast<std::size_t>(back.size());
    expectOrders("half of them back", 0);
    EXPECT_TRUE(titles.index.FindPath(back.last().Pfad));
    titles.Change(gone[0], Titel, "title back");
    titles.Change(gone[2], Interpret, "artist 0");
    titles.Change(gone[1], Album, "album back");
    ++left;
    expectOrders("changed when and after they came back", 0);
    remove(3);
    expectOrders("a third gone", 0);
    titles.index.Append(kLongNumber, {});
    expectOrders("a number of more than 32 bits", 1);
    EXPECT_EQ(titles.index.Count(), static_cast<qint64>(left) + 1);
}

TEST(MemoryIndexTest, ManyTitlesAreSearchedInEveryField) {
    ManyTitles titles;
    const QList<RecordCondition> conditions{{Titel, true, QStringLiteral("*le 77*")},
                                            {Interpret, true, QStringLiteral("*st 19*")},
                                            {Album, false, QStringLiteral("ALBUM 5")},
                                            {Pfad, true, QStringLiteral("*/33/4*")}};
    std::vector<qint64> found = titles.index.Select({conditions, {}});
    std::sort(found.begin(), found.end());
    std::vector<qint64> expected;
    for (qint64 nr = 1; nr <= ManyTitles::kTitles; ++nr) {
        const auto holds = [&](ArchiveField field, const char* text) {
            return titles.TextOf(nr, field).find(text) != std::string::npos;
        };
        if (holds(Titel, "le 77") || holds(Interpret, "st 19") || titles.TextOf(nr, Album) == "album 5" ||
            holds(Pfad, "/33/4"))
            expected.push_back(nr);
    }
    EXPECT_EQ(found, expected);
}

} // namespace
} // namespace kalvo::test
