#pragma once

#include "widgets/Spoken.h"

#include <QPixmap>
#include <QWidget>

namespace kalvo {

/** A title's cover, whole and in the middle of its square; without one a dim note, so that nothing moves. */
class CoverView : public QWidget, public Spoken {
    Q_OBJECT

public:
    explicit CoverView(QWidget* parent = nullptr);

    /** Null: none. Repaints only when it is another one. */
    void SetPicture(const QPixmap& picture);

    QAccessible::Role SpokenRole() const override { return QAccessible::Graphic; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap picture_;
    QPixmap scaled_; ///< for the size of the moment; null: to be made
};

} // namespace kalvo
