#pragma once

#include "live/JingleRecord.h"

#include <QDialog>

#include <array>

class QComboBox;
class QGridLayout;
class QTimeEdit;

namespace kalvo {

class CheckButton;
class ElidedLabel;
class IconButton;

/** The editor of one scheduled file: the file, its five times, whether it is active and whether it waits. */
class frmTerminPlay : public QDialog {
    Q_OBJECT

public:
    /** folder: where files are looked for first. */
    frmTerminPlay(const JingleRecord& record, const QString& folder, QWidget* parent = nullptr);

    /** Takes the file; one whose path is too long for its field is refused with a message. */
    void Choose(const QString& path);
    /** The record as it stands in the window. */
    JingleRecord Edited() const;

public Q_SLOTS:
    /** Refuses, with a message, what could never play: active without a file, weekly without a weekday. */
    void accept() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    struct SlotRow {
        QComboBox* mode;    ///< `Combo2`
        QComboBox* weekday; ///< `Combo4`
        QTimeEdit* time;    ///< `combo3`
    };

    QGridLayout* BuildSlots();
    SlotRow AddSlot(QGridLayout& grid, int slot);
    void ShowSlot(const SlotRow& row, const JingleSlot& slot);
    void EnableRow(const SlotRow& row) const;
    void ShowPath();
    void AskForFile();
    void TakeUnits();
    void Tell(const QString& text);

    JingleRecord record_;
    QString folder_;
    ElidedLabel* path_;
    CheckButton* active_;
    CheckButton* afterTitle_;
    std::array<SlotRow, JingleRecord::kSlots> rows_{};
    IconButton* accept_ = nullptr;
};

} // namespace kalvo
