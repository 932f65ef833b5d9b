#include "tags/GuardedStream.h"
#include "tags/TagTest.h"

#include <QFile>
#include <random>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

struct HostileTagsTest : TagTest {
    QString Write(const QByteArray& content) const { return folder.Write(u"h.mp3"_s, content); }
    AudioFormat Analyze(const QByteArray& content) { return tags.AUDIOAnalyzeFileW(Write(content)); }

    QByteArray sound = BareSound();
};

TEST_F(HostileTagsTest, SizesThatLieLoseNoMoreThanTheirTag) {
    const QByteArray title = Id3v2(3, {{"TIT2", Latin1("Titel")}});
    QByteArray endless = title;
    endless.replace(14, 4, "\x0F\xFF\xFF\xFF"); // the frame claims 250 MB
    const QByteArray emptyFrame =
        Id3v2(3, {{"TIT2", Latin1("Titel")}, {"TALB", QByteArray()}, {"TPE1", Latin1("Wer")}});
    for (const QByteArray& tag : {endless, Id3v2Header(3, 250'000'000), Id3v2Header(4, 5000), title.chopped(3),
                                  Id3v2Header(3, 0), emptyFrame}) {
        Analyze(tag + sound);
        EXPECT_LE(Text("TIT2").size(), 2000);
        EXPECT_LE(tags.AUDIOGetDurationW(), 2);
    }
    EXPECT_EQ(Text("TIT2"), u"Titel"_s) << "behind an empty frame";
    EXPECT_NEAR(tags.AUDIOGetDurationW(), 1, 0.1);
}

TEST_F(HostileTagsTest, AHugeFrameIsNotTakenIntoMemory) {
    constexpr qsizetype kHuge = 250'000'000;
    const QString path = Write(Id3v2Header(3, kHuge + 10) + QByteArray("APIC\x0E\xE6\xB2\x80\0\0", 10));
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
    EXPECT_EQ(Text("TIT2"), QString());
    EXPECT_NE(Save(path, {{TagField::Artist, u"Wer"_s}}), QString()) << "what is not read is not thrown away";
    Analyze(Id3v2(3, {{"TIT2", qCompress(Latin1("Gepackt"), 9)}}, '\x80') + sound);
    EXPECT_EQ(Text("TIT2"), u"Gepackt"_s);
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
    Analyze(Id3v2Header(4, frames.size()) + frames + sound);
    EXPECT_NEAR(tags.AUDIOGetDurationW(), 1, 0.1);
}

TEST_F(HostileTagsTest, CutAndDamagedFilesAreReadOrRefused) {
    std::minstd_rand random(99);
    Sound(u"o.ogg"_s, {.title = u"Titel"_s});
    const QByteArray ogg = folder.Read(u"o.ogg"_s);
    const QByteArray mp3 = Id3v2(4, {{"TIT2", Latin1("Titel")}, {"COMM", QByteArray("\0deu\0Text", 9)}}) + sound;
    int readable = 0;
    for (int turn = 0; turn < 300; ++turn) {
        QByteArray content = turn % 2 == 0 ? mp3 : ogg;
        for (int change = 0; change < 1 + turn % 20; ++change)
            content[static_cast<qsizetype>(random()) % std::min<qsizetype>(content.size(), 400)] =
                static_cast<char>(random());
        if (turn % 3 == 0)
            content.truncate(static_cast<qsizetype>(random()) % content.size());
        readable += Analyze(content) != AudioFormat::Unknown ? 1 : 0;
        EXPECT_LT(tags.AUDIOGetDurationW(), 1e6);
    }
    EXPECT_GT(readable, 50) << "most files still play";
}

} // namespace
} // namespace kalvo::test
