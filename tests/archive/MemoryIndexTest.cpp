#include "archive/MemoryIndex.h"

#include "archive/ArchiveStatements.h"
#include "archive/TextFolding.h"

#include <gtest/gtest.h>

#include <random>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;
using Numbers = std::vector<qint64>;

RecordSource Source(const QString& statement) {
    return ParseRecordSource(statement).value();
}

TitleRecord Title(qint64 nr, const QString& artist, const QString& title, const QString& path = u"/m/a.mp3"_s) {
    TitleRecord record;
    record.Nr = nr;
    record.Interpret = artist;
    record.Titel = title;
    record.Pfad = path;
    return record;
}

/** What the index shall answer, found the plainest way over a list of records. */
class Oracle {
public:
    void Put(const TitleRecord& record) {
        Remove(record.Nr);
        records_.push_back(record);
    }

    Numbers Select(const RecordSource& source) const {
        std::vector<TitleRecord> found;
        for (const TitleRecord& record : records_)
            if (source.conditions.isEmpty() || Matches(record, source.conditions))
                found.push_back(record);
        QList<RecordOrder> order = source.order;
        order << RecordOrder{ArchiveField::Interpret} << RecordOrder{ArchiveField::Titel};
        for (auto key = order.crbegin(); key != order.crend(); ++key)
            std::stable_sort(found.begin(), found.end(), [&](const TitleRecord& left, const TitleRecord& right) {
                return key->descending ? Less(right, left, key->field) : Less(left, right, key->field);
            });
        Numbers numbers;
        for (const TitleRecord& record : found)
            numbers.push_back(record.Nr);
        return numbers;
    }

    std::vector<TitleRecord>& Records() { return records_; }

private:
    void Remove(qint64 nr) {
        std::erase_if(records_, [nr](const TitleRecord& record) { return record.Nr == nr; });
    }

    static bool Matches(const TitleRecord& record, const QList<RecordCondition>& conditions) {
        return std::any_of(conditions.begin(), conditions.end(), [&](const RecordCondition& condition) {
            return LikePattern(TextFolding::Folded(condition.text), condition.like)
                .Matches(TextFolding::Folded(FieldText(record, condition.field)));
        });
    }

    static bool Less(const TitleRecord& left, const TitleRecord& right, ArchiveField field) {
        if (field == ArchiveField::Nr)
            return left.Nr < right.Nr;
        return TextFolding::SortKey(TextFolding::Folded(FieldText(left, field))) <
               TextFolding::SortKey(TextFolding::Folded(FieldText(right, field)));
    }

    std::vector<TitleRecord> records_;
};

class RandomArchive {
public:
    explicit RandomArchive(unsigned seed) : random_(seed) {}

    std::size_t Below(std::size_t end) { return random_() % end; }

    QString Word() {
        static const QString words[] = {u"Männer"_s, u"MANN"_s, u"Ab"_s,       u"ab-"_s,   u"Straße"_s, u"O'Neil"_s,
                                        u"x"_s,      u""_s,     u"The Band"_s, u"Ωmega"_s, u"abc"_s,    u"STRASSE"_s};
        return words[Below(std::size(words))];
    }

    /** No two titles are alike: then the order is fixed wholly and both answers can be compared as they are. */
    TitleRecord Record(qint64 nr) {
        TitleRecord record;
        record.Nr = nr;
        for (const ArchiveField field : kTextFields)
            FieldPlace(record, field) = Word() + (Below(3) ? QString() : u' ' + Word());
        record.Titel += u' ' + QString::number(nr);
        record.Pfad = u"/m/"_s;
        for (auto depth = Below(3); depth > 0; --depth)
            record.Pfad += Word() + u'/';
        record.Pfad += Word() + QString::number(Below(40)) + u".mp3"_s;
        return record;
    }

    RecordSource Query() {
        RecordSource source;
        const auto field = [this] { return static_cast<ArchiveField>(Below(kFieldCount)); };
        for (auto count = Below(4); count > 0; --count) {
            const QString word = Below(4) ? Word() : u"/"_s + Word() + u"1"_s;
            const QString texts[] = {word, u"*"_s + word + u"*"_s, word.left(2) + u"*"_s, u"*a*"_s + word};
            source.conditions.append({field(), Below(4) != 0, QString(texts[Below(4)]).replace(u'\'', u'*')});
        }
        for (auto count = Below(4); count > 0; --count)
            source.order.append({field(), Below(2) == 0});
        return source;
    }

private:
    std::mt19937 random_;
};

} // namespace

TEST(MemoryIndexTest, AnswersAsAPlainListWouldWhileItChanges) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        RandomArchive random(seed);
        MemoryIndex index;
        Oracle oracle;
        const std::size_t size = 1 + random.Below(400);
        for (std::size_t step = 0; step < 60; ++step) {
            for (auto writes = random.Below(size / 4 + 2); writes > 0; --writes) {
                const TitleRecord record = random.Record(1 + static_cast<qint64>(random.Below(size)));
                index.Put(record);
                oracle.Put(record);
            }
            if (random.Below(20) == 0)
                index.Pack();
            const RecordSource source = random.Query();
            ASSERT_EQ(index.Count(), static_cast<qint64>(oracle.Records().size()));
            ASSERT_EQ(index.Select(source), oracle.Select(source)) << "seed " << seed << ", step " << step;
        }
    }
}

TEST(MemoryIndexTest, FindsUmlautsHoweverTheyAreWritten) {
    MemoryIndex index;
    index.Put(Title(1, u"Grönemeyer"_s, u"MÄNNER"_s.normalized(QString::NormalizationForm_D)));
    index.Put(Title(2, u"GRÖNEMEYER"_s, u"Bochum"_s));
    const auto search = [&](const QString& text) {
        return index.Select(
            Source(ArchiveStatements::QuickSearch(text, {ArchiveField::Titel, ArchiveField::Interpret})));
    };
    EXPECT_EQ(search(u"männer"_s), Numbers{1});
    EXPECT_EQ(search(u"NNER"_s), Numbers{1});
    EXPECT_EQ(search(u"gröne"_s), (Numbers{2, 1}));
    EXPECT_EQ(search(QString()), (Numbers{2, 1}));
    EXPECT_EQ(search(u"manner"_s), Numbers{});
}

TEST(MemoryIndexTest, OnlyTheStarIsAWildcard) {
    MemoryIndex index;
    index.Put(Title(1, {}, u"100% [live] #1?_"_s));
    index.Put(Title(2, {}, u"100 live"_s));
    const auto like = [&](const QString& pattern) {
        return index.Select(Source(u"Select * From Daten Where Titel Like '%1'"_s.arg(pattern)));
    };
    EXPECT_EQ(like(u"*00% [l*"_s), Numbers{1});
    EXPECT_EQ(like(u"*[a-z]*"_s), Numbers{});
    EXPECT_EQ(like(u"*#1?_"_s), Numbers{1});
    EXPECT_EQ(like(u"100*live"_s), Numbers{2});
    EXPECT_EQ(like(u"%"_s), Numbers{});
}

TEST(MemoryIndexTest, SearchesPathsAcrossTheirFolders) {
    MemoryIndex index;
    index.Put(Title(1, u"a"_s, {}, u"/musik/Pop/Abba/Waterloo.mp3"_s));
    index.Put(Title(2, u"b"_s, {}, u"/musik/Pop/Waterloo.mp3"_s));
    const auto search = [&](const QString& text) {
        return index.Select(Source(ArchiveStatements::QuickSearch(text, {ArchiveField::Pfad})));
    };
    EXPECT_EQ(search(u"abba/wat"_s), Numbers{1});
    EXPECT_EQ(search(u"POP/"_s), (Numbers{1, 2}));
    EXPECT_EQ(search(u"pop/waterloo.mp3"_s), Numbers{2});
    EXPECT_EQ(search(u"pop'loo"_s), (Numbers{1, 2}));
    EXPECT_EQ(search(u"loo/"_s), Numbers{});
}

TEST(MemoryIndexTest, TellsWhichPathsItHolds) {
    MemoryIndex index;
    index.Put(Title(1, {}, {}, u"/m/Guns N' Roses/Don't Cry.mp3"_s));
    index.Put(Title(2, {}, {}, u"/m/Männer.MP3"_s));
    EXPECT_TRUE(index.HoldsPathLike(u"/M/guns n' roses/don't cry.mp3"_s));
    EXPECT_TRUE(index.HoldsPathLike(u"/m/Guns N' Roses/Don't *.mp3"_s));
    EXPECT_FALSE(index.HoldsPathLike(u"/m/Guns N Roses/Don't Cry.mp3"_s));
    EXPECT_TRUE(index.HoldsPathLike(u"/m/MÄNNER.mp3"_s));
    EXPECT_FALSE(index.HoldsPathLike(u"/m/Männer.mp"_s));
    EXPECT_EQ(index.FindPath(u"/m/männer.mp3"_s), 2);
    index.Put(Title(2, {}, {}, u"/m/Frauen.mp3"_s));
    EXPECT_EQ(index.FindPath(u"/m/männer.mp3"_s), std::nullopt);
    EXPECT_EQ(index.FindPath(u"/m/frauen.mp3"_s), 2);
}

TEST(MemoryIndexTest, PathsSortAsWholeTexts) {
    RandomArchive random(99);
    MemoryIndex index;
    Oracle oracle;
    for (const QString& path : {u"/m/b.mp3"_s, u"/m/b/x.mp3"_s, u"/m/c.mp3"_s, u"/m/b c/y.mp3"_s, u"/m/ä/z.mp3"_s,
                                u"/m/a/b/c/d.mp3"_s, u"/m/a/b-.mp3"_s, u"/m/a.mp3"_s, u"/m/b/"_s, u"none"_s}) {
        const auto nr = static_cast<qint64>(oracle.Records().size() + 1);
        index.Put(Title(nr, {}, QString::number(nr), path));
        oracle.Put(Title(nr, {}, QString::number(nr), path));
    }
    index.Pack();
    const RecordSource source = Source(u"Select * From Daten Order By Pfad"_s);
    EXPECT_EQ(index.Select(source), oracle.Select(source));
}

} // namespace kalvo::test
