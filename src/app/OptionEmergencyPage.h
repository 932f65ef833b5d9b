#pragma once

#include "app/OptionPage.h"

class QLineEdit;
class QPushButton;

namespace kalvo {

/** The title that plays when nothing else can. */
class OptionEmergencyPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionEmergencyPage(QWidget* parent = nullptr);

    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

private:
    void Ask();
    void ShowPath(const QString& path);

    QLineEdit* path_;
    QPushButton* remove_;
    QCheckBox* atListEnd_;
    QLabel* state_;
};

} // namespace kalvo
