#include "tags/ui/frmTagEditor.h"

#include "base/DataFolder.h"
#include "base/Settings.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "tags/clsAudioGenie.h"
#include "tags/ui/PicturePage.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct frmTagEditorTest : ::testing::Test {
    frmTagEditorTest() {
        QObject::connect(&editor, &frmTagEditor::FileSaved, &editor,
                         [this](const TagSaved& one) { saved += one.path; });
    }
    QString Sound(const QString& name, const QString& title, const QString& artist) {
        test::SoundSpec spec;
        spec.title = title;
        spec.artist = artist;
        return test::MakeSound(folder.Path(), name, spec);
    }
    template<typename Widget>
    Widget* Part(const char* name) {
        auto* part = editor.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(part, nullptr) << name;
        return part;
    }
    void Open(const QStringList& paths) {
        editor.Edit(paths);
        ASSERT_TRUE(test::WaitUntil([&] { return Part<QGroupBox>("grpID3v2")->isEnabled(); }));
    }
    /** As the user types: replaced as a whole. */
    void Type(const char* name, const QString& text) {
        auto* line = Part<QLineEdit>(name);
        line->selectAll();
        line->insert(text);
        Q_EMIT line->textEdited(text);
    }
    void Save(qsizetype files) {
        Part<QPushButton>("cmdSpeichern")->click();
        ASSERT_TRUE(test::WaitUntil([&] {
            return saved.size() == files && Part<QGroupBox>("grpID3v2")->isEnabled() &&
                   !Part<QPushButton>("cmdSpeichern")->isEnabled();
        }));
    }

    test::TestFolder folder;
    Settings settings{folder.Path(QStringLiteral("kalvo.ini"))};
    DataFolder data{folder.Path(QStringLiteral("Kalvo"))};
    frmTagEditor editor{{settings, data}};
    QStringList saved;
    clsAudioGenie tags;
};

TEST_F(frmTagEditorTest, ShowsBothTagsAndWritesWhatWasTyped) {
    const QString path = Sound(QStringLiteral("a.mp3"), QStringLiteral("Titel"), QStringLiteral("Wer"));
    Open({path});
    EXPECT_EQ(Part<QLineEdit>("txtTitelV1")->text(), QStringLiteral("Titel"));
    EXPECT_EQ(Part<QLineEdit>("txtInterpretV2")->text(), QStringLiteral("Wer"));
    EXPECT_FALSE(Part<QPushButton>("cmdSpeichern")->isEnabled()) << "nothing was edited";
    const QString longTitle = QStringLiteral("Ein Titel mit weit mehr als dreißig Zeichen");
    Type("txtTitelV2", longTitle);
    Part<QPushButton>("cmdNachV1")->click(); // takes over what fits
    Part<QPlainTextEdit>("txtLyrics")->setPlainText(QStringLiteral("Strophe"));
    Save(1);
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TIT2")), longTitle);
    EXPECT_EQ(tags.ID3V1GetTitleW(), longTitle.left(30));
    EXPECT_EQ(tags.ID3V2GetLyricW(1), QStringLiteral("Strophe"));
}

TEST_F(frmTagEditorTest, OfSeveralFilesOnlyTheEditedFieldIsWritten) {
    const QString mp3 = Sound(QStringLiteral("a.mp3"), QStringLiteral("Eins"), QStringLiteral("Wer"));
    const QString ogg = Sound(QStringLiteral("b.ogg"), QStringLiteral("Zwei"), QStringLiteral("Wer"));
    Open({mp3, ogg});
    EXPECT_EQ(Part<QLineEdit>("txtTitelV2")->text(), QString());
    EXPECT_EQ(Part<QLineEdit>("txtTitelV2")->placeholderText(), QStringLiteral("(verschieden)"));
    EXPECT_EQ(Part<QLineEdit>("txtInterpretV2")->text(), QStringLiteral("Wer"));
    Type("txtAlbumV2", QStringLiteral("Gemeinsam"));
    Save(2);
    for (const QString& path : {mp3, ogg}) {
        tags.AUDIOAnalyzeFileW(path);
        EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TALB")), QStringLiteral("Gemeinsam"));
        EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TIT2")),
                  path == mp3 ? QStringLiteral("Eins") : QStringLiteral("Zwei"));
    }
}

TEST_F(frmTagEditorTest, WhatIsBeingSavedIsWrittenBeforeTheProgramEnds) {
    QStringList paths;
    for (int file = 0; file < 5; ++file)
        paths += Sound(QStringLiteral("%1.mp3").arg(file), QStringLiteral("Titel"), QStringLiteral("Wer"));
    Open(paths);
    Type("txtInterpretV2", QStringLiteral("Alle"));
    Part<QPushButton>("cmdSpeichern")->click();
    editor.FinishSaving();
    EXPECT_EQ(saved, paths);
    for (const QString& path : paths) {
        tags.AUDIOAnalyzeFileW(path);
        EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TPE1")), QStringLiteral("Alle"));
    }
}

TEST_F(frmTagEditorTest, PicturesAreAddedDescribedAndRemoved) {
    const QString cover = folder.Path(QStringLiteral("cover.png"));
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(cover));
    const QString path = Sound(QStringLiteral("b.ogg"), QStringLiteral("Titel"), QStringLiteral("Wer"));
    Open({path});
    editor.findChild<PicturePage*>()->AddFile(cover);
    Type("txtBildBeschreibung", QStringLiteral("Hülle"));
    Save(1);
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetPictureMimeW(1), QStringLiteral("image/png"));
    EXPECT_EQ(tags.ID3V2GetPictureDescriptionW(1), QStringLiteral("Hülle"));
    EXPECT_EQ(tags.ID3V2GetPictureTypeW(1), 3);
    EXPECT_EQ(Part<QTableWidget>("lstImages")->rowCount(), 1);
    Part<QPushButton>("cmdBildWeg")->click();
    Save(2);
    tags.AUDIOAnalyzeFileW(path);
    EXPECT_EQ(tags.ID3V2GetFrameCountW(FrameId("APIC")), 0);
}

TEST_F(frmTagEditorTest, KeepsItsSizeAndThePicturesFolder) {
    const TagEditorSettings kept(settings, data);
    EXPECT_EQ(kept.PictureFolder(), data.Path(QStringLiteral("\\Bilder")));
    const auto stored = [this](const char* section, const char* key) {
        return settings.GetSetting(QLatin1String(section), QLatin1String(key), QStringLiteral("keiner"));
    };
    for (const QString& pictures : {data.Path(QStringLiteral("\\Bilder")), folder.Path(QStringLiteral("Hüllen"))}) {
        frmTagEditor other({settings, data});
        other.findChild<QAbstractButton*>(QStringLiteral("cmdKlein"))->click();
        EXPECT_TRUE(other.findChild<QWidget*>(QStringLiteral("tabSeiten"))->isHidden());
        EXPECT_EQ(stored("Style", "Bearbeitung"), QStringLiteral("klein"));
        other.findChild<PicturePage*>()->SetFolder(pictures);
    }
    EXPECT_EQ(stored("TagBearbeitung", "BildOrdner"), folder.Path(QStringLiteral("Hüllen")));
    frmTagEditor again({settings, data});
    EXPECT_TRUE(again.findChild<QWidget*>(QStringLiteral("tabSeiten"))->isHidden());
    EXPECT_EQ(again.findChild<PicturePage*>()->Folder(), folder.Path(QStringLiteral("Hüllen")));
    again.findChild<QAbstractButton*>(QStringLiteral("cmdGross"))->click();
    EXPECT_FALSE(again.findChild<QWidget*>(QStringLiteral("tabSeiten"))->isHidden());
    EXPECT_EQ(stored("Style", "Bearbeitung"), QStringLiteral("groß"));
}

} // namespace
} // namespace kalvo
