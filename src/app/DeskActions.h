#pragma once

#include <QActionGroup>
#include <QMenu>
#include <QObject>

#include <array>
#include <memory>

class QMenuBar;

namespace kalvo {

/** Every command of the main window as an action with its given name, and the menus that hold them. */
class DeskActions : public QObject {
    Q_OBJECT

public:
    explicit DeskActions(QObject* parent = nullptr);
    ~DeskActions() override;

    void BuildMenus(QMenuBar& bar);

    QAction* addFiles;
    QAction* quit;
    QAction* selectAllTitles;
    QAction* focusSearch;

    QAction* importTitles;
    std::array<QAction*, 2> addToPlayer; ///< archive titles to list 1, 2
    QAction* distribute;

    QActionGroup* fullViews; ///< of the archive and of the lists: at most one is on

    std::array<QAction*, 2> moveToList; ///< selected entries of the other list to list 1, 2
    QAction* playNext;
    QAction* playNextRemoved;
    QAction* shuffle;
    QAction* removeMarked;
    QAction* removeAll;

    std::array<QAction*, 2> play;
    std::array<QAction*, 2> stop;
    std::array<QAction*, 2> pause;
    std::array<QAction*, 2> next;
    std::array<QAction*, 2> mute;
    std::array<QAction*, 2> fadeTo;
    QActionGroup* modes;  ///< data: the mode's text
    QActionGroup* speeds; ///< data: interval in ms
    QAction* continuous;
    QAction* automatic;

    QAction* removePlayed;
    QActionGroup* skins;       ///< data: the skin's name
    QActionGroup* fontSizes;   ///< data: `Schriftgrad`
    QActionGroup* buttonSizes; ///< data: `Buttongroesse`
    QAction* about;

    // Null until BuildMenus(). Further commands add themselves here.
    QMenu* fileMenu = nullptr;
    QMenu* editMenu = nullptr;
    QMenu* archiveMenu = nullptr;
    QMenu* listMenu = nullptr;
    QMenu* mixerMenu = nullptr;
    std::array<QMenu*, 2> playerMenus{}; ///< within the mixer's
    QMenu* toolsMenu = nullptr;
    QMenu* settingsMenu = nullptr;
    QMenu* helpMenu = nullptr;

    /** `ueberblendgeschwindigkeit`; also opens on the fade buttons. */
    QMenu* SpeedMenu() { return speedMenu_.get(); }
    /** To be filled with the output devices before it opens. */
    QMenu* DeviceMenu() { return deviceMenu_.get(); }

private:
    QAction* Add(const QString& name, const QString& text, const QKeySequence& shortcut = {});
    QAction* AddChoice(QActionGroup& group, const QString& name, const QString& text, const QVariant& value);
    void CreateArchiveActions();
    void CreateListActions();
    void CreateMixerActions();
    void CreateSettingActions();
    void BuildMixerMenu(QMenuBar& bar);
    void BuildSettingsMenu(QMenuBar& bar);

    std::unique_ptr<QMenu> speedMenu_;
    std::unique_ptr<QMenu> deviceMenu_;
};

} // namespace kalvo
