#pragma once

#include "app/OptionValues.h"

#include <QDialog>

class QListWidget;
class QPushButton;
class QStackedWidget;

namespace kalvo {

class IconButton;
class OptionPage;
class OptionSoundPage;
class OptionStylePage;

/**
 * The options dialog: a list of pages, `Command5` confirms. It only edits values; reading, writing and applying them
 * is its owner's. Modeless: music is mixed on while it is open.
 */
class frmOptionen : public QDialog {
    Q_OBJECT

public:
    /** devices: names of all output devices from number 0 on. */
    frmOptionen(const OptionValues& values, const QStringList& devices, QWidget* parent = nullptr);

    /** As they were when the dialog was opened. */
    const OptionValues& OpenedValues() const { return opened_; }
    /** As they are shown now. */
    OptionValues Values() const;
    /** An unknown caption leaves the page that is shown. */
    void ShowPage(const QString& caption);
    void ShowToneResult(const QString& text);

Q_SIGNALS:
    /** Another look is to be shown, for trying out; after a cancelled dialog the old one. */
    void LookChosen(const QString& skin, const QString& fontSize, const QString& buttonSize);
    /** A test tone is wanted on this device. */
    void ToneRequested(int device);

protected:
    void changeEvent(QEvent* event) override;

private:
    void AddPage(OptionPage* page);
    QWidget* BuildPages();
    QLayout* BuildButtons();
    void ApplyLook();
    void TakeLookBack();

    OptionValues opened_;
    QListWidget* list_;
    QStackedWidget* stack_;
    QList<OptionPage*> pages_;
    OptionSoundPage* sound_;
    OptionStylePage* style_;
    IconButton* confirm_ = nullptr; ///< `Command5`
    QPushButton* cancel_ = nullptr;
};

} // namespace kalvo
