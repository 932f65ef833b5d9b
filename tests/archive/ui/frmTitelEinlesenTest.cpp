#include "archive/ui/frmTitelEinlesen.h"

#include "archive/ui/ArchiveDesk.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QProgressBar>
#include <QTimer>

namespace kalvo {

namespace {

using test::ArchiveDesk;
using test::WaitUntil;

class frmTitelEinlesenTest : public ::testing::Test {
protected:
    void SetUp() override {
        root_ = desk_.folder.Path(QStringLiteral("Musik"));
        MakeTitle(QStringLiteral("Guns N' Roses/01 Eins.mp3"), 3.2, QStringLiteral("Eins"));
        MakeTitle(QStringLiteral("02 ZWEI.ogg"), 1, QStringLiteral("Zwei"));
        MakeTitle(QStringLiteral("ohne.mp3"), 1, QString());
        desk_.folder.Write(QStringLiteral("Musik/SONG.MP3.bak"), "x");
        desk_.folder.Write(QStringLiteral("Musik/song.wav"), "x");
        desk_.folder.Write(QStringLiteral("Musik/zz kaputt.mp3"), "kein Ton");
        QObject::connect(&dialog_, &frmTitelEinlesen::Finished, &dialog_,
                         [this](const ImportReport& report) { reports_.append(report); });
        Find<QLineEdit>("Label5").setText(root_);
        dialog_.show();
    }

    void MakeTitle(const QString& name, double seconds, const QString& title) {
        test::SoundSpec spec;
        spec.seconds = seconds;
        spec.title = title;
        test::MakeSound(root_, name, spec);
    }

    template<typename Widget>
    Widget& Find(const char* name) {
        auto* found = dialog_.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    QString Text(const char* label) { return Find<QLabel>(label).text(); }
    void Press(const char* button) { Find<QAbstractButton>(button).click(); }
    bool IsIdle() { return Find<QAbstractButton>("MyButton1").isEnabled(); }
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
        EXPECT_FALSE(Find<QAbstractButton>("Command1").isEnabled());
        EXPECT_TRUE(WaitUntil([&] { return reports_.size() > before; }));
        desk_.archive.Refresh();
    }

    ArchiveDesk desk_;
    QString root_;
    frmTitelEinlesen dialog_{desk_.archive, desk_.folder.Path()};
    QList<ImportReport> reports_;
};

TEST_F(frmTitelEinlesenTest, BothScansGiveTheSameMusicFiles) {
    EXPECT_FALSE(Find<QAbstractButton>("Command1").isEnabled());
    Scan();
    const QStringList files = Files();
    EXPECT_EQ(files.size(), 4);
    EXPECT_TRUE(files.contains(QStringLiteral("02 ZWEI.ogg")) && files.contains(QStringLiteral("01 Eins.mp3")));
    EXPECT_EQ(Text("Label7"), QStringLiteral("4 kompatible Dateien gefunden"));
    EXPECT_EQ(Text("lblCount"), QStringLiteral("4"));
    Find<QAction>("UAlternativ").trigger();
    EXPECT_TRUE(WaitUntil([this] { return IsIdle(); }));
    EXPECT_EQ(Files(), files);
    EXPECT_EQ(Text("Label7"), QStringLiteral("4 kompatible Dateien gefunden"));
    EXPECT_EQ(Find<QListView>("List1").model()->rowCount(), 2);
    EXPECT_TRUE(Find<QAbstractButton>("Command1").isEnabled());
}

TEST_F(frmTitelEinlesenTest, AnInvalidFolderIsRefused) {
    for (const QString& folder : {QStringLiteral("Musik"), QStringLiteral("//server/musik"),
                                  QStringLiteral("\\\\server\\musik"), QString(), root_ + QStringLiteral("/fehlt")}) {
        Find<QLineEdit>("Label5").setText(folder);
        QString said;
        QTimer look;
        look.callOnTimeout([&said] {
            QWidget* box = QApplication::activeModalWidget();
            if (box == nullptr)
                return;
            for (const QLabel* label : box->findChildren<QLabel*>())
                said += label->text();
            box->close();
        });
        look.start(5);
        Scan();
        EXPECT_TRUE(WaitUntil([&] { return !said.isEmpty(); }));
        EXPECT_EQ(said, QStringLiteral("Kein gültiger Ordner!")) << folder.toStdString();
        EXPECT_EQ(Files().size(), 0);
        EXPECT_FALSE(Find<QAbstractButton>("Command1").isEnabled());
    }
}

TEST_F(frmTitelEinlesenTest, ImportsTheMarkedFilesOnce) {
    Scan();
    Press("Command3");
    EXPECT_EQ(Text("Label1"), QStringLiteral("4 Titel"));
    Import();
    EXPECT_EQ(Text("Label3"), QStringLiteral("3 von 4 Songs hinzugefügt, 0 Titel waren bereits vorhanden"));
    EXPECT_EQ(Find<QListWidget>("lstAusgelassen").count(), 1);
    EXPECT_TRUE(Find<QListWidget>("lstAusgelassen").item(0)->text().startsWith(QStringLiteral("zz kaputt.mp3: ")));
    const auto eins = desk_.archive.FindByPath(root_ + QStringLiteral("/Guns N' Roses/01 Eins.mp3"));
    ASSERT_TRUE(eins);
    EXPECT_EQ(eins->Titel, QStringLiteral("Eins"));
    EXPECT_EQ(eins->Zeit, QStringLiteral("00:03"));
    const auto untagged = desk_.archive.FindByPath(root_ + QStringLiteral("/ohne.mp3"));
    ASSERT_TRUE(untagged);
    EXPECT_EQ(untagged->Interpret + untagged->Album, QString());

    Import();
    EXPECT_EQ(Text("Label3"), QStringLiteral("0 von 4 Songs hinzugefügt, 3 Titel waren bereits vorhanden"));
    EXPECT_EQ(desk_.archive.RowCount(), 3);
    EXPECT_EQ(Find<QProgressBar>("ProgressBar1").value(), 0);
}

TEST_F(frmTitelEinlesenTest, OnlyWhatIsMarkedIsImported) {
    Scan();
    auto& list = Find<QListView>("ListView1");
    const auto row = static_cast<int>(Files().indexOf(QStringLiteral("02 ZWEI.ogg")));
    list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::Select);
    EXPECT_EQ(Text("Label1"), QStringLiteral("1 Titel"));
    Import();
    EXPECT_EQ(Text("Label3"), QStringLiteral("1 von 1 Songs hinzugefügt, 0 Titel waren bereits vorhanden"));
    EXPECT_EQ(desk_.archive.RowAt(0).Titel, QStringLiteral("Zwei"));
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
        frmTitelEinlesen gone(desk_.archive, root_);
        gone.findChild<QAction*>(QStringLiteral("UStandard"))->trigger(); // what its thread finds comes too late
    }
    QApplication::processEvents();
    ASSERT_EQ(reports_.size(), 1);
    EXPECT_TRUE(reports_.first().cancelled);
    EXPECT_FALSE(dialog_.isVisible());
    EXPECT_EQ(desk_.archive.Count(), reports_.first().added);
}

TEST_F(frmTitelEinlesenTest, AbbrechenEndsAScanAndTheDialogStays) {
    for (int i = 0; i < 50; ++i)
        desk_.folder.Write(QStringLiteral("Musik/Ordner %1/a.mp3").arg(i), "x");
    Press("MyButton1");
    EXPECT_FALSE(IsIdle());
    Press("cmdAbbrechen");
    EXPECT_LT(Files().size(), 54);
    EXPECT_TRUE(dialog_.isVisible() && IsIdle());
    Scan();
    EXPECT_EQ(Files().size(), 54) << "a cancelled scan does not end the next one";
}

TEST_F(frmTitelEinlesenTest, ShowsTheStartFolderAndGivesTheChosenOne) {
    const frmTitelEinlesen dialog(desk_.archive, root_);
    EXPECT_EQ(dialog.Folder(), root_);
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("Label5"))->text(), root_);
}

} // namespace

} // namespace kalvo
