#include "archive/ArchiveRescue.h"

#include "archive/ArchiveDatabase.h"
#include "archive/TestClock.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

class ArchiveRescueTest : public ::testing::Test {
protected:
    ArchiveRescueTest() {
        EXPECT_TRUE(database.Open(path, message));
        database.BeginBatch();
        for (int i = 1; i <= 3000; ++i) {
            TitleRecord record;
            record.Titel = QString(100, u'x') + QString::number(i);
            EXPECT_TRUE(database.AddTitle(record));
        }
        database.Close();
    }

    TestFolder folder;
    TestClock clock;
    QString path = folder.Path(u"default.mav"_s);
    QString kept = path + u".defekt-20260307-201530"_s;
    QString message;
    ArchiveDatabase database{clock};
};

} // namespace

TEST_F(ArchiveRescueTest, ANotedArchiveIsRenewedWithAllThatCanBeRead) {
    QByteArray content = folder.Read(u"default.mav"_s);
    const qsizetype pages = content.size() / 4096;
    ASSERT_GT(pages, 60);
    folder.Write(u"default.mav"_s, content.replace(pages / 2 * 4096, 4096, QByteArray(4096, '\xFF')));
    ArchiveRescue::Note(path);
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_GT(database.Count(), 2500);
    EXPECT_LT(database.Count(), 3000);
    EXPECT_EQ(database.Read({1}).value(0).Titel, QString(100, u'x') + u'1');
    EXPECT_EQ(database.Read({3000}).value(0).Titel, QString(100, u'x') + u"3000"_s);
    EXPECT_TRUE(message.contains(u"%1 Titel wurden übernommen"_s.arg(database.Count())));
    EXPECT_TRUE(message.endsWith(kept));
    EXPECT_TRUE(QFileInfo::exists(kept));
    EXPECT_FALSE(ArchiveRescue::IsNoted(path));
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_EQ(message, QString());
}

TEST_F(ArchiveRescueTest, ASoundArchiveKeepsEveryTitleAndItsNumbers) {
    ArchiveRescue::Note(path);
    ASSERT_TRUE(ArchiveRescue::Run(path, clock, message));
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_EQ(database.Count(), 3000);
    TitleRecord next;
    ASSERT_TRUE(database.AddTitle(next));
    EXPECT_EQ(next.Nr, 3001);
}

TEST_F(ArchiveRescueTest, ARescueBrokenOffBeforeItsLastStepIsFinished) {
    ArchiveRescue::Note(path);
    ASSERT_TRUE(QFile::copy(path, path + u".neu"_s));
    ASSERT_TRUE(QFile::rename(path, kept));
    ASSERT_TRUE(database.Open(path, message));
    EXPECT_EQ(database.Count(), 3000);
    EXPECT_FALSE(ArchiveRescue::IsNoted(path));
    EXPECT_FALSE(QFileInfo::exists(path + u".neu"_s));
}

TEST_F(ArchiveRescueTest, WhatCannotBeReadAtAllStaysWhereItIs) {
    folder.Write(u"default.mav"_s, "SQLite format 3 and nothing of the kind");
    ArchiveRescue::Note(path);
    EXPECT_FALSE(ArchiveRescue::Run(path, clock, message));
    EXPECT_TRUE(message.startsWith(u"Das Musikarchiv ist beschädigt und kann nicht erneuert werden: "_s));
    EXPECT_EQ(folder.Read(u"default.mav"_s), "SQLite format 3 and nothing of the kind");
    EXPECT_FALSE(QFileInfo::exists(path + u".neu"_s));
}

} // namespace kalvo::test
