#pragma once

#include "playlists/ui/PlaylistView.h"

class QAction;

namespace kalvo {

class PlaylistHeader;

/** One list with its head. The panel shows; what is asked of the list comes out as signals of its View(). */
class PlaylistPanel : public QWidget {
    Q_OBJECT

public:
    /** The list outlives the panel. */
    explicit PlaylistPanel(Playlist& list, QWidget* parent = nullptr);

    PlaylistView& View() { return *view_; }
    const PlaylistView& View() const { return *view_; }

    void SetLayoutMode(LayoutMode mode);
    /** "Standard" at first. */
    void SetPlaylistName(const QString& name);
    /** Who wished the title that is on the player: told instead of the list's place; empty for none. */
    void SetWishedBy(const QString& guest);
    /** What the head says. */
    QString Caption() const;
    /** "Player 1" alone, until the list or its selection changes. */
    void ResetCaption();
    /** In place of the caption while it is not empty. */
    void SetOtherCaption(const QString& caption);
    /** "Rest 00:58:12" and "bis 00:39"; the narrow layout shows only the second. Empty texts show nothing. */
    void SetEndTime(const QString& rest, const QString& until);
    /** The context menu; the actions stay the caller's. */
    void SetContextActions(const QList<QAction*>& actions);

Q_SIGNALS:
    /** Something was selected in the list, or the list was entered or pressed: it becomes the active one. */
    void Activated(int number);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowCaption();
    void ShowEnd();

    Playlist& list_;
    PlaylistHeader* header_;
    PlaylistView* view_;
    QString name_;
    QString guest_;
    QString otherCaption_;
    QString rest_;
    QString until_;
    LayoutMode mode_ = LayoutMode::Normal;
};

} // namespace kalvo
