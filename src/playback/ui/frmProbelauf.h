#pragma once

#include "playback/JointPlayer.h"
#include "playback/Rehearsal.h"
#include "playback/ui/JointModel.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace kalvo {

class Clock;
class Settings;

/**
 * The rehearsal of the night: all hand-overs to come as rows, and each to be listened to alone, on the headphones'
 * card. Modeless; closing it ends what is rendered and played. Controls by objectName: `lblStand`, `ProgressBar1`,
 * `Uebergaenge`, `lblUebergang`, `Slider1`, `cmdVorheriger`, `cmdAnhoeren`, `cmdNaechster`, `cmdAlle`, `spnVorlauf`,
 * `spnNachlauf`, `HScroll1`, `lblMeldung`, `cmdAbbrechen`, `cmdSchliessen`.
 */
class frmProbelauf : public QDialog {
    Q_OBJECT

public:
    struct Parts {
        Rehearsal& rehearsal;
        Mixer& mixer;
        Settings& settings;
        const Clock& clock;
        JointModel::TempoOf tempo;
    };
    /** All parts outlive the window. */
    explicit frmProbelauf(const Parts& parts, QWidget* parent = nullptr);
    ~frmProbelauf() override;

    /** A title's tempo has been found. */
    void RenewTempo() { model_.Renew(-1); }

Q_SIGNALS:
    /** The joint that the user looks at: what is not known of its titles is worth finding out. */
    void JointChosen(const QStringList& paths);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Controls;

    void NameControls();
    QLayout* BuildTransport();
    void Arrange();
    void Connect();
    void ApplyLook();
    void Fold();

    int Row() const;
    void Select(int row);
    void ShowPlan();
    void ShowProgress();
    void ShowJoint();
    void Choose();
    void ShowPosition();
    void Tell(const QString& text);

    void Toggle();
    void Listen(bool all);
    void TryToPlay();
    bool AskForMain(const QString& refusal);
    void StopListening();
    void GoOn();

    Parts parts_;
    JointModel model_;
    JointPlayer player_;
    std::unique_ptr<Controls> controls_;
    JointPlayer::Way way_ = JointPlayer::Way::Headphones;
    bool waiting_ = false; ///< for the sound of the chosen joint, to play it
    bool all_ = false;     ///< one joint after the other
    QTimer tick_;
    QTimer clock_; ///< while nothing plays, everything is later
};

} // namespace kalvo
