#include "archive/ui/frmDoubletten.h"

#include "archive/ui/ArchiveWindowTest.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QTableView>

namespace kalvo::test {
namespace {

const QString kIdle = u"      Suche starten"_s;

class frmDoublettenTest : public ArchiveWindowTest {
protected:
    frmDoublettenTest() {
        // The bin of this test is a folder of its own.
        folder.Write(u"share/leer"_s, {});
        qputenv("XDG_DATA_HOME", folder.Path(u"share"_s).toUtf8());
        dialog_.show();
        QObject::connect(&dialog_, &frmDoubletten::Deleted, &dialog_, [this] { ++deleted_; });
    }
    ~frmDoublettenTest() override { qunsetenv("XDG_DATA_HOME"); }
    QWidget& Window() override { return dialog_; }

    /** A title whose file holds so many bytes; where that lies. */
    QString AddFile(const QString& file, const QString& title = u"Eins"_s, int bytes = 1024) {
        TitleRecord record;
        record.Interpret = u"Wer"_s;
        record.Titel = title;
        record.Pfad = folder.Write(u"Musik/"_s + file, QByteArray(bytes, 'x'));
        EXPECT_TRUE(archive.AddTitle(record).done);
        return record.Pfad;
    }
    QString Caption() { return Find<QAbstractButton>("Command1").text(); }
    void Search(int mode) {
        Find<QComboBox>("Combo1").setCurrentIndex(mode);
        Press("Command1");
        EXPECT_TRUE(WaitUntil([this] { return Caption() == kIdle; }));
    }
    QAbstractItemModel& List() { return *Find<QTableView>("List1").model(); }
    /** One text per row, its cells joined. */
    QStringList Rows() {
        QStringList rows;
        for (int row = 0; row < List().rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < List().columnCount(); ++column)
                cells.append(List().index(row, column).data().toString());
            cells[0] = QFileInfo(cells[0]).fileName();
            rows.append(cells.join(u'|'));
        }
        return rows;
    }
    int RowOf(const QString& path) {
        return List().match(List().index(0, 0), Qt::DisplayRole, path, 1, Qt::MatchEndsWith).value(0).row();
    }
    void Do(const char* action, int row) {
        Find<QTableView>("List1").selectRow(row);
        Find<QAction>(action).trigger();
    }

    void MoveToBin(int row) {
        Do("InPapierkorb", row);
        EXPECT_FALSE(Find<QAction>("AusMAlöschen").isEnabled());
        EXPECT_TRUE(WaitUntil([this] { return !archive.Bin().IsRunning(); }));
    }

    frmDoubletten dialog_{archive};
    int deleted_ = 0;
};

TEST_F(frmDoublettenTest, FileNamesAndTitlesAreFoundInGroups) {
    AddFile(u"a/Lied.mp3"_s, u"Eins"_s, 1536);
    AddFile(u"b/lied.mp3"_s, u"EINS"_s);
    AddFile(u"c/anders.mp3"_s, u"eins"_s);
    AddFile(u"c/allein.mp3"_s, u"Zwei"_s);
    EXPECT_EQ(Caption(), kIdle);
    EXPECT_EQ(Find<QComboBox>("Combo1").currentText(), u"Datei-Namen"_s);
    Search(0);
    EXPECT_EQ(Rows(), QStringList({u"Lied.mp3|Wer|Eins|1.5 KB"_s, u"lied.mp3|Wer|EINS|1.0 KB"_s, u"|||"_s}));
    const QAbstractItemModel& numbers = *Find<QAbstractItemView>("List2").model();
    ASSERT_EQ(numbers.rowCount(), 2);
    const auto second = archive.FindByPath(List().index(1, 0).data().toString());
    EXPECT_EQ(numbers.index(1, 0).data().toLongLong(), second.value_or(TitleRecord()).Nr);
    EXPECT_EQ(Text("lblHinweis"), u"Es wurden 2 Doubletten im Dateinamen gefunden."_s);
    EXPECT_EQ(Text("Label2"), u"Suche abgeschlossen  100%"_s);
    Search(1);
    EXPECT_EQ(Rows().size(), 4);
    EXPECT_TRUE(Text("lblHinweis").startsWith(u"Es wurden 3 Doubletten im Titel des ID3Tag gefunden. "_s));
}

TEST_F(frmDoublettenTest, AMissingFileStopsTheSearchAndCanBeDeleted) {
    AddFile(u"a/Lied.mp3"_s);
    AddFile(u"b/Lied.mp3"_s);
    Add(u"Fort"_s, u"Weg"_s);
    Answers answers({u"OK"_s});
    Search(0);
    ASSERT_TRUE(WaitUntil([&] { return answers.AllGiven(); }));
    EXPECT_TRUE(answers.Said().value(0).startsWith(u"Hinweis|Es wurde(n) "_s));
    EXPECT_EQ(Rows(), QStringList(u"Fort - Weg.mp3|Fort|Weg|"_s));
    EXPECT_TRUE(Text("lblHinweis").startsWith(u"Löschen Sie bitte die oben aufgelisteten Titel"_s));
    Do("AusMAlöschen", 0);
    EXPECT_TRUE(Rows().isEmpty());
    EXPECT_EQ(archive.Count(), 2);
    EXPECT_EQ(deleted_, 1);
    Search(0);
    EXPECT_EQ(Rows().size(), 3);
}

TEST_F(frmDoublettenTest, ATitleThatIsDeletedOrChangedElsewhereShowsSo) {
    TitleRecord changed = *archive.FindByPath(AddFile(u"a/Lied.mp3"_s));
    const QString other = AddFile(u"b/Lied.mp3"_s);
    Search(0);
    changed.Interpret = u"Du"_s;
    ASSERT_TRUE(archive.UpdateRecord(changed));
    ASSERT_TRUE(archive.DeleteTitles({archive.FindByPath(other)->Nr}));
    archive.Refresh();
    EXPECT_EQ(Rows(), QStringList({u"Lied.mp3|Du|Eins|1.0 KB"_s, u"(nicht mehr im Musikarchiv)|||"_s, u"|||"_s}));
    MoveToBin(1);
    EXPECT_EQ(Rows().size(), 2) << "the row of the title that is gone goes";
    EXPECT_TRUE(QFileInfo::exists(other));
    EXPECT_EQ(archive.Count(), 1);
}

TEST_F(frmDoublettenTest, TheBinTakesTheFileAndKeepsTheTitleOfOneThatCannotBeMoved) {
    const QString gone = AddFile(u"a/Lied.mp3"_s);
    const QString path = AddFile(u"b/Lied.mp3"_s);
    TitleRecord fixed;
    fixed.Titel = u"Eins"_s;
    fixed.Pfad = u"/proc/version"_s;
    ASSERT_TRUE(archive.AddTitle(fixed));
    Search(1);
    Answers answers({u"OK"_s});
    MoveToBin(RowOf(fixed.Pfad));
    EXPECT_EQ(answers.Said().size(), 1);
    EXPECT_EQ(archive.Count(), 3);
    QFile::remove(gone);
    MoveToBin(RowOf(u"a/Lied.mp3"_s));
    EXPECT_EQ(archive.Count(), 2) << "it needs no bin";
    EXPECT_EQ(Rows().size(), 3);
    MoveToBin(RowOf(path));
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_EQ(archive.Count(), 1);
    EXPECT_EQ(Rows().size(), 2) << "one title and the empty row";
    ASSERT_TRUE(archive.Undo());
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_EQ(archive.Count(), 2);
}

TEST_F(frmDoublettenTest, CancellingAndAnEmptyArchiveSayso) {
    Search(0);
    EXPECT_EQ(Text("Label2"), u"Suche nicht möglich"_s);
    AddFile(u"a/Lied.mp3"_s);
    Press("Command1");
    EXPECT_EQ(Caption(), u"     Suche abbrechen"_s);
    EXPECT_FALSE(Find<QComboBox>("Combo1").isEnabled());
    Press("Command1");
    EXPECT_EQ(Caption(), kIdle);
    EXPECT_EQ(Text("Label2"), u"Suche abgebrochen ..."_s);
}

} // namespace
} // namespace kalvo::test
