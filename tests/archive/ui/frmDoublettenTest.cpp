#include "archive/ui/frmDoubletten.h"

#include "archive/ui/ArchiveDesk.h"
#include "archive/ui/WindowActs.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTableView>

namespace kalvo {
namespace {

using test::Answers;
using test::ArchiveDesk;
using test::WaitUntil;

const QString kIdle = QStringLiteral("      Suche starten");
const QString kSearching = QStringLiteral("     Suche abbrechen");

class frmDoublettenTest : public ::testing::Test {
protected:
    void SetUp() override {
        // The bin of this test is a folder of its own.
        desk_.folder.Write(QStringLiteral("share/leer"), {});
        qputenv("XDG_DATA_HOME", desk_.folder.Path(QStringLiteral("share")).toUtf8());
        dialog_.show();
        QObject::connect(&dialog_, &frmDoubletten::Deleted, &dialog_, [this] { ++deleted_; });
    }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }

    /** A title whose file holds so many bytes. */
    void Add(const QString& file, const QString& title, int bytes = 1024) {
        TitleRecord record;
        record.Interpret = QStringLiteral("Wer");
        record.Titel = title;
        record.Pfad = desk_.folder.Write(QStringLiteral("Musik/") + file, QByteArray(bytes, 'x'));
        EXPECT_TRUE(desk_.archive.AddTitle(record).done);
    }
    template<typename Widget>
    Widget& Find(const char* name) {
        auto* found = dialog_.findChild<Widget*>(QString::fromUtf8(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    QString Text(const char* label) { return Find<QLabel>(label).text(); }
    QString Caption() { return Find<QAbstractButton>("Command1").text(); }
    void Search(int mode) {
        Find<QComboBox>("Combo1").setCurrentIndex(mode);
        Find<QAbstractButton>("Command1").click();
        EXPECT_TRUE(WaitUntil([this] { return Caption() == kIdle; }));
    }
    /** One text per row, its cells joined. */
    QStringList Rows() {
        const QAbstractItemModel& model = *Find<QTableView>("List1").model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells.append(model.index(row, column).data().toString());
            cells[0] = QFileInfo(cells[0]).fileName();
            rows.append(cells.join(u'|'));
        }
        return rows;
    }
    void Do(const char* action, int row) {
        Find<QTableView>("List1").selectRow(row);
        Find<QAction>(action).trigger();
    }

    ArchiveDesk desk_;
    frmDoubletten dialog_{desk_.archive};
    int deleted_ = 0;
};

TEST_F(frmDoublettenTest, FileNamesAndTitlesAreFoundInGroups) {
    Add(QStringLiteral("a/Lied.mp3"), QStringLiteral("Eins"), 1536);
    Add(QStringLiteral("b/lied.mp3"), QStringLiteral("EINS"));
    Add(QStringLiteral("c/anders.mp3"), QStringLiteral("eins"));
    Add(QStringLiteral("c/allein.mp3"), QStringLiteral("Zwei"));
    EXPECT_EQ(Caption(), kIdle);
    EXPECT_EQ(Find<QComboBox>("Combo1").currentText(), QStringLiteral("Datei-Namen"));
    Search(0);
    EXPECT_EQ(Rows(), QStringList({QStringLiteral("Lied.mp3|Wer|Eins|1.5 KB"),
                                   QStringLiteral("lied.mp3|Wer|EINS|1.0 KB"), QStringLiteral("|||")}));
    const QAbstractItemModel& numbers = *Find<QAbstractItemView>("List2").model();
    ASSERT_EQ(numbers.rowCount(), 2);
    const QString second = Find<QTableView>("List1").model()->index(1, 0).data().toString();
    EXPECT_EQ(numbers.index(1, 0).data().toLongLong(), desk_.archive.FindByPath(second).value_or(TitleRecord()).Nr);
    EXPECT_EQ(Text("lblHinweis"), QStringLiteral("Es wurden 2 Doubletten im Dateinamen gefunden."));
    EXPECT_EQ(Text("Label2"), QStringLiteral("Suche abgeschlossen  100%"));
    Search(1);
    EXPECT_EQ(Rows().size(), 4);
    EXPECT_TRUE(Text("lblHinweis").startsWith(QStringLiteral("Es wurden 3 Doubletten im Titel des ID3Tag gefunden. ")));
}

TEST_F(frmDoublettenTest, AMissingFileStopsTheSearchAndCanBeDeleted) {
    Add(QStringLiteral("a/Lied.mp3"), QStringLiteral("Eins"));
    Add(QStringLiteral("b/Lied.mp3"), QStringLiteral("Eins"));
    desk_.Add(QStringLiteral("Fort"), QStringLiteral("Weg"));
    Answers answers({QStringLiteral("OK")});
    Search(0);
    ASSERT_TRUE(WaitUntil([&] { return answers.AllGiven(); }));
    EXPECT_TRUE(answers.Said().value(0).startsWith(QStringLiteral("Hinweis|Es wurde(n) ")));
    EXPECT_EQ(Rows(), QStringList(QStringLiteral("Fort - Weg.mp3|Fort|Weg|")));
    EXPECT_TRUE(Text("lblHinweis").startsWith(QStringLiteral("Löschen Sie bitte die oben aufgelisteten Titel")));
    Do("AusMAlöschen", 0);
    EXPECT_TRUE(Rows().isEmpty());
    EXPECT_EQ(desk_.archive.Count(), 2);
    EXPECT_EQ(deleted_, 1);
    Search(0);
    EXPECT_EQ(Rows().size(), 3);
}

TEST_F(frmDoublettenTest, TheBinTakesTheFileAndAnUndoBringsBothBack) {
    Add(QStringLiteral("a/Lied.mp3"), QStringLiteral("Eins"));
    Add(QStringLiteral("b/Lied.mp3"), QStringLiteral("Eins"));
    Search(1);
    const QString path = Find<QTableView>("List1").model()->index(1, 0).data().toString();
    Do("InPapierkorb", 1);
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_EQ(desk_.archive.Count(), 1);
    EXPECT_EQ(Rows().size(), 2) << "one title and the empty row";
    ASSERT_TRUE(desk_.archive.Undo());
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_EQ(desk_.archive.Count(), 2);
}

TEST_F(frmDoublettenTest, ATitleThatIsDeletedOrChangedElsewhereShowsSo) {
    Add(QStringLiteral("a/Lied.mp3"), QStringLiteral("Eins"));
    Add(QStringLiteral("b/Lied.mp3"), QStringLiteral("Eins"));
    Search(0);
    TitleRecord changed = *desk_.archive.FindByPath(desk_.folder.Path(QStringLiteral("Musik/a/Lied.mp3")));
    changed.Interpret = QStringLiteral("Du");
    const qint64 other = desk_.archive.FindByPath(desk_.folder.Path(QStringLiteral("Musik/b/Lied.mp3")))->Nr;
    ASSERT_TRUE(desk_.archive.UpdateRecord(changed));
    ASSERT_TRUE(desk_.archive.DeleteTitles({other}));
    desk_.archive.Refresh();
    EXPECT_EQ(Rows(), QStringList({QStringLiteral("Lied.mp3|Du|Eins|1.0 KB"),
                                   QStringLiteral("(nicht mehr im Musikarchiv)|||"), QStringLiteral("|||")}));
    Do("InPapierkorb", 1);
    EXPECT_EQ(Rows().size(), 2) << "the row of the title that is gone goes";
    EXPECT_TRUE(QFileInfo::exists(desk_.folder.Path(QStringLiteral("Musik/b/Lied.mp3"))));
    EXPECT_EQ(desk_.archive.Count(), 1);
}

TEST_F(frmDoublettenTest, AFileThatCannotBeMovedKeepsItsTitleAndOneThatIsGoneNeedsNoBin) {
    Add(QStringLiteral("a/Lied.mp3"), QStringLiteral("Eins"));
    Add(QStringLiteral("b/Lied.mp3"), QStringLiteral("Eins"));
    TitleRecord fixed;
    fixed.Titel = QStringLiteral("Eins");
    fixed.Pfad = QStringLiteral("/proc/version");
    ASSERT_TRUE(desk_.archive.AddTitle(fixed));
    Search(1);
    const QAbstractItemModel& rows = *Find<QTableView>("List1").model();
    const auto rowOf = [&rows](const QString& path) {
        return rows.match(rows.index(0, 0), Qt::DisplayRole, path, 1, Qt::MatchEndsWith).value(0).row();
    };
    Answers answers({QStringLiteral("OK")});
    Do("InPapierkorb", rowOf(fixed.Pfad));
    EXPECT_EQ(answers.Said().size(), 1);
    EXPECT_EQ(desk_.archive.Count(), 3);
    QFile::remove(desk_.folder.Path(QStringLiteral("Musik/a/Lied.mp3")));
    Do("InPapierkorb", rowOf(QStringLiteral("a/Lied.mp3")));
    EXPECT_EQ(desk_.archive.Count(), 2);
    EXPECT_EQ(Rows().size(), 3);
}

TEST_F(frmDoublettenTest, CancellingAndAnEmptyArchiveSayso) {
    Search(0);
    EXPECT_EQ(Text("Label2"), QStringLiteral("Suche nicht möglich"));
    Add(QStringLiteral("a/Lied.mp3"), QStringLiteral("Eins"));
    Find<QAbstractButton>("Command1").click();
    EXPECT_EQ(Caption(), kSearching);
    EXPECT_FALSE(Find<QComboBox>("Combo1").isEnabled());
    Find<QAbstractButton>("Command1").click();
    EXPECT_EQ(Caption(), kIdle);
    EXPECT_EQ(Text("Label2"), QStringLiteral("Suche abgebrochen ..."));
}

TEST_F(frmDoublettenTest, FileInformationTellsTimesAndSize) {
    Add(QStringLiteral("a/Lied.mp3"), QStringLiteral("Eins"), 2560);
    Add(QStringLiteral("b/Lied.mp3"), QStringLiteral("Eins"));
    Search(0);
    Answers answers({QStringLiteral("OK")});
    Do("Dateiinformation", 0);
    const QStringList lines = answers.Said().value(0).section(u'|', 1).split(u'\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Erstellt: ")));
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("Zuletzt Geändert: ")));
    EXPECT_TRUE(lines[2].startsWith(QStringLiteral("Letzter Zugriff: ")));
    EXPECT_EQ(lines[3], QStringLiteral("Dateigrösse: 2.5 KB"));
}

} // namespace
} // namespace kalvo
