#include "playlists/ui/PlaylistPanel.h"

#include "archive/TitleRow.h"
#include "playlists/PlaylistSupport.h"
#include "playlists/ui/PlaylistHeader.h"
#include "support/WindowActs.h"
#include "widgets/DragTypes.h"
#include "widgets/SkinStyle.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QUrl>
#include <gtest/gtest.h>

namespace kalvo::test {

struct PlaylistPanelTest : ::testing::Test {
    PlaylistPanelTest() {
        SkinStyle::Apply(*qApp, u"Dark Blue"_s, u"klein"_s, {});
        list.Append(EntriesOf("abcde"));
        panel.resize(600, 400);
        panel.show();
        QApplication::processEvents();
        QObject::connect(&view, &PlaylistView::PlayRequested, [this](int row) { heard += 'P' + Row(row); });
        QObject::connect(&view, &PlaylistView::RemoveRequested,
                         [this](const auto& rows) { heard += 'R' + Rows(rows); });
        QObject::connect(&view, &PlaylistView::MoveRequested, [this](const QList<int>& rows, int target) {
            heard += 'M' + Rows(rows) + '>' + Row(target);
            list.Move(rows, target);
        });
    }

    static std::string Row(int row) { return std::to_string(row); }
    static std::string Rows(const QList<int>& rows) {
        std::string text;
        for (const int row : rows)
            text += Row(row);
        return text;
    }
    void Select(const QList<int>& rows) {
        view.clearSelection();
        for (const int row : rows)
            view.selectionModel()->select(list.index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { PressKey(view, key, modifiers); }
    /** In the upper part of a row; behind the last one the empty room. */
    bool Drop(const QMimeData& data, int row) {
        const QPointF at(100, row * SkinStyle::Units().TableRow() + 3);
        QDragEnterEvent enter(at.toPoint(), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &enter);
        QDropEvent drop(at, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        drop.ignore();
        QApplication::sendEvent(view.viewport(), &drop);
        return drop.isAccepted();
    }

    SystemRandom random;
    Playlist list{1, random};
    PlaylistPanel panel{list};
    PlaylistView& view = panel.View();
    std::string heard;
};

TEST_F(PlaylistPanelTest, SelectingMakesTheListActive) {
    QList<int> active;
    QObject::connect(&panel, &PlaylistPanel::Activated, [&active](int number) { active.append(number); });
    Select({2});
    EXPECT_EQ(active.count(1), active.size());
    EXPECT_FALSE(active.isEmpty());
    active.clear();
    Click(*view.viewport(), view.visualRect(list.index(2, 0)).center());
    EXPECT_EQ(active, QList<int>{1}) << "also when it is selected already";
}

TEST_F(PlaylistPanelTest, KeysAskForTheirActs) {
    Select({3, 1});
    Press(Qt::Key_Delete);
    EXPECT_EQ(heard, "R13");
    heard.clear();
    Select({0, 1});
    Press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(heard, "") << "at the top already";
    Press(Qt::Key_Down, Qt::ControlModifier);
    Press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(heard, "M01>3M12>4") << "the selection goes along";
    Press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(list.At(1).title, u"a"_s);
    heard.clear();
    Press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    Press(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(heard, "M12>5M34>0") << "to the end and to the top";
    heard.clear();
    view.setCurrentIndex(list.index(4, 0));
    Press(Qt::Key_Return);
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(heard, "P4P4");
}

TEST_F(PlaylistPanelTest, DropsTellWhatAndWhere) {
    EXPECT_TRUE(list.flags(list.index(0, Playlist::Title)) & Qt::ItemIsDragEnabled) << "or no drag ever begins";
    QList<PlaylistEntry> wished = list.Entries();
    wished[2].origin = EntryOrigin::Wish;
    list.Replace(wished);
    std::string dropped;
    QObject::connect(
        &view, &PlaylistView::EntriesDropped, [&](int row, const QList<DraggedEntry>& dragged, int source) {
            dropped = Row(row) + dragged.front().entry.title.toStdString() + Row(dragged.front().row) + Row(source);
            EXPECT_EQ(dragged.front().entry.origin, EntryOrigin::Wish) << "it is told to the history";
        });
    QObject::connect(&view, &PlaylistView::TitlesDropped, [&](int row, const QList<TitleRecord>& titles) {
        dropped = Row(row) + titles.front().Titel.toStdString() + titles.front().Extra4.toStdString();
    });
    QObject::connect(&view, &PlaylistView::FilesDropped,
                     [&](int row, const QStringList& paths) { dropped = Row(row) + paths.join(u' ').toStdString(); });
    EXPECT_TRUE(Drop(*PlaylistDrag::Pack(list, {2, 3}), 1));
    EXPECT_EQ(dropped, "1c20") << "from another program: a copy";
    QMimeData data;
    TitleRecord title = TitlesOf("T").front();
    title.Extra4 = u"128"_s;
    DragTypes::Put(data, DragTypes::ArchiveTitles(), {TitleRow::Pack(title)});
    EXPECT_TRUE(Drop(data, 9));
    EXPECT_EQ(dropped, "5T128") << "below the last row: at the end";
    data.clear();
    data.setUrls({QUrl::fromLocalFile(u"/m/ä.mp3"_s), QUrl(u"http://x/y.mp3"_s)});
    EXPECT_TRUE(Drop(data, 0));
    EXPECT_EQ(dropped, "0/m/ä.mp3");
    data.clear();
    data.setText(u"x"_s);
    EXPECT_FALSE(Drop(data, 0));
}

TEST_F(PlaylistPanelTest, FoldsWithTheLayout) {
    panel.SetEndTime(u"Rest 00:58:12"_s, u"bis 00:39"_s);
    const QString all = u"Rest 00:58:12, bis 00:39"_s;
    const std::tuple<LayoutMode, bool, bool, QString> cases[] = {{LayoutMode::Narrow, false, false, u"bis 00:39"_s},
                                                                 {LayoutMode::Wide, true, true, all},
                                                                 {LayoutMode::Normal, true, false, all}};
    for (const auto& [mode, showsArtist, showsHeads, text] : cases) {
        panel.SetLayoutMode(mode);
        EXPECT_EQ(!view.isColumnHidden(Playlist::Artist), showsArtist);
        EXPECT_EQ(!view.horizontalHeader()->isHidden(), showsHeads);
        EXPECT_EQ(panel.findChild<PlaylistHeader*>()->End().text(), text);
        EXPECT_EQ(view.horizontalHeader()->length(), view.viewport()->width()) << "the columns fill the width";
    }
}

TEST_F(PlaylistPanelTest, TheRedEntryIsSeenSelectedOrNot) {
    list.SetCurrent(1);
    const Skin& skin = SkinStyle::Colours();
    const int height = SkinStyle::Units().TableRow();
    const auto colour = [this](int x, int y) { return view.viewport()->grab().toImage().pixelColor(x, y); };
    const int right = view.viewport()->width() - 1;
    EXPECT_EQ(colour(1, height + height / 2), QColor(255, 0, 0));
    EXPECT_EQ(colour(right, height + 4), skin.alt);
    Select({1, 2});
    EXPECT_EQ(colour(right / 2, height), skin.highlight) << "a frame";
    EXPECT_EQ(colour(right, height + 4), skin.highlight);
    EXPECT_EQ(colour(right - 4, height + 4), skin.alt) << "not a fill";
    EXPECT_EQ(colour(right - 4, 2 * height + 4), skin.highlight);
}

TEST_F(PlaylistPanelTest, WhatComesNextIsScrolledIntoView) {
    list.Append(QList<PlaylistEntry>(500, list.At(0)));
    const auto isSeen = [this](int row) {
        return view.viewport()->rect().contains(view.visualRect(list.index(row, Playlist::Title)).center());
    };
    view.ShowComing(300);
    EXPECT_TRUE(isSeen(300) && isSeen(303));
    list.SetCurrent(3);
    EXPECT_TRUE(isSeen(300)) << "a load alone scrolls";
    view.ShowComing(list.Count() - 1);
    EXPECT_TRUE(isSeen(list.Count() - 1));
}

} // namespace kalvo::test
