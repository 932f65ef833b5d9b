#pragma once

#include "live/JinglePlayer.h"

#include <QDialog>

class QLabel;
class QProgressBar;

namespace kalvo {

class ElidedLabel;
class IconButton;

/** A scheduled file that plays: how far it is, and the button that stops it. Takes no focus; hides at its end. */
class frmJingleAnzeige : public QDialog {
    Q_OBJECT

public:
    /** The player outlives the window. */
    frmJingleAnzeige(JinglePlayer& player, QWidget* parent = nullptr);

    /** What plays now. To be called while the window is shown. */
    void Refresh();

protected:
    void changeEvent(QEvent* event) override;

private:
    void TakeUnits();

    JinglePlayer& player_;
    ElidedLabel* path_;
    QProgressBar* progress_;
    QLabel* time_;
    IconButton* stop_;
};

} // namespace kalvo
