#pragma once

#include "app/OptionPage.h"

class QCheckBox;

namespace kalvo {

/** Media keys, notifications and the desktop's screen saver. */
class OptionDesktopPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionDesktopPage(QWidget* parent = nullptr);

    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

private:
    QCheckBox* remote_;
    QCheckBox* staysAwake_;
    QCheckBox* warnings_;
    QCheckBox* titles_;
};

} // namespace kalvo
