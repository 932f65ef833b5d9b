#pragma once

#include "playback/DeckTitles.h"
#include "playback/PreListenMode.h"

#include <QObject>
#include <QTimer>

namespace kalvo {

class Mixer;

/**
 * Pre-listening of an archive title on the main output: what runs is faded out within three seconds (`Timer7`), then
 * the title plays on Player 1 with the fader on its side. When it ends, or is stopped, the music that ran before goes
 * on. Play on the player that is being faded out, or a fade by hand, calls it off; music that is started meanwhile ends
 * it. UI thread; the mixer outlives this.
 */
class PreListening : public QObject {
    Q_OBJECT

public:
    static constexpr int steps = 100;
    static constexpr int interval = 30; ///< ms a step

    explicit PreListening(Mixer& mixer, QObject* parent = nullptr);

    /**
     * Asks for a title (its names and path). While another one is being waited for this takes its place, and the fade
     * goes on. A missing file is told by FileMissing and changes nothing.
     */
    void Ask(const DeckTitle& title);
    /** One step of `Timer7`. */
    void Tick();
    /** Back to the music, in either phase. Nothing otherwise. */
    void End();
    /** Ends without touching players and music: somebody else listens on. */
    void Abandon();

    /** The music is being faded out. */
    bool IsFading() const { return timer7_.isActive(); }
    bool IsPlaying() const { return playing_; }
    /** The players' source marker: "Probehoeren" while the title is on Player 1, else "Player". */
    QString Source() const;
    PreListenMode Mode() const { return mode_; }

    /** Caption of Player 1 meanwhile; the blanks belong to it. */
    static QString Caption();
    /** What stands in the place of the artist where the file is not there. */
    static QString MissingText();

Q_SIGNALS:
    /** The title is about to play: what counts plays or plays through a list has to stop. */
    void Beginning();
    /** IsFading, IsPlaying or Source has changed. */
    void Changed();
    void FileMissing();
    /** One line for the status bar. */
    void Told(const QString& text);

private:
    bool Begin();
    void StopFading();
    void Look();
    void FadedTo(int player);

    Mixer& mixer_;
    QTimer timer7_{this};
    DeckTitle title_;
    PreListenMode mode_ = PreListenMode::KeinPlayer;
    int counter_ = 0; ///< steps of the fade done, 0..100
    int faded_ = 0;   ///< player, 0 for none
    bool playing_ = false;
};

} // namespace kalvo
