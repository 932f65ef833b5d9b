#include "tags/GuardedStream.h"
#include "tags/TagTest.h"

#include <QFile>

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
    for (int depth = 0; depth < 60'000; ++depth)
        frames += "CHAP" + TagSize((60'000 - depth) * 28, 7) + QByteArray(2, '\0') + fields;
    Analyze(Id3v2Header(4, frames.size()) + frames + sound);
    EXPECT_NEAR(tags.AUDIOGetDurationW(), 1, 0.1);
}

} // namespace
} // namespace kalvo::test
