#pragma once

#include <QDialog>

#include <functional>
#include <vector>

class QLabel;
class QProgressBar;
class QPushButton;
class QRadioButton;

namespace kalvo {

class TempoRun;

/**
 * Measures beats per minute and loudness of archive titles in the background, with progress. Modeless; closing it ends
 * the run. Controls by objectName: `optMarkierte`, `optAlle`, `ProgressBar1`, `lblProzent`, `lblStand`, `cmdMessen`,
 * `cmdAbbrechen`.
 */
class frmMessen : public QDialog {
    Q_OBJECT

public:
    /** Each gives the numbers of titles when the run begins. */
    using Titles = std::function<std::vector<qint64>()>;

    /** The run outlives the window. */
    frmMessen(TempoRun& run, Titles marked, Titles all, QWidget* parent = nullptr);
    ~frmMessen() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    QLayout* BuildButtons();
    void Begin();
    void ShowState();
    void ApplyLook();

    TempoRun& run_;
    Titles marked_;
    Titles all_;
    QRadioButton* onlyMarked_;
    QRadioButton* everything_;
    QProgressBar* bar_;
    QLabel* percent_;
    QLabel* state_;
    QPushButton* begin_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

} // namespace kalvo
