#include "tags/TagWriter.h"

#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "tags/SoundContent.h"
#include "tags/TagBytes.h"
#include "tags/TagForm.h"
#include "tags/clsAudioGenie.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace kalvo {
namespace {

using test::MakeSound;

QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct TagWriterTest : ::testing::Test {
    QString Sound(const QString& name) { return MakeSound(folder.Path(), name); }
    QStringList Names() const { return QDir(folder.Path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    test::TestFolder folder;
    clsAudioGenie tags;
};

TEST_F(TagWriterTest, EveryFieldComesBackAsItWasWritten) {
    const TagPicture picture{QByteArray("\xFF\xD8\xFF\xE0") + QByteArray(30000, 'p'), QStringLiteral("image/jpeg"),
                             QStringLiteral("Hülle"), 4};
    for (const QString& name : {QStringLiteral("a.mp3"), QStringLiteral("a.ogg")}) {
        const QString path = Sound(name);
        const QByteArray sound = SoundContent::Hash(path);
        TagEdit edit;
        for (std::size_t i = 0; i < kTagFields; ++i)
            edit.texts[i] = QStringLiteral("Färbung – %1").arg(i);
        edit.Text(TagField::V1Year) = edit.Text(TagField::Year) = QStringLiteral("2020");
        edit.Text(TagField::V1Track) = QStringLiteral("12");
        edit.Text(TagField::V1Genre) = edit.Text(TagField::Genre) = QStringLiteral("Jazz");
        edit.Text(TagField::Lyric) = QStringLiteral("Strophe\nnächste");
        edit.pictures = QList<TagPicture>{picture};
        const TagSaved saved = WriteTagEdit(tags, path, edit);
        ASSERT_EQ(saved.reason, QString()) << name.toStdString();
        const TagForm form = ReadTagForm(tags, path);
        for (std::size_t i = 0; i < kTagFields; ++i) {
            const bool none = name.endsWith(u"ogg") && IsId3v1(static_cast<TagField>(i));
            EXPECT_EQ(form.texts[i], none ? QString() : *edit.texts[i]) << name.toStdString() << " field " << i;
        }
        EXPECT_EQ(form.pictures, QList<TagPicture>{picture});
        EXPECT_EQ(SoundContent::Hash(path), sound) << "the sound is untouched";
    }
    EXPECT_EQ(Names(), (QStringList{QStringLiteral("a.mp3"), QStringLiteral("a.ogg")})) << "no copy is left";
    const QString plain = Sound(QStringLiteral("v1.mp3"));
    TagEdit v1;
    v1.Text(TagField::V1Title) = QStringLiteral("Nur dies");
    ASSERT_EQ(WriteTagEdit(tags, plain, v1).reason, QString());
    EXPECT_FALSE(tags.ID3V2GetTextFrameW(FrameId("TENC")).isEmpty()) << "written on every save";
}

TEST_F(TagWriterTest, WhatIsNotEditedStaysByteForByte) {
    const QByteArray comment = QByteArray("\0deu\0Bleibt", 11);
    const QByteArray tag = test::Id3v2(3, {{"TIT2", test::Latin1("Alt")},
                                           {"COMM", comment},
                                           {"PRIV", QByteArray("owner\0\1\2\3", 9)},
                                           {"TXXX", QByteArray("\0MOOD\0froh", 10)}});
    const QString path = folder.Write(QStringLiteral("b.mp3"), tag + Content(Sound(QStringLiteral("s.mp3"))) +
                                                                   test::Id3v1("Alt eins", "Wer", 17));
    TagEdit edit;
    edit.Text(TagField::Title) = QStringLiteral("Neu");
    ASSERT_EQ(WriteTagEdit(tags, path, edit).reason, QString());
    const QByteArray content = Content(path);
    EXPECT_TRUE(content.contains(comment));
    EXPECT_TRUE(content.contains(QByteArray("owner\0\1\2\3", 9)));
    EXPECT_TRUE(content.endsWith(test::Id3v1("Alt eins", "Wer", 17)));
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetVersionW(), QStringLiteral("2.3"));
    EXPECT_EQ(tags.ID3V2GetUserTextW(1), QStringLiteral("froh"));
    edit = {};
    edit.Text(TagField::V1Artist) = QStringLiteral("Anders");
    ASSERT_EQ(WriteTagEdit(tags, path, edit).reason, QString());
    EXPECT_EQ(Content(path).chopped(128), content.chopped(128)) << "only the last 128 bytes differ";
    EXPECT_TRUE(Content(path).endsWith(test::Id3v1("Alt eins", "Anders", 17)));
}

TEST_F(TagWriterTest, ARatingReplacesTheOldOneAndAnEmptyTextRemoves) {
    const QByteArray rating = QByteArray("\0eng", 4) + QByteArray("MusicMatch_Preference\0alt", 25);
    const QString path = folder.Write(
        QStringLiteral("c.mp3"),
        test::Id3v2(3, {{"COMM", rating}, {"COMM", QByteArray("\0eng\0Text", 9)}, {"TBPM", test::Latin1("99")}}) +
            Content(Sound(QStringLiteral("s.mp3"))));
    TagEdit edit;
    edit.Text(TagField::Rating) = QStringLiteral("neu");
    edit.Text(TagField::Bpm) = QString();
    ASSERT_EQ(WriteTagEdit(tags, path, edit).reason, QString());
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetFrameCountW(FrameId("COMM")), 2);
    EXPECT_EQ(tags.ID3V2GetFrameCountW(FrameId("TBPM")), 0);
    const TagForm form = ReadTagForm(tags, path);
    EXPECT_EQ(form.Text(TagField::Rating), QStringLiteral("neu"));
    EXPECT_EQ(form.Text(TagField::Comment), QStringLiteral("Text"));
}

TEST_F(TagWriterTest, WhatCannotBeSavedIsToldAndLeftAlone) {
    const QString path = Sound(QStringLiteral("d.mp3"));
    const QByteArray content = Content(path);
    TagEdit edit;
    edit.Text(TagField::Title) = QStringLiteral("Neu");
    QFile::setPermissions(path, QFileDevice::ReadOwner);
    EXPECT_EQ(WriteTagEdit(tags, path, edit).reason, QStringLiteral("Die Datei ist schreibgeschützt."));
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    tags.AUDIOAnalyzeFileW(path);
    tags.ID3V2SetTextFrameW(FrameId("TIT2"), QStringLiteral("Neu"));
    const QString elsewhere = folder.Path(QStringLiteral("weg.mp3"));
    ASSERT_TRUE(QFile::rename(path, elsewhere));
    EXPECT_FALSE(tags.ID3V2SaveChangesToFileW());
    EXPECT_EQ(tags.AUDIOGetLastErrorTextW(), QStringLiteral("Die Datei ist nicht mehr vorhanden."));
    EXPECT_EQ(Content(elsewhere), content);
    const QString text = folder.Write(QStringLiteral("t.mp3"), "kein Ton");
    EXPECT_FALSE(WriteTagEdit(tags, text, edit).reason.isEmpty());
    EXPECT_EQ(Content(text), QByteArray("kein Ton"));
    EXPECT_FALSE(ReadTagForm(tags, folder.Path(QStringLiteral("x.wav"))).reason.isEmpty());
}

TEST_F(TagWriterTest, LinksAndPermissionsStayAndAnOpenFilePlaysOn) {
    const QString path = Sound(QStringLiteral("e.mp3"));
    const QString link = folder.Path(QStringLiteral("link.mp3"));
    ASSERT_TRUE(QFile::link(path, link));
    constexpr auto mode = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup;
    QFile::setPermissions(path, mode);
    QFile playing(path);
    ASSERT_TRUE(playing.open(QIODevice::ReadOnly));
    const QByteArray before = Content(path);
    TagEdit edit;
    edit.Text(TagField::Title) = QStringLiteral("Neu");
    ASSERT_EQ(WriteTagEdit(tags, link, edit).reason, QString());
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(QFileInfo(path).permissions() & mode, mode);
    EXPECT_FALSE(QFileInfo(path).permissions() & QFileDevice::ReadOther);
    EXPECT_EQ(playing.readAll(), before) << "who has it open reads the old file";
    EXPECT_EQ(ReadTagForm(tags, path).Text(TagField::Title), QStringLiteral("Neu"));
}

TEST_F(TagWriterTest, AKilledSaveLeavesTheOldOrTheNewFileWhole) {
    const QByteArray sound =
        Content(MakeSound(folder.Path(), QStringLiteral("s.mp3"), {.seconds = 5, .options = {QStringLiteral("-t")}}));
    const QString path = folder.Write(QStringLiteral("f.mp3"), sound.repeated(10'000'000 / sound.size() + 1));
    const QByteArray content = SoundContent::Hash(path);
    std::minstd_rand random(4711);
    for (int round = 0; round < 30; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            clsAudioGenie saver;
            for (int turn = 0;; ++turn) {
                TagEdit edit;
                edit.Text(TagField::Title) = QString(turn % 7 * 2000, u'x');
                WriteTagEdit(saver, path, edit);
            }
        }
        ASSERT_GT(child, 0);
        ::usleep(static_cast<useconds_t>(random() % 60'000));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        ASSERT_EQ(SoundContent::Hash(path), content) << "round " << round;
        ASSERT_EQ(tags.AUDIOAnalyzeFileW(path), AudioFormat::Mpeg);
    }
    TagEdit edit;
    edit.Text(TagField::Title) = QStringLiteral("Ende");
    ASSERT_EQ(WriteTagEdit(tags, path, edit).reason, QString());
    EXPECT_EQ(Names(), (QStringList{QStringLiteral("f.mp3"), QStringLiteral("s.mp3")})) << "leftovers are cleared";
}

} // namespace
} // namespace kalvo
