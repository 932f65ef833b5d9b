#include "archive/MemoryIndex.h"

#include "archive/ArchiveStatements.h"

#include <gtest/gtest.h>

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

} // namespace

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

} // namespace kalvo::test
