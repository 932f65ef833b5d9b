#pragma once

#include <QObject>
#include <QPointer>

class QAction;
class QKeySequence;
class QMainWindow;
class QMenu;

namespace kalvo {

class ArchivePanel;
class DeskActions;
class frmTasten;

/**
 * What the mouse does on the main window's controls, as commands of the menus with shortcuts; the order in which Tab
 * goes through them; the list of all shortcuts. To be made when all menus are filled and all controls are there.
 */
class KeyCommands : public QObject {
    Q_OBJECT

public:
    /** All outlive the commands. */
    struct Parts {
        DeskActions& actions;
        ArchivePanel& archive;
        QMainWindow& window;
    };

    explicit KeyCommands(const Parts& parts);
    ~KeyCommands() override;

private:
    template<typename Act>
    QAction* Add(QMenu& menu, const char* name, const QString& text, const QKeySequence& shortcut, Act act);
    void AddGoing();
    void AddArchive();
    void AddMixer();
    void AddPlayer(int player);
    void FillSorting();
    void OrderFocus();
    void GoTo(const char* control);
    void GoToDivider();
    void Click(const QString& button);
    void ShowShortcuts();

    Parts parts_;
    QMenu* sorting_ = nullptr;
    QPointer<frmTasten> shortcuts_;
};

} // namespace kalvo
