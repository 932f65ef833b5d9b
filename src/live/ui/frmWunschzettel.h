#pragma once

#include "live/WishList.h"

#include <QDialog>
#include <QSet>
#include <QTimer>

class QBoxLayout;
class QLabel;
class QMenu;
class QVBoxLayout;

namespace kalvo {

class Playlist;
class TextTable;
class TextTableModel;

/**
 * The guests' wishes, and what can be done with them in its menu. Modeless; wishes that come in meanwhile show at once.
 * A wish stays until it is deleted; what has become of it stands behind it.
 */
class frmWunschzettel : public QDialog {
    Q_OBJECT

public:
    /** All outlive the window. */
    frmWunschzettel(WishList& wishes, const Playlist& first, const Playlist& second, QWidget* parent = nullptr);

    /** Puts a widget above the list. */
    void AddHead(QWidget* head);

    void TitelAbspielen();
    void TitelLoeschen();
    void AlleTitelLoeschen();
    /** Brings back what was deleted last. */
    void LoeschenRueckgaengig();

    void done(int result) override;

Q_SIGNALS:
    void PlayRequested(const kalvo::Wish& wish);
    /** player: 1 or 2; 0 for the active list. */
    void AddRequested(int player, const QList<kalvo::Wish>& wishes);

private:
    void BuildMenu();
    QAction* Add(QMenu& menu, const QString& name, const QString& text, void (frmWunschzettel::*act)());
    void AddSending(QMenu& menu, int player);
    QBoxLayout* BuildButtons();
    void Send(int player);
    QList<Wish> Selected() const;
    QList<QStringList> Rows() const;
    void Reload();
    void ShowStates();
    void ShowChoices();
    void Keep(const QList<WishList::Removed>& removed);

    WishList& wishes_;
    const Playlist& first_;
    const Playlist& second_;
    QSet<quint64> old_; ///< wishes that were there when the window opened
    QList<quint64> shown_;
    QList<QList<WishList::Removed>> deleted_;
    QVBoxLayout* column_;
    TextTableModel* model_;
    TextTable* table_; ///< `ListView1`
    QLabel* empty_;
    QList<QAction*> forSelection_;
    QAction* undo_ = nullptr;
    QAction* clear_ = nullptr;
    QTimer states_; ///< gathers the changes of the lists
};

} // namespace kalvo
