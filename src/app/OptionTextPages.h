#pragma once

#include "app/OptionPage.h"

class QLineEdit;

namespace kalvo {

/** Password and keys of the screen saver. */
class OptionScreenSaverPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionScreenSaverPage(QWidget* parent = nullptr);
    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

private:
    QLineEdit* password_;
    QCheckBox* keys_;
};

/** How many titles the charts show. */
class OptionChartsPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionChartsPage(QWidget* parent = nullptr);
    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

private:
    QLineEdit* limit_;
};

/** The line of the title on air in "\meta.dat". */
class OptionMetadataPage : public OptionPage {
    Q_OBJECT

public:
    explicit OptionMetadataPage(QWidget* parent = nullptr);
    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

private:
    QLineEdit* AddText(const QString& name, const QString& caption);

    QLineEdit* alternative_;
    QLineEdit* stop_;
    QLineEdit* status_;
};

} // namespace kalvo
