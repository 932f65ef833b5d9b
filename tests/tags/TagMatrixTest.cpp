// Tags written by other programs and by us, read by us and by other programs.

#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "tags/TagBytes.h"
#include "tags/TitleFields.h"
#include "tags/clsAudioGenie.h"

#include <QFile>
#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using test::Id3v2;
using test::MakeSound;
using test::SoundSpec;

/** What a program prints. */
QString Output(const QString& command) {
    QByteArray output;
    FILE* pipe = ::popen(command.toUtf8().constData(), "r");
    std::array<char, 4096> piece{};
    while (pipe != nullptr && std::fgets(piece.data(), piece.size(), pipe) != nullptr)
        output += piece.data();
    EXPECT_EQ(pipe != nullptr ? ::pclose(pipe) : -1, 0) << command.toStdString();
    return QString::fromUtf8(output);
}

QByteArray Utf16(const QString& text, bool bigEndian, bool mark) {
    QByteArray bytes = mark ? QByteArray(bigEndian ? "\xFE\xFF" : "\xFF\xFE") : QByteArray();
    for (const QChar character : text) {
        const char high = static_cast<char>(character.unicode() >> 8);
        const char low = static_cast<char>(character.unicode() & 0xFF);
        bytes += bigEndian ? QByteArray{}.append(high).append(low) : QByteArray{}.append(low).append(high);
    }
    return bytes;
}

struct TagMatrixTest : ::testing::Test {
    QByteArray Sound() {
        if (sound_.isEmpty()) {
            SoundSpec spec;
            spec.options = QStringList{QStringLiteral("--noreplaygain")};
            QFile file(MakeSound(folder.Path(), QStringLiteral("plain.mp3"), spec));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            sound_ = file.readAll();
        }
        return sound_;
    }
    test::TestFolder folder;
    clsAudioGenie tags;

private:
    QByteArray sound_;
};

TEST_F(TagMatrixTest, EveryVersionAndEncodingReadsTheSame) {
    const QString title = QStringLiteral("Größer als – ja");
    const QByteArray utf8 = title.toUtf8();
    const struct {
        const char* name;
        int version;
        QByteArray content;
    } cases[] = {{"2.2 1252", 2,
                  QByteArray("\0Gr\xF6\xDF"
                             "er als \x96 ja",
                             16)},
                 {"2.2 UTF-16", 2, '\1' + Utf16(title, false, true)},
                 {"2.3 1252", 3,
                  QByteArray("\0Gr\xF6\xDF"
                             "er als \x96 ja",
                             16)},
                 {"2.3 UTF-16", 3, '\1' + Utf16(title, false, true)},
                 {"2.3 UTF-16 big", 3, '\1' + Utf16(title, true, true)},
                 {"2.3 UTF-8 told as Latin-1", 3, '\0' + utf8},
                 {"2.4 UTF-16BE", 4, '\2' + Utf16(title, true, false)},
                 {"2.4 UTF-8", 4, '\3' + utf8},
                 {"2.4 ends with zeros", 4, '\3' + utf8 + QByteArray(2, '\0')}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        const bool old = one.version == 2;
        const QByteArray tag = Id3v2(one.version, {{old ? "TT2" : "TIT2", one.content},
                                                   {old ? "TCO" : "TCON", test::Latin1("(17)")},
                                                   {old                ? "TYE"
                                                    : one.version == 3 ? "TYER"
                                                                       : "TDRC",
                                                    test::Latin1("2019")}});
        ASSERT_EQ(tags.AUDIOAnalyzeFileW(folder.Write(QStringLiteral("a.mp3"), tag + Sound())), AudioFormat::Mpeg);
        EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TIT2")), title);
        EXPECT_EQ(tags.ID3V2GetGenreW(), QStringLiteral("Rock"));
        EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TYER")), QStringLiteral("2019"));
        EXPECT_EQ(tags.ID3V2GetVersionW(), QStringLiteral("2.%1").arg(one.version));
    }
}

TEST_F(TagMatrixTest, WhatTheEncodersWriteIsRead) {
    const QStringList kinds{QStringLiteral("--id3v1-only"), QStringLiteral("--id3v2-only"),
                            QStringLiteral("--id3v2-utf16"), QStringLiteral("--add-id3v2")};
    SoundSpec spec;
    spec.title = QStringLiteral("Der Weg");
    spec.artist = QStringLiteral("Die Band");
    spec.genre = QStringLiteral("Blues");
    spec.year = QStringLiteral("1999");
    for (const QString& kind : kinds) {
        spec.options = QStringList{kind};
        const auto record = ReadTitleFields(tags, MakeSound(folder.Path(), QStringLiteral("e.mp3"), spec));
        ASSERT_TRUE(record.has_value()) << kind.toStdString();
        EXPECT_EQ(record->Titel, spec.title) << kind.toStdString();
        EXPECT_EQ(record->Interpret, spec.artist) << kind.toStdString();
        EXPECT_EQ(record->Stil, spec.genre) << kind.toStdString();
        EXPECT_EQ(record->Jahr, spec.year) << kind.toStdString();
    }
}

TEST_F(TagMatrixTest, OtherProgramsReadWhatIsWritten) {
    const QString mp3 = folder.Write(QStringLiteral("w.mp3"), Sound());
    const QString ogg = MakeSound(folder.Path(), QStringLiteral("w.ogg"));
    for (const QString& path : {mp3, ogg}) {
        tags.AUDIOAnalyzeFileW(path);
        if (path == mp3)
            tags.ID3V1SetTitleW(QStringLiteral("Kurz"));
        tags.ID3V2SetTextFrameW(FrameId("TIT2"), QStringLiteral("Langer Titel"));
        tags.ID3V2SetTextFrameW(FrameId("TYER"), QStringLiteral("2021"));
        tags.ID3V2SetGenreW(QStringLiteral("Rock"));
        ASSERT_TRUE(tags.SaveChangesToFile()) << tags.AUDIOGetLastErrorTextW().toStdString();
    }
    const QString listed = Output(QStringLiteral("id3v2 -l '%1'").arg(mp3));
    EXPECT_TRUE(listed.contains(QStringLiteral("Title  : Kurz"))) << listed.toStdString();
    EXPECT_TRUE(listed.contains(QStringLiteral("Langer Titel"))) << listed.toStdString();
    EXPECT_TRUE(listed.contains(QStringLiteral("TYER")) && listed.contains(QStringLiteral("2021")));
    const QString comments = Output(QStringLiteral("vorbiscomment -l '%1'").arg(ogg));
    EXPECT_TRUE(comments.contains(QStringLiteral("TITLE=Langer Titel"))) << comments.toStdString();
    EXPECT_TRUE(comments.contains(QStringLiteral("DATE=2021")) && comments.contains(QStringLiteral("GENRE=Rock")));
}

TEST_F(TagMatrixTest, AnotherProgramsChangesAreRead) {
    const QString mp3 = folder.Write(QStringLiteral("x.mp3"), Sound());
    Output(QStringLiteral("id3v2 -t 'Neu' -a 'Wer' -g 8 -y 2003 --TBPM 124 '%1'").arg(mp3));
    const auto record = ReadTitleFields(tags, mp3);
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->Titel, QStringLiteral("Neu"));
    EXPECT_EQ(record->Stil, QStringLiteral("Jazz"));
    EXPECT_EQ(record->Jahr, QStringLiteral("2003"));
    EXPECT_EQ(record->Extra4, QStringLiteral("124"));
    const QString ogg = MakeSound(folder.Path(), QStringLiteral("x.ogg"));
    Output(QStringLiteral("vorbiscomment -a -t 'RATING=gut' -t 'title=Ogg' '%1'").arg(ogg));
    EXPECT_EQ(ReadTitleFields(tags, ogg)->Bewertung, QStringLiteral("gut"));
    EXPECT_EQ(ReadTitleFields(tags, ogg)->Titel, QStringLiteral("Ogg"));
}

} // namespace
} // namespace kalvo
