#pragma once

#include "archive/CategoryBuild.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kalvo {

/**
 * Builds the category lists and shows how far it is. Modeless; cancelling, or closing the window, leaves the lists as
 * they were. Closes by itself when the lists are written; a failure stays to be read.
 */
class frmExplorer : public QDialog {
    Q_OBJECT

public:
    /** The archive outlives the dialog. */
    frmExplorer(Archive& archive, const DataFolder& folder, QWidget* parent = nullptr);
    ~frmExplorer() override;

    /** Ignored while it builds. */
    void Start();

    void reject() override;

Q_SIGNALS:
    /** The five files are written. */
    void Built();

private:
    void ShowProgress(int percent);
    void End(CategoryBuild::Outcome outcome, const QString& reason);

    CategoryBuild* build_;
    QLabel* text_;           ///< `Label1`
    QProgressBar* progress_; ///< `ProgressBar1`
    QPushButton* cancel_;    ///< `Command1`
};

} // namespace kalvo
