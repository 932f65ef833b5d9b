// Measuring a title, keeping what was measured, and what a deck shows of both.

#include "playback/CoverPicture.h"
#include "playback/TitlePictures.h"
#include "playback/WaveformCache.h"
#include "playback/WaveformScan.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "tags/clsAudioGenie.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using WaveState = WaveformScan::State;

WaveState Scan(WaveformScan& scan) {
    WaveState state = scan.Step();
    while (state == WaveState::Running)
        state = scan.Step();
    return state;
}

struct WaveformTest : ::testing::Test {
    QString Sound(const QString& name, double seconds) const {
        return test::MakeSound(folder.Path(), name, test::SoundSpec{seconds});
    }
    static Waveform Complete() {
        Waveform waveform;
        waveform.columns[5] = {200, 100};
        waveform.columns[1023] = {255, 1};
        waveform.known = Waveform::kColumns;
        return waveform;
    }
    QString Picture(const QString& name, const QSize& size, Qt::GlobalColor colour) const {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        EXPECT_TRUE(image.save(folder.Path(name)));
        return folder.Path(name);
    }
    QStringList Cached() const { return QDir(folder.Path(u"cache"_s)).entryList(QDir::Files); }

    test::TestFolder folder;
    WaveformCache cache{folder.Path(u"cache"_s)};
};

TEST_F(WaveformTest, EveryFormatIsMeasuredFromEndToEnd) {
    for (const QString& name : {u"a.wav"_s, u"b.mp3"_s, u"c.ogg"_s}) {
        SCOPED_TRACE(name.toStdString());
        WaveformScan scan(Sound(name, 35));
        EXPECT_EQ(scan.Step(), WaveState::Running);
        EXPECT_NEAR(scan.Result().known, Waveform::kColumns * 30 / 35, 8) << "half a minute at a time";
        EXPECT_EQ(Scan(scan), WaveState::Complete);
        EXPECT_EQ(scan.Result().known, Waveform::kColumns);
        for (const int column : {1, 500, Waveform::kColumns - 2}) {
            EXPECT_NEAR(scan.Result().columns[std::size_t(column)].peak, 128, 10);
            EXPECT_NEAR(scan.Result().columns[std::size_t(column)].rms, 71, 4) << "of 0.5 left and 0.25 right";
        }
    }
}

TEST_F(WaveformTest, WhatIsNoSoundOrIsCutOrCancelledIsBroken) {
    const auto scanned = [](const QString& path) {
        WaveformScan scan(path);
        return Scan(scan);
    };
    EXPECT_EQ(scanned(folder.Write(u"text.mp3"_s, "no music")), WaveState::Broken);
    EXPECT_EQ(scanned(folder.Path(u"missing.mp3"_s)), WaveState::Broken);
    EXPECT_EQ(scanned(Sound(u"tiny.wav"_s, 0.01)), WaveState::Complete) << "fewer frames than columns";
    WaveformScan left(Sound(u"long.ogg"_s, 32));
    EXPECT_EQ(left.Step(), WaveState::Running);
    left.Cancel();
    EXPECT_EQ(Scan(left), WaveState::Broken);
}

TEST_F(WaveformTest, TheCacheKnowsATitleUntilItChanges) {
    const QString title = folder.Write(u"title.mp3"_s, "one");
    EXPECT_FALSE(cache.Find(title));
    cache.Keep(title, Complete());
    EXPECT_EQ(cache.Find(title), Complete());
    folder.Write(u"title.mp3"_s, "other");
    EXPECT_FALSE(cache.Find(title)) << "its size has changed";
    cache.Keep(title, Complete());
    QFile file(title);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    EXPECT_FALSE(cache.Find(title)) << "its time has changed";
    file.remove();
    cache.Keep(title, Complete());
    EXPECT_FALSE(cache.Find(title)) << "it is gone";
}

TEST_F(WaveformTest, DamagedFilesOfTheCacheCountAsMissingAndAreReplaced) {
    const QString title = folder.Write(u"title.mp3"_s, "one");
    cache.Keep(title, Complete());
    const QString name = u"cache/"_s + Cached().constFirst();
    const QByteArray whole = folder.Read(name);
    QByteArray flipped = whole;
    flipped[1000] = 'x';
    for (const QByteArray& damaged : {whole.left(1000), whole.left(5), QByteArray(), whole + 'x', flipped}) {
        folder.Write(name, damaged);
        EXPECT_FALSE(cache.Find(title)) << damaged.size();
        cache.Keep(title, Complete());
        EXPECT_TRUE(cache.Find(title));
    }
}

TEST_F(WaveformTest, TheCacheDropsWhatWasUnusedForLongest) {
    QStringList titles;
    for (int i = 0; i < 9; ++i) {
        titles << folder.Write(u"%1.mp3"_s.arg(i), "x");
        cache.Keep(titles.last(), Waveform());
        QFile file(folder.Path(u"cache/"_s + QDir(folder.Path(u"cache"_s)).entryList(QDir::Files, QDir::Time).at(0)));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::currentDateTime().addDays(i - 20), QFileDevice::FileModificationTime);
    }
    EXPECT_TRUE(cache.Find(titles[0])) << "used now";
    cache.Trim(9);
    EXPECT_EQ(Cached().size(), 9);
    cache.Trim(8);
    EXPECT_EQ(Cached().size(), 6);
    EXPECT_TRUE(cache.Find(titles[0]));
    EXPECT_FALSE(cache.Find(titles[1]));
    EXPECT_TRUE(cache.Find(titles[8]));
}

TEST_F(WaveformTest, ADeckShowsItsTitleAndDropsTheOneBefore) {
    const QString first = Sound(u"a/first.mp3"_s, 3);
    const QString second = Sound(u"second.ogg"_s, 2);
    Picture(u"a/Cover.PNG"_s, {60, 30}, Qt::green);
    TitlePictures pictures(folder.Path(u"cache"_s));
    int covers = 0;
    QObject::connect(&pictures, &TitlePictures::CoverChanged, [&covers] { ++covers; });
    const auto complete = [&pictures] { return pictures.Wave() && pictures.Wave()->known == Waveform::kColumns; };
    pictures.Show(first);
    EXPECT_FALSE(pictures.Wave());
    ASSERT_TRUE(test::WaitUntil([&] { return complete() && covers == 1; }));
    EXPECT_EQ(pictures.Cover().size(), QSize(60, 30));
    pictures.Show(first);
    EXPECT_TRUE(pictures.Wave()) << "nothing begins anew";
    pictures.Show(second);
    EXPECT_FALSE(pictures.Wave());
    EXPECT_TRUE(pictures.Cover().isNull());
    ASSERT_TRUE(test::WaitUntil(complete));
    EXPECT_EQ(Cached().size(), 2);
    pictures.Show(QString());
    EXPECT_FALSE(pictures.Wave());
    EXPECT_EQ(covers, 2) << "second.ogg has none";
}

TEST_F(WaveformTest, TheFrontCoverOfTheTagsGoesBeforeOtherPicturesAndIsMadeSmall) {
    const QString title = Sound(u"title.mp3"_s, 1);
    Picture(u"folder.jpg"_s, {10, 10}, Qt::blue);
    EXPECT_EQ(ReadCover(title).size(), QSize(10, 10));
    clsAudioGenie tags;
    tags.AUDIOAnalyzeFileW(title);
    ASSERT_TRUE(tags.ID3V2AddPictureFileW(Picture(u"back.png"_s, {20, 20}, Qt::red), {}, 4));
    ASSERT_TRUE(tags.ID3V2SaveChangesToFileW());
    EXPECT_EQ(ReadCover(title).size(), QSize(20, 20));
    ASSERT_TRUE(tags.ID3V2AddPictureFileW(Picture(u"large.png"_s, {2000, 1000}, Qt::green), {}, 3));
    ASSERT_TRUE(tags.ID3V2SaveChangesToFileW());
    const QImage cover = ReadCover(title);
    EXPECT_EQ(cover.size(), QSize(512, 256));
    EXPECT_EQ(cover.pixelColor(100, 100), QColor(Qt::green));
    EXPECT_TRUE(ReadCover(folder.Path(u"elsewhere/missing.mp3"_s)).isNull());
}

} // namespace
} // namespace kalvo
