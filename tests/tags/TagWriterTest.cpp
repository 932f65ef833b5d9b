#include "tags/TagWriter.h"

#include "archive/WriterProcess.h"
#include "tags/SoundContent.h"
#include "tags/TagTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <random>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

struct TagWriterTest : TagTest {
    QString Names() const { return QDir(folder.Path()).entryList(QDir::Files | QDir::Hidden, QDir::Name).join(u' '); }
};

TEST_F(TagWriterTest, EveryFieldComesBackAsItWasWritten) {
    const TagPicture picture{QByteArray("\xFF\xD8\xFF\xE0") + QByteArray(30000, 'p'), u"image/jpeg"_s, u"Hülle"_s, 4};
    for (const QString& name : {u"a.mp3"_s, u"a.ogg"_s}) {
        const QString path = Sound(name);
        const QByteArray sound = SoundContent::Hash(path);
        TagEdit edit;
        for (std::size_t i = 0; i < kTagFields; ++i)
            edit.texts[i] = u"Färbung – %1"_s.arg(i);
        edit.Text(TagField::V1Year) = edit.Text(TagField::Year) = u"2020"_s;
        edit.Text(TagField::V1Track) = u"12"_s;
        edit.Text(TagField::V1Genre) = edit.Text(TagField::Genre) = u"Jazz"_s;
        edit.Text(TagField::Lyric) = u"Strophe\nnächste"_s;
        edit.pictures = QList<TagPicture>{picture};
        ASSERT_EQ(WriteTagEdit(tags, path, edit).reason, QString()) << name.toStdString();
        const TagForm form = ReadTagForm(tags, path);
        for (std::size_t i = 0; i < kTagFields; ++i) {
            const bool none = name.endsWith(u"ogg") && IsId3v1(static_cast<TagField>(i));
            EXPECT_EQ(form.texts[i], none ? QString() : *edit.texts[i]) << name.toStdString() << " field " << i;
        }
        EXPECT_EQ(form.pictures, QList<TagPicture>{picture});
        EXPECT_EQ(SoundContent::Hash(path), sound) << "the sound is untouched";
    }
    EXPECT_EQ(Names(), u"a.mp3 a.ogg"_s) << "no copy is left";
    ASSERT_EQ(Save(Sound(u"v1.mp3"_s), {{TagField::V1Title, u"Nur dies"_s}}), QString());
    EXPECT_FALSE(Text("TENC").isEmpty()) << "written on every save";
}

TEST_F(TagWriterTest, WhatIsNotEditedStaysByteForByte) {
    const QByteArray comment = QByteArray("\0deu\0Bleibt", 11);
    const QByteArray owned = QByteArray("owner\0\1\2\3", 9);
    const QByteArray tag = Id3v2(
        3, {{"TIT2", Latin1("Alt")}, {"COMM", comment}, {"PRIV", owned}, {"TXXX", QByteArray("\0MOOD\0froh", 10)}});
    const QString path = folder.Write(u"b.mp3"_s, tag + BareSound() + Id3v1("Alt eins", "Wer", 17));
    ASSERT_EQ(Save(path, {{TagField::Title, u"Neu"_s}}), QString());
    const QByteArray content = folder.Read(u"b.mp3"_s);
    EXPECT_TRUE(content.contains(comment) && content.contains(owned));
    EXPECT_TRUE(content.endsWith(Id3v1("Alt eins", "Wer", 17)));
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetVersionW(), u"2.3"_s);
    EXPECT_EQ(tags.ID3V2GetUserTextW(1), u"froh"_s);
    ASSERT_EQ(Save(path, {{TagField::V1Artist, u"Anders"_s}}), QString());
    EXPECT_EQ(folder.Read(u"b.mp3"_s), content.chopped(128) + Id3v1("Alt eins", "Anders", 17)) << "nothing else";
}

TEST_F(TagWriterTest, ARatingReplacesTheOldOneAndAnEmptyTextRemoves) {
    const QByteArray rating = QByteArray("\0eng", 4) + QByteArray("MusicMatch_Preference\0alt", 25);
    const QByteArray tag = Id3v2(3, {{"COMM", rating}, {"COMM", QByteArray("\0eng\0Text", 9)}, {"TBPM", Latin1("99")}});
    const QString path = folder.Write(u"c.mp3"_s, tag + BareSound());
    ASSERT_EQ(Save(path, {{TagField::Rating, u"neu"_s}, {TagField::Bpm, QString()}}), QString());
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetFrameCountW(FrameId("COMM")), 2);
    EXPECT_EQ(tags.ID3V2GetFrameCountW(FrameId("TBPM")), 0);
    const TagForm form = ReadTagForm(tags, path);
    EXPECT_EQ(form.Text(TagField::Rating), u"neu"_s);
    EXPECT_EQ(form.Text(TagField::Comment), u"Text"_s);
}

TEST_F(TagWriterTest, WhatCannotBeSavedIsToldAndLeftAlone) {
    const QString path = Sound(u"d.mp3"_s);
    const QByteArray content = folder.Read(u"d.mp3"_s);
    QFile::setPermissions(path, QFileDevice::ReadOwner);
    EXPECT_EQ(Save(path, {{TagField::Title, u"Neu"_s}}), u"Die Datei ist schreibgeschützt."_s);
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    tags.AUDIOAnalyzeFileW(path);
    tags.ID3V2SetTextFrameW(FrameId("TIT2"), u"Neu"_s);
    ASSERT_TRUE(QFile::rename(path, folder.Path(u"weg.mp3"_s)));
    EXPECT_FALSE(tags.ID3V2SaveChangesToFileW());
    EXPECT_EQ(tags.AUDIOGetLastErrorTextW(), u"Die Datei ist nicht mehr vorhanden."_s);
    EXPECT_EQ(folder.Read(u"weg.mp3"_s), content);
    EXPECT_NE(Save(folder.Write(u"t.mp3"_s, "kein Ton"), {{TagField::Title, u"Neu"_s}}), QString());
    EXPECT_EQ(folder.Read(u"t.mp3"_s), "kein Ton");
    EXPECT_NE(ReadTagForm(tags, folder.Path(u"x.wav"_s)).reason, QString());
}

TEST_F(TagWriterTest, LinksAndPermissionsStayAndAnOpenFilePlaysOn) {
    const QString path = Sound(u"e.mp3"_s);
    const QString link = folder.Path(u"link.mp3"_s);
    ASSERT_TRUE(QFile::link(path, link));
    constexpr auto mode = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup;
    QFile::setPermissions(path, mode);
    QFile playing(path);
    ASSERT_TRUE(playing.open(QIODevice::ReadOnly));
    const QByteArray before = folder.Read(u"e.mp3"_s);
    ASSERT_EQ(Save(link, {{TagField::Title, u"Neu"_s}}), QString());
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(QFileInfo(path).permissions() & mode, mode);
    EXPECT_FALSE(QFileInfo(path).permissions() & QFileDevice::ReadOther);
    EXPECT_EQ(playing.readAll(), before) << "who has it open reads the old file";
    EXPECT_EQ(ReadTagForm(tags, path).Text(TagField::Title), u"Neu"_s);
}

TEST_F(TagWriterTest, AKilledSaveLeavesTheOldOrTheNewFileWhole) {
    Sound(u"s.mp3"_s, {.seconds = 5, .options = {u"-t"_s}});
    const QByteArray sound = folder.Read(u"s.mp3"_s);
    const QString path = folder.Write(u"f.mp3"_s, sound.repeated(10'000'000 / sound.size() + 1));
    const QByteArray content = SoundContent::Hash(path);
    std::minstd_rand random(4711);
    for (int round = 0; round < 30; ++round) {
        {
            const WriterProcess saver([&](const WriterProcess::Report&) {
                for (int turn = 0;; ++turn)
                    Save(path, {{TagField::Title, QString(turn % 7 * 2000, u'x')}});
            });
            QThread::usleep(random() % 60'000);
        }
        ASSERT_EQ(SoundContent::Hash(path), content) << "round " << round;
        ASSERT_EQ(tags.AUDIOAnalyzeFileW(path), AudioFormat::Mpeg);
    }
    ASSERT_EQ(Save(path, {{TagField::Title, u"Ende"_s}}), QString());
    EXPECT_EQ(Names(), u"f.mp3 s.mp3"_s) << "leftovers are cleared";
}

} // namespace
} // namespace kalvo::test
