#pragma once

#include <QWidget>

class QSlider;

namespace kalvo {

class TimeLabel;

/** A level of 0 to 100 as a slider with its percentage beside it. */
class LevelRow : public QWidget {
    Q_OBJECT

public:
    /** The slider gets the names. */
    LevelRow(const QString& name, const QString& accessibleName, QWidget* parent = nullptr);

    int Value() const;
    void SetValue(int value);

protected:
    void changeEvent(QEvent* event) override;

private:
    void ApplyLook();

    QSlider* slider_;
    TimeLabel* text_;
};

} // namespace kalvo
