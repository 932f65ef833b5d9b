#include "live/JingleFile.h"
#include "live/SampleFile.h"
#include "live/WallClock.h"
#include "support/TestFolder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

QByteArray Padded(const QString& text, int width) {
    return text.toLatin1().leftJustified(width, ' ');
}

/** The bytes of a schedule record as other programs write them. */
QByteArray JingleBytes(const QByteArray& number, const QByteArray& active) {
    QByteArray bytes = number;
    for (const QString& mode : {u"Täglich"_s, u"Wöchentlich"_s, u"Deaktiviert"_s, QString(), QString()})
        bytes += Padded(mode, 12);
    bytes += Padded({}, 12) + Padded(u"Donnerstag"_s, 12) + Padded({}, 36);
    return bytes + Padded(u"07:3023:5900:00"_s, 25) + Padded(u"/m/Grüße.mp3"_s, 150) + active;
}

struct LiveFilesTest : ::testing::Test {
    TestFolder folder;
    WallClock clock;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    const QString jingleName = u"TerminPlayNeu.dll"_s;
    const QString sampleName = u"sample.dll"_s;
    JingleFile jingles{folder.Path(jingleName), settings, clock};
    SampleFile samples{folder.Path(sampleName), clock};
};

TEST_F(LiveFilesTest, AScheduleRecordIsReadAndWrittenByteForByte) {
    const QByteArray bytes = JingleBytes("\x05\x01", QByteArray("\xFF\xFF", 2));
    ASSERT_EQ(bytes.size(), 299);
    folder.Write(jingleName, bytes);
    const JingleRecords records = jingles.Read();
    EXPECT_EQ(records[0].number, 0x105) << "not used, and kept";
    EXPECT_EQ(records[0].slots[0], (JingleSlot{u"Täglich"_s, {}, u"07:30"_s}));
    EXPECT_EQ(records[0].slots[1], (JingleSlot{u"Wöchentlich"_s, u"Donnerstag"_s, u"23:59"_s}));
    EXPECT_EQ(records[0].path, u"/m/Grüße.mp3"_s);
    EXPECT_TRUE(records[0].active);
    EXPECT_EQ(records[0].TimesText(), u"täglich 07:30, Donnerstag 23:59"_s);
    ASSERT_TRUE(jingles.Write(records));
    const QByteArray written = folder.Read(jingleName);
    EXPECT_EQ(written.size(), 20 * 299);
    EXPECT_EQ(written.left(299), bytes);
    EXPECT_EQ(written.mid(299, 299), QByteArray("\x02\0", 2) + QByteArray(295, ' ') + QByteArray(2, '\0')) << "empty";
}

TEST_F(LiveFilesTest, TheScheduleFileLosesNothing) {
    EXPECT_EQ(jingles.Read()[19].number, 20);
    EXPECT_TRUE(QFile::exists(folder.Path(jingleName))) << "a missing one is created empty";
    EXPECT_EQ(folder.Read(jingleName).size(), 0);
    const QByteArray further = JingleBytes(QByteArray("\x15\0", 2), QByteArray(2, '\0'));
    folder.Write(jingleName, QByteArray(20 * 299, ' ') + further);
    JingleRecords records = jingles.Read();
    records[3].afterTitle = true;
    ASSERT_TRUE(jingles.Write(records));
    EXPECT_EQ(folder.Read(jingleName).mid(20 * 299), further) << "more records than twenty";
    EXPECT_TRUE(jingles.Read()[3].afterTitle) << "kept beside the records";
    EXPECT_FALSE(jingles.Read()[4].afterTitle);
}

TEST_F(LiveFilesTest, ASampleRecordIsReadAndWrittenByteForByte) {
    const QByteArray first = QByteArray("\x01\0", 2) + Padded(u"Grüße"_s, 20) + Padded(u"/m/a.wav"_s, 150);
    folder.Write(sampleName, first + QByteArray("\x02\0", 2) + QByteArray(100, ' '));
    SampleSlots slots = samples.Read();
    EXPECT_EQ(slots[0], (SampleSlot{u"Grüße"_s, u"/m/a.wav"_s}));
    EXPECT_EQ(slots[1], SampleSlot()) << "half a record is none";
    slots[9] = {u"Ein Titel, der viel zu lang ist"_s, u"/m/b.ogg"_s};
    ASSERT_TRUE(samples.Write(slots));
    const QByteArray written = folder.Read(sampleName);
    EXPECT_EQ(written.size(), 10 * 172);
    EXPECT_EQ(written.left(172), first);
    EXPECT_EQ(written.mid(9 * 172), QByteArray("\x0A\0", 2) + "Ein Titel, der viel " + Padded(u"/m/b.ogg"_s, 150));
    EXPECT_EQ(samples.Read()[9].title, u"Ein Titel, der viel"_s);
}

TEST_F(LiveFilesTest, OnlyPathsThatKeepTheirEndFit) {
    EXPECT_TRUE(JingleRecord::Fits(u'/' + QString(149, u'ü')));
    EXPECT_FALSE(JingleRecord::Fits(u'/' + QString(150, u'ü')));
    EXPECT_FALSE(SampleSlot::Fits(u'/' + QString(80, QChar(0x0416)))) << "two bytes each";
    EXPECT_TRUE(SampleSlot::Fits({}));
    for (const bool fits : {JingleRecord::Fits(u"/zwei\nZeilen"_s), SampleSlot::Fits(u"/zwei\nZeilen"_s)})
        EXPECT_FALSE(fits) << "the file would count as damaged at the next start";
}

TEST_F(LiveFilesTest, WhatIsNoRecordFileIsToldFromOneThatIs) {
    EXPECT_TRUE(SampleFile::IsDamaged(folder.Write(sampleName, QByteArray(172, '\x07')), clock));
    EXPECT_TRUE(JingleFile::IsDamaged(folder.Write(jingleName, QByteArray(299, '\x07')), clock));
    EXPECT_FALSE(SampleFile::IsDamaged(folder.Write(sampleName, QByteArray(1720, '\0')), clock)) << "zeros are blanks";
    EXPECT_FALSE(JingleFile::IsDamaged(folder.Write(jingleName, {}), clock));
}

} // namespace
} // namespace kalvo::test
