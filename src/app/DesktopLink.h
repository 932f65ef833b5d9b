#pragma once

#include "app/BusLink.h"
#include "app/CoverFile.h"
#include "app/DeskRemote.h"
#include "app/DesktopNotices.h"
#include "app/IdleInhibitor.h"
#include "app/MprisService.h"

#include <QObject>
#include <QStringList>

namespace kalvo {

struct Desk;
class ConsolePanel;
class OptionCommands;
class StatusLine;

/**
 * The desk on the user's desktop: media keys and player controls, notifications, the screen saver. Everything goes over
 * the session's message bus; without one the program is none the worse. UI thread, which never waits for the bus.
 */
class DesktopLink : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Desk& desk;
        ConsolePanel& console; ///< shows the volume
        const StatusLine& status;
        const OptionCommands& options;
    };
    /** All parts outlive this. Connects in the background. */
    DesktopLink(const Parts& parts, QObject* parent);
    ~DesktopLink() override;

Q_SIGNALS:
    // Asked for from outside; told from the event loop, so that questions may be opened.
    void RaiseWanted();
    void QuitWanted();
    void FilesGiven(const QStringList& files);

private:
    void ConnectService();
    void ConnectNotices();
    void Begin();
    void ApplyOptions();
    void FollowDesk();
    void TakeCover(const QString& url);

    Parts parts_;
    BusLink session_;
    DeskRemote remote_;
    MprisService service_;
    DesktopNotices notices_;
    IdleInhibitor idle_;
    CoverFile cover_;
    bool staysAwake_ = true;
    int toldTrack_ = 0; ///< whose notice has been sent
};

} // namespace kalvo
