#pragma once

#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace kalvo {

struct Desk;
struct HeadphoneTitle;
struct TitleRecord;
class ArchivePanel;
class DeskActions;
class ListBand;
class PlaylistActions;
class frmKopfhoerer;

/** The ways into the headphone window: `TitelMitKopfhörerVorhören`, `TitelVorhoerenWL` and `Label5`; its cue points. */
class HeadphoneCommands : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        DeskActions& actions;
        PlaylistActions& lists;
        ArchivePanel& archive;
        ListBand& band;
        QWidget& window;
    };
    /** All parts outlive this. */
    explicit HeadphoneCommands(const Parts& parts);
    ~HeadphoneCommands() override;

    /** The selected title of the player's list. */
    void ListenToList(int player);

Q_SIGNALS:
    /** A text for the status line. */
    void Told(const QString& text);

private:
    void BuildMenus();
    void ListenToArchive(const TitleRecord& title);
    void TitelVorhoerenWL();
    void Listen(const HeadphoneTitle& title);
    void TakeCue(const HeadphoneTitle& title, const QString& cue);
    void FollowList();

    Parts parts_;
    QPointer<frmKopfhoerer> phones_;
};

} // namespace kalvo
