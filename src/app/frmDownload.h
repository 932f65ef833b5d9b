#pragma once

#include "app/ComponentFetch.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kalvo {

/**
 * The component download: starts at once, shows how far it is and how it ended. "Abbrechen", Esc and the close box give
 * up a running download; then, or after a failure, it can be tried again or closed.
 */
class frmDownload : public QDialog {
    Q_OBJECT

public:
    /** component: "wenzo" or "CDDB". */
    frmDownload(const ComponentSource& source, const QString& component, QWidget* parent = nullptr);

    /** Opens the dialog with what this program was built with, and waits. Whether the component has been installed. */
    static bool Run(const QString& component);

    bool Installed() const { return installed_; }
    void reject() override;

private:
    QLayout* BuildButtons();
    void Start();
    void ShowProgress(const QString& file, int percent);
    void ShowEnd(bool installed, const QString& message);

    ComponentFetch fetch_;
    QString component_;
    QLabel* text_;           ///< `Label1`
    QLabel* percent_;        ///< `Label2`
    QProgressBar* progress_; ///< `ProgressBar1`
    QPushButton* again_;     ///< `Command1`
    QPushButton* close_;     ///< `Command2`, cancels while something is being fetched
    bool running_ = false;
    bool installed_ = false;
};

} // namespace kalvo
