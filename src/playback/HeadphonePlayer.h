#pragma once

#include "playback/AudioLayer.h"
#include "playback/OutputChoice.h"

#include <QObject>

#include <optional>

namespace kalvo {

/**
 * One title on the headphone output, with a transport made for finding a cue point. The output is open from Open() to
 * the end of this and touches the main one in no way: where both would be the same card nothing plays. Positions in
 * seconds of the title, shown to a tenth. UI thread; has no timers, the owner calls Tick() about every 50 ms. The layer
 * outlives this.
 */
class HeadphonePlayer : public QObject {
    Q_OBJECT

public:
    enum class State : unsigned char { Stop, Play, Pause, HalfSpeed };

    static constexpr double step = 0.1; ///< seconds

    explicit HeadphonePlayer(AudioLayer& layer, QObject* parent = nullptr);
    ~HeadphonePlayer() override;

    /** Opens the chosen card. Why it cannot be, in German; empty when it is open. Waits five seconds at most. */
    QString Open(const OutputChoice& choice);
    bool IsOpen() const { return open_; }

    /** The file from now on; what played is stopped. */
    void Load(const QString& path);
    /** The same for a file in memory. */
    void Load(const audio::HeldFile& file);
    /** Plays: a paused title goes on, a stopped or running one starts from its start. */
    void Play();
    void Restart() { PlayFrom(0); }
    /** A new stream from this second on; its start when that is beyond the end. */
    void PlayFrom(double second);
    void Pause();
    void Stop();
    void Seek(double fraction);

    /** The title stands still while it is moved by steps, and goes on afterwards if it played. */
    void BeginSteps();
    /** direction: -1 or 1; stays within the title. */
    void Step(int direction);
    void EndSteps();
    /** About half the speed, also from a pause; afterwards the title is paused. */
    void BeginHalfSpeed();
    void EndHalfSpeed();

    /** Looks after file, title and card. */
    void Tick();

    State Now() const { return state_; }
    /** "play", "pause", "stop" or "0,5 speed"; "lädt" while the file opens. */
    QString StatusText() const;
    bool HasStream() const { return stream_ != 0 && !opening_; }
    double Position() const;
    /** 0 while it is not known. */
    double Length() const;
    /** Of the title, not touched by the volume. */
    audio::Levels Level() const;
    /** Of the output, 0..100. */
    void SetVolume(int volume);

    static QString NoCardText();

Q_SIGNALS:
    /** State or stream have changed. */
    void Changed();
    /** German, one line: what went wrong, or is well again. */
    void Told(const QString& text);

private:
    bool IsOnMainCard() const;
    void Start();
    void Free();
    void Become(State state);
    void AwaitStream(int milliseconds);
    void WatchCard();
    void MoveTo(double second);
    void SetSpeed(bool half);

    AudioLayer& layer_;
    audio::AudioLibrary& library_;
    OutputWatch watch_;
    QString path_;
    audio::HeldFile held_; ///< instead of the path
    audio::Handle stream_ = 0;
    double startAt_ = 0; ///< second, for the stream that opens
    State state_ = State::Stop;
    std::optional<double> stepped_; ///< position by steps, until the title runs again
    bool opening_ = false;
    bool open_ = false;
    bool shared_ = false; ///< it has been told that the music plays on this card
};

} // namespace kalvo
