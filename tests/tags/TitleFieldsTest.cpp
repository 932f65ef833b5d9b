#include "tags/TitleFields.h"

#include "tags/TagTest.h"
#include "tags/TagText.h"

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

struct TitleFieldsTest : TagTest {
    TitleRecord Read(const QString& path) { return ReadTitleFields(tags, path).value_or(TitleRecord{}); }
};

TEST_F(TitleFieldsTest, OnlyId3v1GivesItsTextsInWindows1252) {
    const QString path = folder.Write(u"a.mp3"_s, BareSound() + Id3v1("M\xe4nner \x96 live", "Gr\xf6nemeyer", 17));
    const TitleRecord record = Read(path);
    EXPECT_EQ(record.Titel + record.Interpret, u"Männer – liveGrönemeyer"_s);
    EXPECT_EQ(record.Album + record.Stil + record.Jahr + record.Extra3 + record.Extra1, u"Album einsRock19877Hallo"_s);
    EXPECT_EQ(record.Zeit, u"00:01"_s);
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
        Read(folder.Write(u"b.mp3"_s, v2 + BareSound() + Id3v1("Nicht ganz so kurz", "Erster.", 8)));
    EXPECT_EQ(record.Titel, u"Nicht ganz so kurz"_s);
    EXPECT_EQ(record.Interpret, u"Zweiter"_s) << "trimmed, then equally long";
    EXPECT_EQ(record.Album, u"Album zwei, und zwar ganz ausgeschrieben"_s);
    EXPECT_EQ(record.Stil, u"Rock"_s) << "as long as Jazz";
    EXPECT_EQ(record.Bewertung, u"sehr gut"_s);
    EXPECT_EQ(record.Extra1, u"Tanzbar"_s);
    EXPECT_EQ(record.Extra3, u"3/12"_s);
    EXPECT_EQ(record.Extra4, u"128"_s);
}

TEST_F(TitleFieldsTest, WhatHoldsNoSoundGivesNoRecord) {
    for (const QByteArray& content : {QByteArray(), QByteArray("Das ist kein Lied."), QByteArray(5000, '\0')}) {
        EXPECT_FALSE(ReadTitleFields(tags, folder.Write(u"e.mp3"_s, content)).has_value());
        EXPECT_FALSE(ReadTitleFields(tags, folder.Write(u"e.ogg"_s, "OggS" + content)).has_value());
    }
    EXPECT_FALSE(ReadTitleFields(tags, folder.Path()).has_value());
    EXPECT_FALSE(ReadTitleFields(tags, folder.Path(u"keine.mp3"_s)).has_value());
    EXPECT_EQ(tags.AUDIOGetDurationW(), 0);
}

TEST(TagText, GenresAreNames) {
    const std::pair<QString, QString> cases[] = {
        {u"(17)"_s, u"Rock"_s},   {u"17"_s, u"Rock"_s}, {u"(17)Hardrock"_s, u"Hardrock"_s},
        {u"(255)"_s, u"(255)"_s}, {u"80s"_s, u"80s"_s}, {QString(), QString()}};
    for (const auto& [text, name] : cases)
        EXPECT_EQ(TagText::GenreName(text), name);
}

} // namespace
} // namespace kalvo::test
