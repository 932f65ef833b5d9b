#pragma once

#include <QWidget>

class QLabel;

namespace kalvo {

class ElidedLabel;

/** The splash: sign and version of the program, and what the start is doing. Shown until the main window is there. */
class frmHallo : public QWidget {
    Q_OBJECT

public:
    /** version: "major.minor.revision". */
    explicit frmHallo(const QString& version, QWidget* parent = nullptr);

    /** Painted at once, since the start leaves no time for events. */
    void SetProgress(const QString& text);

protected:
    /** Makes room as soon as the start has to ask something. */
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* version_;       ///< `lblVersion`
    ElidedLabel* progress_; ///< `lblFortschritt`
};

} // namespace kalvo
