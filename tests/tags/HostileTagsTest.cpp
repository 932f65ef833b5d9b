#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "tags/GuardedStream.h"
#include "tags/TagBytes.h"
#include "tags/TagForm.h"
#include "tags/clsAudioGenie.h"

#include <QFile>
#include <gtest/gtest.h>
#include <random>

namespace kalvo {
namespace {

using test::Id3v2;
using test::Latin1;

struct HostileTagsTest : ::testing::Test {
    HostileTagsTest() {
        test::MakeSound(folder.Path(), QStringLiteral("s.mp3"));
        sound = folder.Read(QStringLiteral("s.mp3"));
    }
    QString Write(const QByteArray& content) { return folder.Write(QStringLiteral("h.mp3"), content); }

    test::TestFolder folder;
    QByteArray sound;
    clsAudioGenie tags;
};

TEST_F(HostileTagsTest, SizesThatLieLoseNoMoreThanTheirTag) {
    const QByteArray title = Id3v2(3, {{"TIT2", Latin1("Titel")}});
    QByteArray endless = title;
    endless.replace(14, 4, "\x0F\xFF\xFF\xFF"); // the frame claims 250 MB
    QByteArray emptyFrame = Id3v2(3, {{"TIT2", Latin1("Titel")}, {"TALB", QByteArray()}, {"TPE1", Latin1("Wer")}});
    for (const QByteArray& tag : {endless, test::Id3v2Header(3, 250'000'000), test::Id3v2Header(4, 5000), emptyFrame,
                                  title.chopped(3), test::Id3v2Header(3, 0)}) {
        tags.AUDIOAnalyzeFileW(Write(tag + sound));
        EXPECT_LE(tags.ID3V2GetTextFrameW(FrameId("TIT2")).size(), 2000);
        EXPECT_LE(tags.AUDIOGetDurationW(), 2);
    }
    tags.AUDIOAnalyzeFileW(Write(emptyFrame + sound));
    EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TIT2")), QStringLiteral("Titel"));
    EXPECT_NEAR(tags.AUDIOGetDurationW(), 1, 0.1);
}

TEST_F(HostileTagsTest, AHugeFrameIsNotTakenIntoMemory) {
    constexpr qsizetype kHuge = 250'000'000;
    const QString path = Write(test::Id3v2Header(3, kHuge + 10) + QByteArray("APIC\x0E\xE6\xB2\x80\0\0", 10));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(kHuge + 20) && file.seek(kHuge + 20));
    ASSERT_EQ(file.write(sound), sound.size());
    file.close();
    GuardedStream stream(path);
    EXPECT_LE(stream.readBlock(kHuge).size(), GuardedStream::kBudget);
    EXPECT_TRUE(stream.readBlock(100).isEmpty());
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_LE(tags.ID3V2GetPictureSizeW(1), static_cast<int>(GuardedStream::kBudget));
}

TEST_F(HostileTagsTest, CompressedFramesDoNotUnfoldWithoutBounds) {
    const QByteArray bomb = qCompress(Latin1(QByteArray(60'000'000, 'x')), 9);
    const QString path = Write(Id3v2(3, {{"TIT2", bomb}}, '\x80') + sound);
    ASSERT_EQ(tags.AUDIOAnalyzeFileW(path), AudioFormat::Mpeg);
    EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TIT2")), QString());
    TagEdit edit;
    edit.Text(TagField::Artist) = QStringLiteral("Wer");
    EXPECT_FALSE(WriteTagEdit(tags, path, edit).reason.isEmpty()) << "what is not read is not thrown away";
    const QByteArray small = qCompress(Latin1("Gepackt"), 9);
    tags.AUDIOAnalyzeFileW(Write(Id3v2(3, {{"TIT2", small}}, '\x80') + sound));
    EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TIT2")), QStringLiteral("Gepackt"));
}

TEST_F(HostileTagsTest, ChaptersWithinChaptersDoNotEndTheStack) {
    const QByteArray fields = QByteArray("a\0", 2) + QByteArray(16, '\0');
    QByteArray frames;
    for (int depth = 0; depth < 60'000; ++depth) {
        QByteArray head("CHAP");
        const quint32 size = static_cast<quint32>((60'000 - depth) * 28);
        for (const int shift : {21, 14, 7, 0})
            head += static_cast<char>(size >> shift & 0x7F);
        frames += head + QByteArray(2, '\0') + fields;
    }
    tags.AUDIOAnalyzeFileW(Write(test::Id3v2Header(4, frames.size()) + frames + sound));
    EXPECT_NEAR(tags.AUDIOGetDurationW(), 1, 0.1);
}

TEST_F(HostileTagsTest, CutAndDamagedFilesAreReadOrRefused) {
    std::minstd_rand random(99);
    test::SoundSpec spec;
    spec.title = QStringLiteral("Titel");
    test::MakeSound(folder.Path(), QStringLiteral("o.ogg"), spec);
    const QByteArray ogg = folder.Read(QStringLiteral("o.ogg"));
    const QByteArray mp3 = Id3v2(4, {{"TIT2", Latin1("Titel")}, {"COMM", QByteArray("\0deu\0Text", 9)}}) + sound;
    int readable = 0;
    for (int turn = 0; turn < 300; ++turn) {
        QByteArray content = turn % 2 == 0 ? mp3 : ogg;
        for (int change = 0; change < 1 + turn % 20; ++change)
            content[static_cast<qsizetype>(random()) % std::min<qsizetype>(content.size(), 400)] =
                static_cast<char>(random());
        if (turn % 3 == 0)
            content.truncate(static_cast<qsizetype>(random()) % content.size());
        readable += tags.AUDIOAnalyzeFileW(Write(content)) != AudioFormat::Unknown ? 1 : 0;
        EXPECT_LT(tags.AUDIOGetDurationW(), 1e6);
    }
    EXPECT_GT(readable, 50) << "most files still play";
}

} // namespace
} // namespace kalvo
