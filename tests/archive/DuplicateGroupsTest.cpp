#include "archive/DuplicateGroups.h"

#include "archive/ArchiveStatements.h"
#include "archive/DuplicateReport.h"
#include "archive/MemoryIndex.h"
#include "archive/TextFolding.h"
#include "archive/ui/ArchiveDesk.h"
#include "base/FileName.h"

#include <map>
#include <random>
#include <set>

namespace kalvo::test {
namespace {
using Numbers = std::vector<qint64>;

/** A small archive of texts that contain each other, searched title by title and all at once. */
class SmallArchive {
public:
    SmallArchive(unsigned seed, const std::vector<QString>& pieces) : random_(seed), pieces_(pieces) {
        for (auto count = 1 + Below(14); count > 0; --count) {
            TitleRecord title;
            title.Nr = static_cast<qint64>(titles_.size() + 1);
            title.Titel = Text(3);
            title.Interpret = Text(1);
            title.Pfad = u"/"_s + (Below(3) ? u"m/"_s : Text(2) + u"/"_s) + Text(3);
            index_.Put(title);
            titles_.push_back(title);
        }
        candidates_ = Select(ArchiveStatements::DuplicateCandidates());
    }

    std::vector<Numbers> TitleByTitle(DuplicateMode mode) {
        std::vector<Numbers> groups;
        std::set<qint64> listed;
        for (const qint64 candidate : candidates_) {
            const TitleRecord& title = titles_[static_cast<std::size_t>(candidate - 1)];
            const Numbers found = Select(mode == DuplicateMode::FileNames
                                             ? ArchiveStatements::FileNameDuplicates(FileName::Last(title.Pfad))
                                             : ArchiveStatements::TitleDuplicates(title.Titel));
            Numbers group;
            if (found.size() > 1)
                std::copy_if(found.begin(), found.end(), std::back_inserter(group),
                             [&](qint64 nr) { return listed.insert(nr).second; });
            if (!group.empty())
                groups.push_back(group);
        }
        return groups;
    }

    std::vector<Numbers> AllAtOnce(DuplicateMode mode) {
        FoldedTexts texts;
        std::map<qint64, std::uint32_t> rows;
        for (const qint64 candidate : candidates_) {
            const TitleRecord& title = titles_[static_cast<std::size_t>(candidate - 1)];
            rows[candidate] =
                texts.Append(TextFolding::Folded(mode == DuplicateMode::FileNames ? title.Pfad : title.Titel));
        }
        std::vector<std::uint32_t> order;
        for (const qint64 nr : Select(ArchiveStatements::FileNameDuplicates({})))
            order.push_back(rows.at(nr));
        const auto goOn = [](int) { return true; };
        std::vector<Numbers> groups;
        for (const auto& group : mode == DuplicateMode::FileNames ? DuplicateGroups::ByFileName(texts, order, goOn)
                                                                  : DuplicateGroups::ByTitle(texts, goOn)) {
            groups.emplace_back();
            for (const std::uint32_t row : group)
                groups.back().push_back(candidates_[row]);
        }
        return groups;
    }

private:
    std::size_t Below(std::size_t end) { return random_() % end; }

    QString Text(std::size_t most) {
        QString text;
        for (auto count = Below(most + 1); count > 0; --count)
            text += pieces_[Below(pieces_.size())];
        return text;
    }

    Numbers Select(const QString& statement) { return index_.Select(ParseRecordSource(statement).value()); }

    std::mt19937 random_;
    const std::vector<QString>& pieces_;
    std::vector<TitleRecord> titles_;
    MemoryIndex index_;
    Numbers candidates_;
};

TEST(DuplicateGroupsTest, AllAtOnceGivesWhatOneSearchPerTitleGives) {
    const std::vector<QString> alphabets[] = {
        {u"a"_s, u"b"_s, u".mp3"_s},
        {u"a"_s, u"'"_s, u"*"_s, u".mp3"_s, u"A"_s},
        {u"ab"_s, u"b.ogg"_s, u"a"_s, u"/"_s, u"\\"_s, u".ogg"_s},
        {u"Don't Stop"_s, u"Dont Stop"_s, u"don"_s, u"t stop"_s, u".mp3"_s, u"01 "_s},
        {u"Sommernacht"_s, u"nacht'"_s, u"'acht.mp3"_s, u"tsommer"_s, u"*"_s, u"/"_s},
        {u"ä"_s, u"Ä"_s, u"a\u0308"_s, u"ß"_s, u"😀"_s, u"'"_s},
    };
    std::size_t groups = 0;
    for (const auto& pieces : alphabets)
        for (unsigned seed = 0; seed < 500; ++seed) {
            SmallArchive archive(seed, pieces);
            for (const DuplicateMode mode : {DuplicateMode::FileNames, DuplicateMode::TagTitles}) {
                const auto expected = archive.TitleByTitle(mode);
                ASSERT_EQ(archive.AllAtOnce(mode), expected) << seed << " of " << pieces[0].toStdString();
                groups += expected.size();
            }
        }
    EXPECT_GT(groups, 2000U);
}

TEST(DuplicateGroupsTest, ManyTitlesOfOneKindStayCheapAndEndWhenTold) {
    constexpr std::uint32_t rows = 60000;
    FoldedTexts paths;
    FoldedTexts titles;
    std::vector<std::uint32_t> order;
    for (std::uint32_t row = 0; row < rows; ++row) {
        paths.Append("/m/" + std::to_string(row / 12) + "/" + (row % 2 ? "track 1.mp3" : "don't.mp3"));
        titles.Append(row % 2 ? "" : "don't");
        order.push_back(row);
    }
    const auto goOn = [](int) { return true; };
    const auto byName = DuplicateGroups::ByFileName(paths, order, goOn);
    ASSERT_EQ(byName.size(), 2U);
    EXPECT_EQ(byName[0].size() + byName[1].size(), rows);
    EXPECT_EQ(DuplicateGroups::ByTitle(titles, goOn).size(), 2U);
    for (const int limit : {0, 30, 50, 90}) {
        int asked = 0;
        DuplicateGroups::ByFileName(paths, order, [&](int percent) {
            asked += percent >= limit ? 1 : 0;
            return percent < limit;
        });
        EXPECT_LE(asked, 4) << limit; // each of the steps that follow asks once more at most
        EXPECT_GE(asked, 1) << limit;
    }
}

} // namespace
} // namespace kalvo::test
