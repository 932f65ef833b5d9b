#pragma once

#include "app/StartDecisions.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QRadioButton;

namespace kalvo {

/**
 * The start option dialog: the main program (`Option1`) or the separate player program (`Option2`). Accepted by its
 * button `MyButton1`; closing it any other way chooses nothing.
 */
class frmStart : public QDialog {
    Q_OBJECT

public:
    /** documents: the folder that holds the data folder, shown in `Label19`. */
    frmStart(const QString& documents, const PlayerOffer& offer, QWidget* parent = nullptr);

    /** Whether the separate player program is chosen. */
    bool IsPlayerChosen() const;

private:
    void Compose();

    QRadioButton* program_; ///< `Option1`
    QRadioButton* player_;  ///< `Option2`
    QLabel* reason_;        ///< `Label2`
    QLabel* documents_;     ///< `Label19`
    QPushButton* start_;    ///< `MyButton1`
};

} // namespace kalvo
