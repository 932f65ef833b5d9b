#pragma once

#include "app/MprisValues.h"

#include <QObject>
#include <QSet>
#include <QStringList>

namespace kalvo {

struct Desk;

/**
 * The desk's two players worked as one: what media keys and the desktop's player controls ask for goes to the player on
 * air. Nothing here takes a title back or starts one that is not due: a key pressed by accident must not be heard more
 * than it has to. UI thread.
 */
class DeskRemote : public QObject {
    Q_OBJECT

public:
    /** The desk outlives this. */
    explicit DeskRemote(Desk& desk, QObject* parent = nullptr);

    /** As it stands now; the cover is not known here. */
    DeskFacts Facts();
    /** Seconds of the title on air, 0 without one. */
    double Position() const;

    /** Goes on with what is paused, else starts the player on the fader's side; nothing while something plays. */
    void Play();
    /** Both players when both are mixed by hand; a fade that runs loses the title that it leaves. */
    void Pause();
    void PlayPause();
    void Stop();
    /**
     * With automatic mixing the hand-over to the other player, at once; else the next title on the same player. Nothing
     * while a fade or a pre-listening runs, or while nothing plays.
     */
    void Next();
    /** Seconds from where the title on air stands; beyond its end: the next title. */
    void SeekBy(double seconds);
    /** Only while that title is on air and has such a place. */
    void SeekTo(int track, double second);
    /** 0..1; what lies outside becomes the nearest. */
    void SetVolume(double volume);

Q_SIGNALS:
    /** The output's volume has been changed, 0..100. */
    void VolumeChanged(int volume);

private:
    bool IsPlaying(int player) const;
    bool HasNext(int player) const;
    bool IsFading() const;
    /** Whether the title on air hands over to the other player by itself. */
    bool HandsOver() const;
    void LookAtTitle(int player);

    Desk& desk_;
    QSet<int> paused_; ///< players that Pause() has paused
    int track_ = 0;
    int trackPlayer_ = 0;
    QString trackPath_;
    QString album_;
};

} // namespace kalvo
