#pragma once

#include "app/OptionPage.h"

namespace kalvo {

class LevelRow;

/** Levels, and style and colour of their meter. */
class OptionMeterPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionMeterPage(QWidget* parent = nullptr);

    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

private:
    LevelRow* AddLevel(const QString& name, const QString& caption);
    void AddColour(const QString& name, int colour);

    LevelRow* volume_;
    LevelRow* reduction_;
    LevelRow* microphone_;
    QComboBox* style_;
    QComboBox* colour_; ///< item data: the colour number
};

} // namespace kalvo
