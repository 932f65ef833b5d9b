#pragma once

#include "live/ComingJingle.h"

#include <QWidget>

namespace kalvo {

class ElidedLabel;
class TimeLabel;

/** The scheduled file that plays next, and how long it is until then, in one line. */
class JingleLine : public QWidget {
    Q_OBJECT

public:
    explicit JingleLine(QWidget* parent = nullptr);

    /** To be called once a second while the line is seen. Nothing scheduled is told calmly. */
    void Show(const std::optional<ComingJingle>& next, const QDateTime& now);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ApplyLook();

    ElidedLabel* name_;
    TimeLabel* time_;
    std::optional<ComingJingle> shown_;
};

} // namespace kalvo
