#pragma once

#include "archive/LastPlayed.h"

#include <QDialog>

namespace kalvo {

class TextTableModel;

/** How many titles of the archive were played lately, and how many never. Modeless. */
class frmZuletztCount : public QDialog {
    Q_OBJECT

public:
    explicit frmZuletztCount(QWidget* parent = nullptr);

    void Show(const LastPlayedCounts& counts);

private:
    TextTableModel* model_;
};

} // namespace kalvo
