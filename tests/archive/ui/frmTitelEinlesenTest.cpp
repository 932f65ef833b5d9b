#include "archive/ui/frmTitelEinlesen.h"

#include "archive/ui/ArchiveWindowTest.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QProgressBar>

namespace kalvo::test {
namespace {

class frmTitelEinlesenTest : public ArchiveWindowTest {
protected:
    frmTitelEinlesenTest() {
        QObject::connect(&dialog_, &frmTitelEinlesen::Finished, &dialog_,
                         [this](const ImportReport& report) { reports_.append(report); });
        dialog_.show();
    }
    QWidget& Window() override { return dialog_; }

    QString MakeMusic() {
        const QString root = folder.Path(u"Musik"_s);
        MakeSound(root, u"Guns N' Roses/01 Eins.mp3"_s, {.title = u"Eins"_s});
        MakeSound(root, u"02 ZWEI.ogg"_s, {.title = u"Zwei"_s});
        MakeSound(root, u"ohne.mp3"_s);
        for (const QString& name : {u"SONG.MP3.bak"_s, u"song.wav"_s, u"zz kaputt.mp3"_s})
            folder.Write(u"Musik/"_s + name, "kein Ton");
        return root;
    }
    bool IsIdle() { return Find<QAbstractButton>("MyButton1").isEnabled(); }
    bool CanImport() { return Find<QAbstractButton>("Command1").isEnabled(); }
    void Scan() {
        Press("MyButton1");
        EXPECT_TRUE(WaitUntil([this] { return IsIdle(); }));
    }
    QStringList Files() {
        const QAbstractItemModel& model = *Find<QListView>("ListView1").model();
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names.append(model.index(row, 0).data().toString());
        return names;
    }
    void Import() {
        const qsizetype before = reports_.size();
        Press("Command1");
        EXPECT_FALSE(CanImport());
        EXPECT_TRUE(WaitUntil([&] { return reports_.size() > before; }));
        archive.Refresh();
    }

    QString root_ = MakeMusic();
    QList<ImportReport> reports_;
    frmTitelEinlesen dialog_{archive, root_};
};

TEST_F(frmTitelEinlesenTest, BothScansGiveTheSameMusicFilesOfTheStartFolder) {
    EXPECT_EQ(dialog_.Folder(), root_);
    EXPECT_FALSE(CanImport());
    Scan();
    const QStringList files = Files();
    EXPECT_EQ(files.size(), 4);
    EXPECT_TRUE(files.contains(u"02 ZWEI.ogg"_s) && files.contains(u"01 Eins.mp3"_s));
    EXPECT_EQ(Text("Label7"), u"4 kompatible Dateien gefunden"_s);
    EXPECT_EQ(Text("lblCount"), u"4"_s);
    Find<QAction>("UAlternativ").trigger();
    EXPECT_TRUE(WaitUntil([this] { return IsIdle(); }));
    EXPECT_EQ(Files(), files);
    EXPECT_EQ(Text("Label7"), u"4 kompatible Dateien gefunden"_s);
    EXPECT_EQ(Find<QListView>("List1").model()->rowCount(), 2);
    EXPECT_TRUE(CanImport());
}

TEST_F(frmTitelEinlesenTest, AnInvalidFolderIsRefused) {
    for (const QString& invalid : {u"Musik"_s, u"//server/musik"_s, u"\\\\server\\musik"_s, QString(),
                                   root_ + u"/fehlt"_s, root_ + u"/song.wav"_s}) {
        SCOPED_TRACE(invalid.toStdString());
        Find<QLineEdit>("Label5").setText(invalid);
        const Answers answers({u"OK"_s});
        Scan();
        EXPECT_TRUE(WaitUntil([&] { return answers.AllGiven(); }));
        EXPECT_EQ(answers.Said().value(0).section(u'|', 1), u"Kein gültiger Ordner!"_s);
        EXPECT_EQ(Files().size(), 0);
        EXPECT_FALSE(CanImport());
    }
}

TEST_F(frmTitelEinlesenTest, ImportsTheMarkedFilesOnce) {
    Scan();
    auto& list = Find<QListView>("ListView1");
    const auto row = static_cast<int>(Files().indexOf(u"02 ZWEI.ogg"_s));
    list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::Select);
    EXPECT_EQ(Text("Label1"), u"1 Titel"_s);
    Import();
    EXPECT_EQ(Text("Label3"), u"1 von 1 Songs hinzugefügt, 0 Titel waren bereits vorhanden"_s);
    EXPECT_EQ(archive.RowAt(0).Titel, u"Zwei"_s);

    Press("Command3");
    EXPECT_EQ(Text("Label1"), u"4 Titel"_s);
    Import();
    EXPECT_EQ(Text("Label3"), u"2 von 4 Songs hinzugefügt, 1 Titel waren bereits vorhanden"_s);
    auto& passedOver = Find<QListWidget>("lstAusgelassen");
    ASSERT_EQ(passedOver.count(), 1);
    EXPECT_TRUE(passedOver.item(0)->text().startsWith(u"zz kaputt.mp3: "_s));
    EXPECT_TRUE(archive.HoldsPath(root_ + u"/Guns N' Roses/01 Eins.mp3"_s));
    EXPECT_EQ(archive.RowCount(), 3);
    EXPECT_EQ(Find<QProgressBar>("ProgressBar1").value(), 0);
}

TEST_F(frmTitelEinlesenTest, ClosingEndsARunningImportAndKeepsWhatIsAdded) {
    Scan();
    Press("Command3");
    Press("Command1");
    Press("cmdAbbrechen");
    ASSERT_EQ(reports_.size(), 1);
    EXPECT_TRUE(dialog_.isVisible() && reports_.first().cancelled) << "the report can be read";
    reports_.clear();
    Press("Command1");
    dialog_.close();
    {
        frmTitelEinlesen gone(archive, root_);
        gone.findChild<QAction*>(u"UStandard"_s)->trigger(); // what its thread finds comes too late
    }
    QApplication::processEvents();
    ASSERT_EQ(reports_.size(), 1);
    EXPECT_TRUE(reports_.first().cancelled);
    EXPECT_FALSE(dialog_.isVisible());
    EXPECT_EQ(archive.Count(), reports_.first().added);
}

TEST_F(frmTitelEinlesenTest, AbbrechenEndsAScanAndTheDialogStays) {
    for (int i = 0; i < 50; ++i)
        folder.Write(u"Musik/Ordner %1/a.mp3"_s.arg(i), "x");
    Press("MyButton1");
    EXPECT_FALSE(IsIdle());
    Press("cmdAbbrechen");
    EXPECT_LT(Files().size(), 54);
    EXPECT_TRUE(dialog_.isVisible() && IsIdle());
    Scan();
    EXPECT_EQ(Files().size(), 54) << "a cancelled scan does not end the next one";
}

} // namespace
} // namespace kalvo::test
