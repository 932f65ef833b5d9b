#pragma once

#include "widgets/Spoken.h"

#include <QWidget>

namespace kalvo {

class ElidedLabel;
class IconButton;

/** A line over the whole window for what must not be missed: stays until it is closed or over. Hidden at first. */
class NoticeBar : public QWidget, public Spoken {
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr);

    void Show(const QString& text);

    QAccessible::Role SpokenRole() const override { return QAccessible::AlertMessage; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void TakeUnits();

    ElidedLabel* text_;
    IconButton* close_;
};

} // namespace kalvo
