#pragma once

#include "app/OptionPage.h"

#include <QTimer>

namespace kalvo {

class LevelRow;
class MeterDisplay;

/** Levels, and style and colour of their meter, with a preview that moves by itself. */
class OptionMeterPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionMeterPage(QWidget* parent = nullptr);

    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void ShowStyle();
    void MovePreview();
    LevelRow* AddLevel(const QString& name, const QString& caption);
    void AddColour(const QString& name, int colour);

    LevelRow* volume_;
    LevelRow* reduction_;
    LevelRow* microphone_;
    QComboBox* style_;
    QComboBox* colour_; ///< item data: the colour number
    MeterDisplay* preview_;
    QTimer moving_;
    int moment_ = 0; ///< of the preview, counted in its steps
};

} // namespace kalvo
