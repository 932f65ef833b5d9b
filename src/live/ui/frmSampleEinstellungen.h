#pragma once

#include "live/SampleFile.h"
#include "live/SampleTrial.h"

#include <QDialog>
#include <QTimer>

#include <functional>

class QAction;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace kalvo {

/** The editor of the ten pads. Closing it hands all of them over; modeless. */
class frmSampleEinstellungen : public QDialog {
    Q_OBJECT

public:
    struct Parts {
        audio::AudioLibrary& audio;
        QString folder;                               ///< where the sounds are looked for
        std::function<bool(const SampleSlots&)> save; ///< false: could not be written
    };
    frmSampleEinstellungen(const SampleSlots& slots, const Parts& parts, QWidget* parent = nullptr);
    ~frmSampleEinstellungen() override;

    /** A file for the selected pad; its name becomes the title. One whose path is too long is refused. */
    void Choose(const QString& path);
    /** Empties the selected pad. */
    void SampleLoeschen();

public Q_SLOTS:
    void done(int result) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void BuildList(const SampleSlots& slots);
    QHBoxLayout* BuildButtons();
    void TakeUnits();
    void ShowSelected();
    void TakeTitle(const QString& title);
    void TakePath(const QString& path);
    void EndPath();
    void AskForFile();
    void TestPlay();
    void Tick();
    void ShowTest();
    bool Refuse(const QString& path);
    SampleSlots Slots() const;

    Parts parts_;
    SampleTrial trial_;
    QTimer* ticks_;
    QTreeWidget* list_;
    QLineEdit* title_;
    QLineEdit* path_;
    QPushButton* test_ = nullptr;
    QPushButton* stop_ = nullptr;
    QAction* clear_;
};

} // namespace kalvo
