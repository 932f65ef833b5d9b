#pragma once

#include "playlists/ChartsFile.h"
#include "playlists/EveningLog.h"

#include <QObject>
#include <QTimer>

#include <array>
#include <optional>

namespace kalvo {

class Archive;
class Clock;
class Mixer;
class Playlist;
struct PlaylistEntry;

/**
 * Counts what the players play: in the charts, as the last-played stamp of the archive's title, and in the history of
 * the evening. A title that its player took by the next-title rule counts at once, and so does one that is faded to by
 * hand; one that was started by hand from a list counts after ten seconds of sound. Once per load: the player's record
 * then says `Counted`. `Timer3` ticks every second while a player has a title. UI thread.
 */
class PlayCounter : public QObject {
    Q_OBJECT

public:
    static constexpr int secondsByHand = 10;

    /** Where plays are written to. All outlive the counter. */
    struct Books {
        ChartsFile& charts;
        EveningLog& evening;
        Archive& archive;
    };
    PlayCounter(Mixer& mixer, Playlist& first, Playlist& second, Books books, const Clock& clock,
                QObject* parent = nullptr);
    /** Writes how long the titles on air were heard. */
    ~PlayCounter() override;

    /** Pre-listening and play-through: what is on the players now and has not counted yet will not count. */
    void StopTimer3();
    /** One second of `Timer3`. */
    void Tick();

Q_SIGNALS:
    /** A play is in the books. */
    void Counted(const PlayedTitle& title);
    /** A counted title has ended: the history now tells how long it was heard. */
    void Ended();
    /** German, for the status line: a book could not be written. */
    void Told(const QString& message);

private:
    struct Heard {
        PlayedTitle title;
        bool isCounted = false;
        bool isDue = true; ///< counts when it has been heard long enough
        int seconds = 0;
    };
    struct OnPlayer {
        std::optional<Heard> heard;
        bool fadedTo = false; ///< while its file was opening
    };

    OnPlayer& On(int player) { return players_.at(static_cast<std::size_t>(player - 1)); }
    void TitleStarted(int player, const PlaylistEntry& entry, bool byHand);
    void FadedTo(int player);
    void Count(Heard& heard);
    void Stamp(const Heard& heard);
    void EndIfStopped(int player);
    void End(int player);

    Mixer& mixer_;
    Books books_;
    const Clock& clock_;
    QTimer timer3_;
    std::array<OnPlayer, 2> players_;
};

} // namespace kalvo
