#pragma once

#include "app/OptionPage.h"

namespace kalvo {

class IconButton;

/** Sound cards of players and headphones, each with a test tone, and the size of the output's buffer. */
class OptionSoundPage : public OptionPage {
    Q_OBJECT

public:
    /** devices: names of all output devices from number 0 on. */
    explicit OptionSoundPage(const QStringList& devices, QWidget* parent = nullptr);

    void Show(const OptionValues& values) override;
    void Take(OptionValues& values) const override;

    /** What has become of the test tone; empty: it plays. */
    void ShowToneResult(const QString& text);

Q_SIGNALS:
    void ToneRequested(int device);

private:
    QComboBox* AddDevice(const QString& name, const QString& caption, const QString& toneName);
    static void ShowDevice(QComboBox& list, const OutputChoice& choice);
    static OutputChoice TakeDevice(const QComboBox& list);

    QStringList devices_;
    QComboBox* output_;
    QComboBox* headphones_;
    QComboBox* buffer_;
    QLabel* result_;
};

} // namespace kalvo
