#pragma once

#include "widgets/ElidedLabel.h"

namespace kalvo {

/** The head of a list: the player's number in its colour, the caption and when the list will be at its end. */
class PlaylistHeader : public QWidget {
    Q_OBJECT

public:
    /** number: 1 or 2; the caption's objectName is `Label16`, respectively `Label17`. */
    explicit PlaylistHeader(int number, QWidget* parent = nullptr);

    ElidedLabel& Caption() { return *caption_; }
    ElidedLabel& End() { return *end_; }
    /** Takes the present font size. */
    void TakeUnits();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int number_;
    ElidedLabel* caption_;
    ElidedLabel* end_;
};

} // namespace kalvo
