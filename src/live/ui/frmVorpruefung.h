#pragma once

#include "live/PreshowFinding.h"

#include <QDateTime>
#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace kalvo {

class Clock;
class ElidedLabel;
class IconButton;
class PreshowCheck;

/**
 * The page of the pre-show check: a verdict, and what was found, by severity. A line that leads somewhere is followed
 * by a click or Enter. Modeless; closing it ends a running check. Controls by objectName: `lblUrteil`, `lblStand`,
 * `ProgressBar1`, `Befunde`, `cmdPruefen`, `cmdAbbrechen`, `cmdKopieren`, `cmdSchliessen`.
 */
class frmVorpruefung : public QDialog {
    Q_OBJECT

public:
    /** Both outlive the window. */
    frmVorpruefung(PreshowCheck& check, const Clock& clock, QWidget* parent = nullptr);
    ~frmVorpruefung() override;

Q_SIGNALS:
    void TargetChosen(const kalvo::PreshowTarget& target);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void NameControls();
    void Arrange();
    void Connect();
    void ShowState();
    void ShowVerdict();
    void ShowFindings();
    void FitRows();
    void ShareWidth();
    void Follow(const QTreeWidgetItem* item);
    void CopyReport();
    void ApplyLook();
    void Restyle();

    PreshowCheck& check_;
    const Clock& clock_;
    QList<PreshowFinding> shown_;
    PreshowFinding chosen_; ///< stays chosen, also when it comes again
    QDateTime checkedAt_;   ///< when the last check ended; invalid: none has yet
    QLabel* sign_;
    QLabel* verdict_;
    ElidedLabel* state_;
    QProgressBar* bar_;
    QTreeWidget* findings_;
    QPushButton* copy_;
    QPushButton* close_;
    QPushButton* cancel_;
    IconButton* again_;
};

} // namespace kalvo
