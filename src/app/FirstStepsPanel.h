#pragma once

#include "app/FirstStepsState.h"

#include <QScrollArea>

#include <array>

class QFrame;
class QLabel;
class QPushButton;

namespace kalvo {

class ElidedLabel;
class IconButton;

/**
 * The guide of the first start, in the archive's place: three steps side by side, the next one stands out. Scrolls
 * where a large font leaves no room.
 */
class FirstStepsPanel : public QScrollArea {
    Q_OBJECT

public:
    explicit FirstStepsPanel(QWidget* parent = nullptr);

    void Show(const FirstStepsState& state);

Q_SIGNALS:
    /** step: 0 to 2; other: its second button. */
    void Chosen(int step, bool other);
    void CloseRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Card {
        QFrame* frame;
        QLabel* number;
        ElidedLabel* title;
        QLabel* hint;
        IconButton* button;
        QPushButton* other;
        FirstStepView view;
    };

    Card MakeCard(int step);
    void ApplyLook();
    /** Where there is no room for all, the heading goes first, then the hints. */
    void FitRoom();

    QWidget* page_;
    ElidedLabel* heading_;
    IconButton* close_;
    std::array<Card, 3> cards_;
    int next_ = 0;
};

} // namespace kalvo
