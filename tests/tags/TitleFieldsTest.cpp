#include "tags/TitleFields.h"

#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "tags/TagBytes.h"
#include "tags/TagText.h"
#include "tags/clsAudioGenie.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using test::Id3v1;
using test::Id3v2;
using test::Latin1;
using test::MakeSound;
using test::SoundSpec;

struct TitleFieldsTest : ::testing::Test {
    QByteArray Plain() {
        MakeSound(folder.Path(), QStringLiteral("plain.mp3"), {.options = {QStringLiteral("--noreplaygain")}});
        return folder.Read(QStringLiteral("plain.mp3"));
    }
    TitleRecord Read(const QString& path) { return ReadTitleFields(tags, path).value_or(TitleRecord{}); }

    test::TestFolder folder;
    clsAudioGenie tags;
};

TEST_F(TitleFieldsTest, OnlyId3v1GivesItsTextsInWindows1252) {
    const QString path =
        folder.Write(QStringLiteral("a.mp3"), Plain() + Id3v1("M\xe4nner \x96 live", "Gr\xf6nemeyer", 17));
    const TitleRecord record = Read(path);
    EXPECT_EQ((QStringList{record.Titel, record.Interpret, record.Album, record.Jahr, record.Stil, record.Extra3,
                           record.Extra1})
                  .join(u'|'),
              QStringLiteral("Männer – live|Grönemeyer|Album eins|1987|Rock|7|Hallo"));
    EXPECT_EQ(record.Zeit, QStringLiteral("00:01"));
    EXPECT_EQ(record.Pfad, path);
}

TEST_F(TitleFieldsTest, TheLongerTextWinsAndId3v2WhenEquallyLong) {
    const QByteArray v2 =
        Id3v2(3, {{"TIT2", Latin1("Kurz")},
                  {"TPE1", Latin1("Zweiter ")},
                  {"TALB", Latin1("Album zwei, und zwar ganz ausgeschrieben")},
                  {"TCON", Latin1("(17)")},
                  {"TRCK", Latin1("3/12")},
                  {"TBPM", Latin1("128")},
                  {"COMM", QByteArray("\0eng", 4) + QByteArray("MusicMatch_Preference\0sehr gut", 30)},
                  {"COMM", QByteArray("\0eng", 4) + QByteArray("musicmatch_preference\0schlecht", 30)},
                  {"COMM", QByteArray("\0deu\0Tanzbar", 12)}});
    const TitleRecord record =
        Read(folder.Write(QStringLiteral("b.mp3"), v2 + Plain() + Id3v1("Nicht ganz so kurz", "Erster.", 8)));
    EXPECT_EQ(record.Titel, QStringLiteral("Nicht ganz so kurz"));
    EXPECT_EQ(record.Interpret, QStringLiteral("Zweiter")) << "trimmed, then equally long";
    EXPECT_EQ(record.Album, QStringLiteral("Album zwei, und zwar ganz ausgeschrieben"));
    EXPECT_EQ(record.Stil, QStringLiteral("Rock")) << "as long as Jazz";
    EXPECT_EQ(record.Bewertung, QStringLiteral("sehr gut"));
    EXPECT_EQ(record.Extra1, QStringLiteral("Tanzbar"));
    EXPECT_EQ(record.Extra3, QStringLiteral("3/12"));
    EXPECT_EQ(record.Extra4, QStringLiteral("128"));
}

TEST_F(TitleFieldsTest, OggCommentsComeThroughTheSameFields) {
    SoundSpec spec;
    spec.seconds = 59.6;
    spec.frequency = 0;
    spec.title = QStringLiteral("Über den Dächern");
    spec.artist = QStringLiteral("Guns N' Roses");
    spec.album = QStringLiteral("Spätschicht");
    spec.genre = QStringLiteral("Schlager");
    spec.year = QStringLiteral("2019");
    spec.track = QStringLiteral("4");
    spec.comment = QStringLiteral("leise");
    for (const QString& name : {QStringLiteral("d.ogg"), QStringLiteral("d.opus"), QStringLiteral("d.mp3")}) {
        const TitleRecord record = Read(MakeSound(folder.Path(), name, spec));
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ((QStringList{record.Titel, record.Interpret, record.Album, record.Stil, record.Jahr, record.Extra3,
                               record.Extra1}),
                  (QStringList{spec.title, spec.artist, spec.album, spec.genre, spec.year, spec.track, spec.comment}));
        EXPECT_EQ(record.Zeit, QStringLiteral("01:00")) << "59.6 s are rounded";
    }
}

TEST_F(TitleFieldsTest, WhatHoldsNoSoundGivesNoRecord) {
    for (const QByteArray& content : {QByteArray(), QByteArray("Das ist kein Lied."), QByteArray(5000, '\0')}) {
        EXPECT_FALSE(ReadTitleFields(tags, folder.Write(QStringLiteral("e.mp3"), content)).has_value());
        EXPECT_FALSE(ReadTitleFields(tags, folder.Write(QStringLiteral("e.ogg"), "OggS" + content)).has_value());
    }
    EXPECT_FALSE(ReadTitleFields(tags, folder.Path()).has_value());
    EXPECT_FALSE(ReadTitleFields(tags, folder.Path(QStringLiteral("keine.mp3"))).has_value());
    EXPECT_EQ(tags.AUDIOGetDurationW(), 0);
}

TEST(TagText, GenresAreNames) {
    const QPair<QString, QString> cases[] = {{QStringLiteral("(17)"), QStringLiteral("Rock")},
                                             {QStringLiteral("17"), QStringLiteral("Rock")},
                                             {QStringLiteral("(17)Hardrock"), QStringLiteral("Hardrock")},
                                             {QStringLiteral("(255)"), QStringLiteral("(255)")},
                                             {QStringLiteral("80s"), QStringLiteral("80s")},
                                             {QString(), QString()}};
    for (const auto& [text, name] : cases) {
        EXPECT_EQ(TagText::GenreName(text), name);
    }
}

} // namespace
} // namespace kalvo
