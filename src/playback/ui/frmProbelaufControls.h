#pragma once

#include "playback/ui/frmProbelauf.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/PositionSlider.h"
#include "widgets/VolumeSlider.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>

namespace kalvo {

/** What the window consists of; children of it. */
struct frmProbelauf::Controls {
    explicit Controls(frmProbelauf* window);

    QLabel* state;
    QProgressBar* bar;
    QTableView* table;
    ElidedLabel *titles, *facts;
    PositionSlider* position;
    IconButton *previous, *play, *next, *all;
    QSpinBox *before, *after;
    VolumeSlider* volume;
    ElidedLabel* message;
    QPushButton *cancel, *close;
};

} // namespace kalvo
