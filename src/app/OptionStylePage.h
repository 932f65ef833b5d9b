#pragma once

#include "app/OptionPage.h"

namespace kalvo {

/** Skin, font size and button size; every choice is shown at once. */
class OptionStylePage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionStylePage(QWidget* parent = nullptr);

    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

Q_SIGNALS:
    /** The user has chosen another look. */
    void Chosen();

private:
    QComboBox* skin_;
    QComboBox* fontSize_;
    QComboBox* buttonSize_; ///< item data: the value that is kept
};

} // namespace kalvo
