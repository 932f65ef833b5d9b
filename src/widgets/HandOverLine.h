#pragma once

#include "widgets/Spoken.h"

#include <QWidget>

namespace kalvo {

/** What the hand-over line tells. */
struct HandOverView {
    enum class Kind { Off, Rest, Coming };
    Kind kind = Kind::Off;
    /** Coming: the player that takes over, 1 or 2. */
    int player = 0;
    /** Rest: seconds before the title's end at which it happens; Coming: seconds until it happens, at least 0. */
    int seconds = 0;

    bool operator==(const HandOverView&) const = default;
};

/** One line that announces the next hand-over, always at the same place and of the same height. */
class HandOverLine : public QWidget, public Spoken {
    Q_OBJECT

public:
    explicit HandOverLine(QWidget* parent = nullptr);

    void SetView(const HandOverView& view);
    /** brief: leaves the player out, for narrow panels. */
    void SetBrief(bool brief);
    QString Text() const;

    QAccessible::Role SpokenRole() const override { return QAccessible::StaticText; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void TakeName();

    HandOverView view_;
    bool brief_ = false;
};

} // namespace kalvo
