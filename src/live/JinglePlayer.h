#pragma once

#include "live/JingleScheduler.h"
#include "playback/Mixer.h"

#include <QObject>

#include <deque>
#include <optional>

namespace kalvo {

/**
 * Plays what is due on the main output, one file after the other, while both players run on in silence. Files are
 * opened in their own threads. UI thread; the mixer outlives it. Has no timer: the owner calls Tick() every 50 ms while
 * IsBusy().
 *
 * A file that waits for the end of the title starts as soon as the title that was on air when it came is not heard any
 * more. What had begun to play by then goes on afterwards where it was cut off.
 */
class JinglePlayer : public QObject {
    Q_OBJECT

public:
    explicit JinglePlayer(Mixer& mixer, QObject* parent = nullptr);
    ~JinglePlayer() override;

    void Add(const DueJingle& jingle);
    /** Ends the one that plays; what waits behind it comes next. */
    void Stop();
    void Tick();

    bool IsPlaying() const { return playing_.has_value(); }
    /** Something plays, opens or waits. */
    bool IsBusy() const { return playing_ || next_ || !waiting_.empty(); }
    /** Files that will follow the one that plays. */
    int Waiting() const { return static_cast<int>(waiting_.size()) + (next_ ? 1 : 0); }

    /** Of the one that plays; 0 and empty otherwise. Seconds. */
    double Position();
    double Length();
    QString Path() const { return playing_ ? playing_->jingle.path : QString(); }

Q_SIGNALS:
    void Started(const DueJingle& jingle);
    /** Nothing plays any more; the players are heard again. */
    void Ended();
    /** The file cannot be played; the players were not silenced for it. */
    void Failed(const QString& path);

private:
    /** A title on a player. */
    struct Heard {
        int player = 0; ///< 0: none
        QString path;
        double second = 0;
    };
    struct Entry {
        DueJingle jingle;
        Heard title; ///< waited for; afterwards the one that it interrupts
        audio::Handle stream = 0;
        int rounds = 0; ///< since its file has been opening
    };

    Heard OnAir();
    bool IsHeard(const Heard& title) const;
    void TakeNext();
    void Open(Entry entry);
    void LookAtNext();
    void Begin();
    void Finish();
    void DropNext();

    Mixer& mixer_;
    audio::AudioLibrary& audio_;
    std::deque<Entry> waiting_;
    std::optional<Entry> next_; ///< opened ahead
    std::optional<Entry> playing_;
};

} // namespace kalvo
