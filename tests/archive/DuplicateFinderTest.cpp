#include "archive/DuplicateFinder.h"

#include "archive/TestClock.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;
using Outcome = DuplicateReport::Outcome;

class DuplicateFinderTest : public ::testing::Test {
protected:
    DuplicateFinderTest() {
        EXPECT_TRUE(data.CreateAll());
        EXPECT_TRUE(archive.Open(data));
        EXPECT_TRUE(archive.WaitForIndex());
        QObject::connect(&finder, &DuplicateFinder::Finished,
                         [this](const DuplicateReport& report) { reports.push_back(report); });
        QObject::connect(&finder, &DuplicateFinder::Progress,
                         [this](const QString& text, int) { texts.push_back(text); });
    }

    void Add(const QString& name, const QString& title, bool exists = true) {
        TitleRecord record;
        record.Titel = title;
        record.Pfad = exists ? folder.Write(name, "x") : folder.Path(name);
        ASSERT_TRUE(archive.AddTitle(record));
    }

    DuplicateReport Find(DuplicateMode mode) {
        reports.clear();
        finder.Start(mode);
        EXPECT_TRUE(WaitUntil([this] { return !reports.empty(); }));
        return reports.empty() ? DuplicateReport() : reports.front();
    }

    static QStringList Titles(const QList<TitleRecord>& group) {
        QStringList titles;
        for (const TitleRecord& title : group)
            titles << title.Titel;
        return titles;
    }

    TestFolder folder;
    DataFolder data{folder.Path(u"Kalvo"_s)};
    TestClock clock;
    Archive archive{clock};
    DuplicateFinder finder{archive};
    std::vector<DuplicateReport> reports;
    QStringList texts;
};

} // namespace

TEST_F(DuplicateFinderTest, FindsTheSameFileNameInDifferentFolders) {
    Add(u"b/Don't.mp3"_s, u"zwei"_s);
    Add(u"a/don't.mp3"_s, u"eins"_s);
    Add(u"a/other.mp3"_s, u"drei"_s);
    Add(u"a/my other.mp3"_s, u"vier"_s);
    Add(u"a/alone.mp3"_s, u"fünf"_s);
    const DuplicateReport report = Find(DuplicateMode::FileNames);
    EXPECT_EQ(report.outcome, Outcome::Found);
    ASSERT_EQ(report.groups.size(), 2);
    EXPECT_EQ(Titles(report.groups.at(0)), (QStringList{u"vier"_s, u"drei"_s}));
    EXPECT_EQ(Titles(report.groups.at(1)), (QStringList{u"eins"_s, u"zwei"_s}));
    EXPECT_EQ(DuplicateTexts::Hint(DuplicateMode::FileNames, report),
              u"Es wurden 4 Doubletten im Dateinamen gefunden."_s);
    EXPECT_TRUE(texts.contains(u"Suche wird vorbereitet  0%"_s));
    EXPECT_TRUE(texts.contains(u"Suche läuft  100%"_s) || texts.filter(u"Suche läuft  "_s).size() > 0);
}

TEST_F(DuplicateFinderTest, FindsTheSameTitleWithoutCase) {
    Add(u"a/1.mp3"_s, u"Männer"_s);
    Add(u"a/2.mp3"_s, u"MÄNNER"_s);
    Add(u"a/3.mp3"_s, u"Männerchor"_s);
    const DuplicateReport report = Find(DuplicateMode::TagTitles);
    ASSERT_EQ(report.groups.size(), 1);
    EXPECT_EQ(Titles(report.groups.at(0)), (QStringList{u"Männer"_s, u"MÄNNER"_s}));
    EXPECT_TRUE(DuplicateTexts::Hint(DuplicateMode::TagTitles, report)
                    .startsWith(u"Es wurden 2 Doubletten im Titel des ID3Tag gefunden. Es ist möglich, das"_s));
}

TEST_F(DuplicateFinderTest, AMissingFileIsAllThatIsReported) {
    Add(u"a/x.mp3"_s, u"b"_s);
    Add(u"b/x.mp3"_s, u"c"_s);
    Add(u"c/x.mp3"_s, u"a"_s, false);
    DuplicateReport report = Find(DuplicateMode::FileNames);
    EXPECT_EQ(report.outcome, Outcome::StalePaths);
    EXPECT_EQ(Titles(report.stale), QStringList{u"a"_s});
    EXPECT_EQ(report.groups.size(), 0);
    ASSERT_TRUE(archive.DeleteTitles({report.stale.first().Nr}));
    report = Find(DuplicateMode::FileNames);
    EXPECT_EQ(report.outcome, Outcome::Found);
    EXPECT_EQ(report.Titles(), 2);
}

TEST_F(DuplicateFinderTest, AnEmptyArchiveCannotBeSearched) {
    EXPECT_EQ(Find(DuplicateMode::TagTitles).outcome, Outcome::NoTitles);
}

TEST_F(DuplicateFinderTest, CancelTellsAtOnceAndOnce) {
    for (int i = 0; i < 300; ++i)
        Add(u"a/%1.mp3"_s.arg(i), u"t"_s);
    finder.Start(DuplicateMode::TagTitles);
    finder.Cancel();
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].outcome, Outcome::Cancelled);
    EXPECT_FALSE(finder.IsRunning());
    finder.Cancel();
    EXPECT_EQ(Find(DuplicateMode::TagTitles).Titles(), 300);
    EXPECT_EQ(reports.size(), 1U);
}

TEST_F(DuplicateFinderTest, SizesAreKilobytesWithOneDecimal) {
    EXPECT_EQ(DuplicateTexts::SizeOf(folder.Write(u"f"_s, QByteArray(1587, 'x'))), u"1.5 KB"_s);
    EXPECT_EQ(DuplicateTexts::SizeOf(folder.Path(u"missing"_s)), u"0.0 KB"_s);
    EXPECT_EQ(DuplicateTexts::Size(5LL * 1024 * 1024), u"5120.0 KB"_s);
}

} // namespace kalvo::test
