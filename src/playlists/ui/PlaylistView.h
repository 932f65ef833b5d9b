#pragma once

#include "playlists/ui/PlaylistDelegate.h"
#include "playlists/ui/PlaylistDrag.h"
#include "widgets/LayoutMode.h"

#include <QTableView>

namespace kalvo {

/**
 * The rows of one playlist. It changes nothing by itself: keys, double clicks and drops come out as signals.
 * Del removes, Ctrl+Up and Ctrl+Down move by one, with Shift to the top or the end, Enter and double click play.
 */
class PlaylistView : public QTableView {
    Q_OBJECT

public:
    /** The list outlives the view. objectName is `List1` or `List2`. */
    explicit PlaylistView(Playlist& list, QWidget* parent = nullptr);

    void SetLayoutMode(LayoutMode mode);
    /** In the list's order. */
    QList<int> SelectedRows() const;
    /** -1 when nothing is selected. */
    int FirstSelectedRow() const;
    /** Scrolls so that the row is seen and, with room for it, the entry three places after it. */
    void ShowComing(int row);

Q_SIGNALS:
    void SelectionChanged();
    void PlayRequested(int row);
    void RemoveRequested(const QList<int>& rows);
    /** Before the entry that is at `target` now. */
    void MoveRequested(const QList<int>& rows, int target);
    /** source: number of the list they leave, 0 when they are copied. */
    void EntriesDropped(int row, const QList<DraggedEntry>& dragged, int source);
    void TitlesDropped(int row, const QList<TitleRecord>& titles);
    void FilesDropped(int row, const QStringList& paths);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void TakeUnits();
    void SizeColumns();
    void MoveSelected(int direction);
    void MoveSelectedTo(int target);
    /** Before which row a drop at this height goes. */
    int DropRow(int y) const;
    void ShowDropRow(int row);
    bool Accept(QDropEvent* event) const;

    Playlist& list_;
    PlaylistDelegate* delegate_;
    LayoutMode mode_ = LayoutMode::Normal;
    int dropRow_ = -1; ///< where the drop line is shown; -1 for none
};

} // namespace kalvo
