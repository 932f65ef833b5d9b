#pragma once

#include "app/Desk.h"
#include "app/Form1.h"
#include "playback/AudioModule.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace kalvo::test {

/**
 * The real main window with the real audio module, worked by events as its user works it. Everything runs in this
 * thread's event loop, at the pace of the output device, which is the sound server's default one.
 */
class LiveDesk {
public:
    /** Opens the window at full volume on an empty data folder; a failure fails the test. */
    explicit LiveDesk(const QString& dataFolder);

    bool IsOpen() const { return open_; }
    Mixer& Players() { return desk_->mixer; }
    /** Appends files to a player's list. */
    void Fill(int player, const QStringList& paths);

    Playlist& List(int player) { return desk_->List(player); }
    /** Chooses a command of the menus. */
    void Trigger(const char* command);

    /** Makes the window the active one and gives a control the focus. */
    void Activate(const char* control);
    /** control: its objectName, of a dialog as "dialog/name". */
    void Click(const char* control);
    /** A click into a horizontal control; fraction 0..1 of its width. */
    void ClickAt(const char* control, double fraction);
    void Press(const char* control, Qt::Key key, int times = 1);
    /** Marks one row of a list. */
    void Select(const char* view, int row);
    /** Of a window above the main one. */
    bool IsShown(const char* dialog) const;
    void Close(const char* dialog);
    /** The text that a label shows; empty when there is no such label. */
    QString Text(const char* label) const;
    /** What the status line has told since the window was opened, each line as it stood there. */
    const QStringList& Told() const { return told_; }

private:
    template<typename Send>
    void With(const char* control, Send send);

    AudioModule module_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<Form1> window_;
    QStringList told_;
    bool open_ = false;
};

/** Lets the event loop run. */
void RunFor(double seconds);

} // namespace kalvo::test
