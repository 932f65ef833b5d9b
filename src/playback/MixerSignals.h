#pragma once

#include "playback/OutputWatch.h"

#include <QObject>

namespace kalvo {

/** What the mixer tells. UI thread; players count 1 and 2. */
class MixerSignals : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /** What a player shows has changed: title, status, mute. */
    void PlayerChanged(int player);
    void FaderMoved(int position);
    void HandOverBegan(int target);
    /** A fade by hand towards a player that plays, or is opening its file. */
    void FadedTo(int player);
    /** A title has been loaded and started from its list; the entry is current. byHand: not by the next-title rule. */
    void TitleStarted(int player, int row, bool byHand);
    void OptionsChanged();
    /** Asked for by the user, and the file is not there. */
    void FileMissing(const QString& path);
    /** One line for the status bar. */
    void Message(const QString& text);
    /** The output's device has gone, been replaced or come back; Message has said it, too. */
    void OutputChanged(const OutputNews& news);
    /** A listened title has played to its end; its player stands still. */
    void ListenedToEnd(int player);
    /** Play was pressed on a player whose volume is limited: it does nothing else. */
    void WantedBack(int player);
    /** Continuous play has come to the end of both lists. */
    void Finished();
};

} // namespace kalvo
