#include "app/FakeWindow.h"
#include "archive/ui/WindowActs.h"
#include "support/SoundMaker.h"
#include "support/WaitUntil.h"
#include "tags/ui/frmTagEditor.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct TagCommandsTest : test::FakeWindow {
    TagCommandsTest() {
        test::SoundSpec sound;
        sound.title = u"Alt"_s;
        sound.artist = u"Wer"_s;
        path = test::MakeSound(folder.Path(), u"a-60.mp3"_s, sound);
    }
    /** Opens the editor on the archive's only title. */
    frmTagEditor& Open() {
        auto& grid = In<QTableView>(*window, "DataGrid2");
        EXPECT_TRUE(test::WaitUntil([&grid] { return grid.model()->rowCount() == 1; }));
        grid.selectRow(0);
        In<QAction>(*window, "TagEditor").trigger();
        auto* editor = window->findChild<frmTagEditor*>();
        EXPECT_TRUE(test::WaitUntil([editor] { return In<QLineEdit>(*editor, "txtTitelV2").text() == u"Alt"; }));
        return *editor;
    }
    void Save(frmTagEditor& editor, const QString& title) {
        auto& line = In<QLineEdit>(editor, "txtTitelV2");
        line.setText(title);
        Q_EMIT line.textEdited(title);
        In<QPushButton>(editor, "cmdSpeichern").click();
    }

    QString path;
};

TEST_F(TagCommandsTest, ArchiveAndListsFollowASavedFileAndNoFailedOne) {
    ASSERT_TRUE(window->Load());
    window->show();
    TitleRecord title;
    title.Titel = u"Alt"_s;
    title.Interpret = u"Wer"_s;
    title.Pfad = path;
    ASSERT_TRUE(desk->archive.WaitForIndex());
    ASSERT_TRUE(desk->archive.AddTitle(title).done);
    desk->archive.Refresh();
    desk->list2.Append(
        {{u"anderes"_s, {}, {}, {}, {}, folder.Path(u"b-60.mp3"_s)}, {u"Alt"_s, u"Wer"_s, {}, {}, {}, path}});
    desk->mixer.PlayRow(2, 1);
    frmTagEditor& editor = Open();
    Save(editor, u"Größer"_s);
    const auto archived = [this] { return desk->archive.FindByPath(path).value_or(TitleRecord()).Titel; };
    EXPECT_TRUE(test::WaitUntil([&] { return archived() == u"Größer"; })) << archived().toStdString();
    EXPECT_TRUE(test::WaitUntil([&] { return desk->list2.At(1).title == u"Größer"; }));
    EXPECT_EQ(desk->list2.At(0).title, u"anderes"_s);
    EXPECT_EQ(desk->mixer.Title(2).title, u"Größer"_s) << "and so does the player";

    ASSERT_TRUE(test::WaitUntil([&editor] { return !In<QPushButton>(editor, "cmdSpeichern").isEnabled(); }));
    ASSERT_TRUE(QFile::remove(path));
    test::Answers answers({u"OK"_s});
    Save(editor, u"Verloren"_s);
    ASSERT_TRUE(test::WaitUntil([&answers] { return answers.AllGiven(); }));
    EXPECT_TRUE(answers.Said().constFirst().contains(u"|a-60.mp3:\n"_s)) << answers.Said().join(u'\n').toStdString();
    EXPECT_EQ(archived(), u"Größer"_s);
    EXPECT_EQ(desk->list2.At(1).title, u"Größer"_s);
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
} // namespace kalvo
