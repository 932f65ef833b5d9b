#pragma once

#include "base/Settings.h"
#include "live/Sampler.h"

#include <QDialog>
#include <QPoint>
#include <QTimer>

#include <array>

class QFrame;
class QLabel;

namespace kalvo {

class PadButton;
class VolumeSlider;

/**
 * The pad window: ten pads as the numeric keypad has them, and the level reduction. Stays on top and can be dragged
 * from anywhere that is no control. Closing it ends the sound and stores the reduction.
 */
class frmSample : public QDialog {
    Q_OBJECT

public:
    /** Both outlive the window. */
    frmSample(Sampler& sampler, Settings& settings, QWidget* parent = nullptr);
    ~frmSample() override;

    /** The stored level reduction in percent, 50 when there is none. */
    static int StoredReduction(const Settings& settings);

Q_SIGNALS:
    void SettingsRequested();

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QFrame* BuildPads();
    QLayout* BuildFoot();
    void TakeUnits();
    void End();
    void ShowSlots();
    void ShowHeld();
    void ShowReduction(int percent);

    Sampler& sampler_;
    Settings& settings_;
    std::array<PadButton*, kSamplePads> pads_{};
    VolumeSlider* slider_ = nullptr;
    QLabel* percent_ = nullptr;
    QTimer* timer1_; ///< progress of the held pad
    QPoint dragged_; ///< pointer within the window's frame while it is dragged
    bool dragging_ = false;
};

} // namespace kalvo
