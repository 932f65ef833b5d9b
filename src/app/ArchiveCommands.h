#pragma once

#include "app/ArchiveUndo.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QAction;
class QWidget;

namespace kalvo {

class Archive;
class ArchivePanel;
class DeskActions;
class frmDoubletten;
class frmSuchen;
class frmTitelLoeschen;
struct WindowValues;

/** What the menus do with the music archive itself: delete and undo, search, duplicates, properties, full view. */
class ArchiveCommands : public QObject {
    Q_OBJECT

public:
    /**
     * Adds the commands to the menus, which exist by now, and to the grid's context menu. All parameters outlive this;
     * beside: the parts of the window that the archive's full view hides; window: above which the dialogs open.
     */
    ArchiveCommands(Archive& archive, ArchivePanel& panel, DeskActions& actions, WindowValues& values,
                    QList<QWidget*> beside, QWidget& window);
    ~ArchiveCommands() override;

    /** Deletions from the archive. */
    QUndoStack& UndoStack() { return undo_.Stack(); }

Q_SIGNALS:
    /** A text for the status line. */
    void Told(const QString& text);

private:
    template<typename Run>
    QAction* Add(const QString& name, const QString& text, Run run);
    void BuildMenus(DeskActions& actions);
    void KeepTree(WindowValues& values);

    void DeleteMarkedTitles();
    void DeleteOneTitle();
    void DeleteTitle(qint64 nr, const QString& path, bool withFile);
    void DeleteWholeArchive();
    bool Delete(const QList<qint64>& numbers);
    void ShowArchiveProperties();
    void ShowFullView(bool full);
    void ShowSearch();
    void ShowDuplicates();

    Archive& archive_;
    ArchivePanel& panel_;
    QList<QWidget*> beside_;
    QWidget& window_;
    ArchiveUndo undo_;
    QTimer followTimer_;
    QPointer<frmSuchen> search_;
    QPointer<frmDoubletten> duplicates_;
    QPointer<frmTitelLoeschen> deletion_;
};

} // namespace kalvo
