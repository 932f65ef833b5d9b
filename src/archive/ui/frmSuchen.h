#pragma once

#include "archive/ArchiveField.h"

#include <QDialog>

#include <array>

class QBoxLayout;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kalvo {

class Archive;
class ArchivePanel;
class ElidedLabel;

/**
 * The search dialog. It shows in the archive grid the titles whose chosen field contains a text, or, in step mode, goes
 * through the rows on show to the next one whose "Interpret - Titel" contains it. Modeless; both answer at once.
 */
class frmSuchen : public QDialog {
    Q_OBJECT

public:
    /** Both outlive the dialog. */
    frmSuchen(Archive& archive, ArchivePanel& panel, QWidget* parent = nullptr);

private:
    struct FieldBox {
        QCheckBox* box = nullptr;
        ArchiveField field = ArchiveField::Titel;
    };

    QBoxLayout* BuildFields();
    QBoxLayout* BuildResult();
    QBoxLayout* BuildButtons();
    void KeepExclusive(const QCheckBox* ticked);
    void ShowMode();

    void Search(bool onward);
    void SearchDatabase();
    void SearchRows(bool onward);
    void GoTo(int row);
    void ShowFound();
    void ShowCurrent();
    void SetRunning(bool running);

    Archive& archive_;
    ArchivePanel& panel_;
    QLineEdit* text_;                ///< `Text1`
    std::array<FieldBox, 6> fields_; ///< `Check2` `Check1` `Check4` to `Check7`, in the order they are tested
    QCheckBox* steps_;               ///< `Check3`
    QPushButton* search_;            ///< `Command2`
    QPushButton* onward_;            ///< `Command3`
    QPushButton* previous_;          ///< `Command4`
    QPushButton* next_;              ///< `Command5`
    QLabel* count_;                  ///< `lblTitelAnzahl`
    ElidedLabel* current_;           ///< `lblTitel`
    bool searching_ = false;
    QString shownSource_; ///< the record source whose count is shown
};

} // namespace kalvo
