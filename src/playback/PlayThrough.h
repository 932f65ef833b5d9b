#pragma once

#include <QObject>
#include <QTimer>

namespace kalvo {

class Mixer;
class Playlist;

/**
 * `TitelAnspielen`: every title of a playlist for some seconds, one after the other, on the list's player. A title that
 * is shorter, missing or broken gives way to the next at once. Ends by itself after the last entry, when the player is
 * stopped, and when something else is started on it; red marks and statistics stay as they were. The list may change
 * meanwhile. UI thread; mixer and lists outlive this.
 */
class PlayThrough : public QObject {
    Q_OBJECT

public:
    static constexpr int defaultSeconds = 6;

    PlayThrough(Mixer& mixer, Playlist& first, Playlist& second, QObject* parent = nullptr);

    /** Of each piece, as the settings tell it: an empty text or 0 gives defaultSeconds. */
    static int SecondsOf(const QString& setting);

    /** player: 1 or 2. Nothing with an empty list. One that runs on the other player ends. */
    void Begin(int player, int seconds);
    /** One round of `TimerAnspielen`: the piece has been heard. */
    void Tick();
    /** The music that ran before goes on. Nothing when none runs. */
    void End();
    /** Ends without touching player and music: somebody else listens on. */
    void Abandon();

    /** The player that is played through, 0 for none. */
    int Player() const { return player_; }

Q_SIGNALS:
    /** A piece starts: what counts plays has to stop. */
    void Beginning();
    /** The entry that is being played. */
    void Selected(int player, int row);
    /** Player() has become another one. */
    void Changed();

private:
    Playlist& List();
    int RowAfterPiece();
    void PlayFrom(int row);
    void Look();
    void EndHere();

    Mixer& mixer_;
    Playlist& first_;
    Playlist& second_;
    QTimer timer_{this};
    int player_ = 0;
    int row_ = 0;       ///< of the piece when it began
    quint64 entry_ = 0; ///< its id
};

} // namespace kalvo
