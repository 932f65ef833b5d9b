#pragma once

#include "playback/EqualiserSettings.h"

#include <QDialog>

class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;

namespace kalvo {

class BandSlider;
class CheckButton;

/**
 * The equaliser of both players: ten bands, reverb, a switch, presets. It only edits the settings; what is heard and
 * kept is its owner's. Modeless. Controls by objectName: `EQStatus`, `cboVorlage`, `cmdNeutral`, `cmdSchliessen`, the
 * sliders `Band80` … `Band16000` (-10 to 10, 1.5 dB a step) and `Hall` (0, dry, to 20).
 */
class frmEqualizer : public QDialog {
    Q_OBJECT

public:
    explicit frmEqualizer(QWidget* parent = nullptr);

    /** Tells nothing. */
    void Show(const EqualiserSettings& settings);
    const EqualiserSettings& Shown() const { return shown_; }

Q_SIGNALS:
    /** By the user; Shown() holds it. */
    void Changed();

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Column {
        BandSlider* slider;
        QLabel* value;
    };

    QWidget* BuildHead();
    QWidget* BuildBands();
    QLayout* BuildButtons();
    Column AddColumn(QGridLayout& grid, int column, const QString& name, const QString& caption, const QString& spoken);
    void ConnectBands();
    void Change(const EqualiserSettings& settings);
    void ChoosePreset(int index);
    void ApplyLook();

    EqualiserSettings shown_;
    CheckButton* status_ = nullptr;
    QComboBox* presets_ = nullptr; ///< its last item stands for no preset
    std::array<Column, kEqualiserBands> bands_{};
    Column reverb_{};
    QPushButton* neutral_ = nullptr;
    QPushButton* close_ = nullptr;
};

} // namespace kalvo
