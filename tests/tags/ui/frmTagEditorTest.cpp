#include "tags/ui/frmTagEditor.h"

#include "base/DataFolder.h"
#include "base/Settings.h"
#include "support/PartOf.h"
#include "support/WaitUntil.h"
#include "tags/TagTest.h"
#include "tags/ui/PicturePage.h"

#include <QGroupBox>
#include <QImage>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

struct frmTagEditorTest : TagTest {
    frmTagEditorTest() {
        QObject::connect(&editor, &frmTagEditor::FileSaved, &editor,
                         [this](const TagSaved& one) { saved += one.path; });
    }
    QString Titled(const QString& name, const QString& title = u"Titel"_s) const {
        return Sound(name, {.title = title, .artist = u"Wer"_s});
    }
    QString Line(const char* name) { return Part<QLineEdit>(editor, name)->text(); }
    void Press(const char* name) { Part<QPushButton>(editor, name)->click(); }
    void Open(const QStringList& paths) {
        editor.Edit(paths);
        ASSERT_TRUE(WaitUntil([&] { return Part<QGroupBox>(editor, "grpID3v2")->isEnabled(); }));
    }
    /** As the user types: replaced as a whole. */
    void Type(const char* name, const QString& text) {
        auto* line = Part<QLineEdit>(editor, name);
        line->selectAll();
        line->insert(text);
        Q_EMIT line->textEdited(text);
    }
    void SaveAll(qsizetype files) {
        Press("cmdSpeichern");
        ASSERT_TRUE(WaitUntil([&] {
            return saved.size() == files && Part<QGroupBox>(editor, "grpID3v2")->isEnabled() &&
                   !Part<QPushButton>(editor, "cmdSpeichern")->isEnabled();
        }));
    }

    Settings settings{folder.Path(u"kalvo.ini"_s)};
    DataFolder data{folder.Path(u"Kalvo"_s)};
    frmTagEditor editor{{settings, data}};
    QStringList saved;
};

TEST_F(frmTagEditorTest, ShowsBothTagsAndWritesWhatWasTyped) {
    const QString path = Titled(u"a.mp3"_s);
    Open({path});
    EXPECT_EQ(Line("txtTitelV1"), u"Titel"_s);
    EXPECT_EQ(Line("txtInterpretV2"), u"Wer"_s);
    EXPECT_FALSE(Part<QPushButton>(editor, "cmdSpeichern")->isEnabled()) << "nothing was edited";
    const QString longTitle = u"Ein Titel mit weit mehr als dreißig Zeichen"_s;
    Type("txtTitelV2", longTitle);
    Press("cmdNachV1"); // takes over what fits
    Part<QPlainTextEdit>(editor, "txtLyrics")->setPlainText(u"Strophe"_s);
    SaveAll(1);
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(Text("TIT2"), longTitle);
    EXPECT_EQ(tags.ID3V1GetTitleW(), longTitle.left(30));
    EXPECT_EQ(tags.ID3V2GetLyricW(1), u"Strophe"_s);
}

TEST_F(frmTagEditorTest, OfSeveralFilesOnlyTheEditedFieldIsWritten) {
    const QString mp3 = Titled(u"a.mp3"_s, u"Eins"_s);
    const QString ogg = Titled(u"b.ogg"_s, u"Zwei"_s);
    Open({mp3, ogg});
    EXPECT_EQ(Line("txtTitelV2"), QString());
    EXPECT_EQ(Part<QLineEdit>(editor, "txtTitelV2")->placeholderText(), u"(verschieden)"_s);
    EXPECT_EQ(Line("txtInterpretV2"), u"Wer"_s);
    Type("txtAlbumV2", u"Gemeinsam"_s);
    SaveAll(2);
    for (const QString& path : {mp3, ogg}) {
        tags.AUDIOAnalyzeFileW(path);
        EXPECT_EQ(Text("TALB"), u"Gemeinsam"_s);
        EXPECT_EQ(Text("TIT2"), path == mp3 ? u"Eins"_s : u"Zwei"_s);
    }
}

TEST_F(frmTagEditorTest, WhatIsBeingSavedIsWrittenBeforeTheProgramEnds) {
    QStringList paths;
    for (int file = 0; file < 5; ++file)
        paths += Titled(u"%1.mp3"_s.arg(file));
    Open(paths);
    Type("txtInterpretV2", u"Alle"_s);
    Press("cmdSpeichern");
    editor.FinishSaving();
    EXPECT_EQ(saved, paths);
    for (const QString& path : paths) {
        tags.AUDIOAnalyzeFileW(path);
        EXPECT_EQ(Text("TPE1"), u"Alle"_s);
    }
}

TEST_F(frmTagEditorTest, PicturesAreAddedDescribedAndRemoved) {
    const QString cover = folder.Path(u"cover.png"_s);
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(cover));
    const QString path = Titled(u"b.ogg"_s);
    Open({path});
    editor.findChild<PicturePage*>()->AddFile(cover);
    Type("txtBildBeschreibung", u"Hülle"_s);
    SaveAll(1);
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetPictureMimeW(1), u"image/png"_s);
    EXPECT_EQ(tags.ID3V2GetPictureDescriptionW(1), u"Hülle"_s);
    EXPECT_EQ(tags.ID3V2GetPictureTypeW(1), 3);
    EXPECT_EQ(Part<QTableWidget>(editor, "lstImages")->rowCount(), 1);
    Press("cmdBildWeg");
    SaveAll(2);
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetFrameCountW(FrameId("APIC")), 0);
}

} // namespace
} // namespace kalvo::test
