#include "tags/HoverReader.h"

#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "tags/TagForm.h"
#include "tags/clsAudioGenie.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct HoverInfoTest : ::testing::Test {
    QString Sound(const QString& name) {
        const QString path = test::MakeSound(folder.Path(), name);
        TagEdit edit;
        edit.Text(TagField::Album) = QStringLiteral("Regen");
        edit.Text(TagField::Year) = QStringLiteral("2018");
        edit.Text(TagField::Genre) = QStringLiteral("Pop");
        edit.Text(TagField::Rating) = QStringLiteral("gut");
        edit.Text(TagField::V1Comment) = QStringLiteral("eins");
        edit.Text(TagField::Comment) = QStringLiteral("zwei");
        EXPECT_EQ(WriteTagEdit(tags, path, edit).reason, QString());
        return path;
    }
    test::TestFolder folder;
    clsAudioGenie tags;
};

TEST_F(HoverInfoTest, TellsTheFileInItsGivenLines) {
    const HoverInfo info = ReadHoverInfo(tags, Sound(QStringLiteral("a.mp3")));
    const QString text = QStringLiteral("Wer - Was\r\n\r\nAlbum:          Regen\r\nJahr:             2018\r\n"
                                        "Stil:               Pop\r\nBewertung:  gut\r\nKommentar:  eins");
    EXPECT_EQ(HoverText(QStringLiteral("Wer"), QStringLiteral("Was"), info), text);
    EXPECT_EQ(LyricsText(QStringLiteral("Wer"), QStringLiteral("Was"), info),
              text + QStringLiteral("\r\n\r\nkeine Lyrics vorhanden..."));
    EXPECT_EQ(ReadHoverInfo(tags, Sound(QStringLiteral("a.ogg"))).comment, QStringLiteral("zwei"));
    EXPECT_EQ(ReadHoverInfo(tags, folder.Path(QStringLiteral("weg.mp3"))).album, QString());
}

TEST_F(HoverInfoTest, IsReadBesideTheWindowAndKeptUntilTheFileChanges) {
    const QString path = Sound(QStringLiteral("b.mp3"));
    HoverReader reader;
    QStringList ready;
    QObject::connect(&reader, &HoverReader::Ready, &reader, [&ready](const QString& done) { ready += done; });
    EXPECT_EQ(reader.Find(path), nullptr);
    ASSERT_TRUE(test::WaitUntil([&] { return ready.contains(path); }));
    ASSERT_NE(reader.Find(path), nullptr);
    EXPECT_EQ(reader.Find(path)->album, QStringLiteral("Regen"));
    reader.Forget(path);
    EXPECT_EQ(reader.Find(path), nullptr);
    for (int other = 0; other < 50; ++other)
        reader.Find(folder.Path(QString::number(other)));
    const QString last = folder.Path(QStringLiteral("49"));
    ASSERT_TRUE(test::WaitUntil([&] { return ready.contains(last); })) << "the last wish is read";
    EXPECT_LT(ready.size(), 50) << "titles that the pointer has left are passed over";
}

} // namespace
} // namespace kalvo
