#pragma once

#include "playback/PlayThrough.h"
#include "playback/PreListening.h"

#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace kalvo {

struct Desk;
struct TitleRecord;
class ArchivePanel;
class DeskActions;
class ListBand;
class PlaylistActions;

/** Listening on the main output: `Label5` and Enter in the archive, and `TitelAnspielen` of the lists. */
class ListenCommands : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        DeskActions& actions;
        PlaylistActions& lists;
        ArchivePanel& archive;
        ListBand& band;
        QWidget& window; ///< holds the players' controls
    };
    /** All parts outlive this. */
    explicit ListenCommands(const Parts& parts);
    ~ListenCommands() override;

Q_SIGNALS:
    /** A text for the status line. */
    void Told(const QString& text);

private:
    void BuildMenu();
    void ConnectPreListening();
    void ConnectPlayThrough();
    void PreListen(const TitleRecord& title);
    void TitelAnspielen();
    void LockTransport();
    void UnlockTransport();

    Parts parts_;
    PreListening preListening_;
    PlayThrough playThrough_;
    QAction* playing_ = nullptr;      ///< `TitelAnspielen`
    QList<QPointer<QObject>> locked_; ///< buttons and actions that the play-through has disabled
};

} // namespace kalvo
