#pragma once

#include "playback/HeadphonePlayer.h"
#include "playback/TitlePictures.h"

#include <QDialog>
#include <QTimer>

#include <memory>

class QLabel;
class QSlider;

namespace kalvo {

class ElidedLabel;
class IconButton;
class LevelBar;
class PositionSlider;
class Settings;
class TimeLabel;

/** What is to be heard, and where it comes from. */
struct HeadphoneTitle {
    QString title;
    QString artist;
    QString path;
    int source = 0;    ///< 0: archive or player; 1 or 2: that playlist
    quint64 entry = 0; ///< id of the entry in the playlist
    double cue = -1;   ///< seconds, negative = none
};

/**
 * Headphone pre-listening on the second sound card, with the search for a cue point. The card belongs to the window
 * from its first title until it goes. Modeless; there is one, and it takes every further title.
 */
class frmKopfhoerer : public QDialog {
    Q_OBJECT

public:
    /** Layer and settings outlive the window. */
    frmKopfhoerer(AudioLayer& layer, Settings& settings, QWidget* parent = nullptr);
    ~frmKopfhoerer() override;

    /** Titles are shown with their waveforms from now on. cacheFolder: where measured ones are kept. */
    void ShowWaves(const QString& cacheFolder);
    /** Shows and plays it. Where there is no card for it the user is told, and the window stays without sound. */
    void Listen(const HeadphoneTitle& title);
    /** Of the title that is shown: changed in the playlist by somebody else; negative for none. */
    void ShowCue(double cue);
    const HeadphoneTitle& Title() const { return title_; }

Q_SIGNALS:
    /** The title's place in its playlist shall hold this cue point, in the form of CueText; empty for none. */
    void CueWanted(const kalvo::HeadphoneTitle& title, const QString& cue);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Parts;

    void NameControls();
    void Arrange();
    void ApplyLook();
    void ConnectTransport();
    void ConnectSteps(IconButton& button, QTimer& repeat, int direction);
    void ConnectPoints();
    bool OpenCard();
    void SetVolume(int volume);
    void ShowState();
    void ShowPosition();
    void Tell(const QString& text);

    Settings& settings_;
    HeadphonePlayer player_;
    HeadphoneTitle title_;
    std::unique_ptr<TitlePictures> pictures_; ///< none: without waveforms
    std::unique_ptr<Parts> parts_;
    QTimer timer1_{this}; ///< position
    QTimer timer2_{this}; ///< repeats the step back
    QTimer timer3_{this}; ///< repeats the step forwards
};

} // namespace kalvo
