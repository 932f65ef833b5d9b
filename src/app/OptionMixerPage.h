#pragma once

#include "app/OptionPage.h"

namespace kalvo {

/** Fades, and what becomes of titles before and after they play. */
class OptionMixerPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionMixerPage(QWidget* parent = nullptr);

    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

private:
    QComboBox* mode_;
    QComboBox* speed_;
    QSpinBox* switchOver_;
    QSpinBox* scan_;
    QCheckBox* removePlayed_;
    QCheckBox* preload_;
    QCheckBox* tagsIntoLists_;
    QCheckBox* cuePoints_;
    QCheckBox* evenLoudness_;
};

} // namespace kalvo
