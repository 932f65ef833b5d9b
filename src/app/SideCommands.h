#pragma once

#include "playback/TitleCover.h"

#include <QObject>

class QAction;
class QWidget;

namespace kalvo {

struct Desk;
class ArchivePanel;
class DeskActions;
class JingleCommands;
class JingleLine;
class WishCommands;

/**
 * What a wide window shows beside the archive: the selected title's cover, the guests' wishes and the next jingle; the
 * menu item `SeitenfeldAnzeigen`.
 */
class SideCommands : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        DeskActions& actions;
        ArchivePanel& archive;
        WishCommands& wishes;
        JingleCommands& jingles;
        QWidget& window; ///< whose other commands these follow
    };
    /** All parts outlive this. The item is the last of the settings menu. */
    explicit SideCommands(const Parts& parts);
    ~SideCommands() override;

private:
    void BuildMenu();
    void AddWishes();
    void AddJingle();
    void ShowJingle();
    void ConnectCover();
    void ShowCover();

    Parts parts_;
    QAction* showSide_ = nullptr;
    QAction* showCover_; ///< of the decks, too
    JingleLine* jingle_ = nullptr;
    TitleCover cover_;
};

} // namespace kalvo
