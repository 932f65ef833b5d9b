#pragma once

#include <QStatusBar>

class QLabel;

namespace kalvo {

class ElidedLabel;

/** The main window's last line: how the desk mixes, what has happened, where the sound goes. */
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    void SetMode(const QString& caption);
    void SetContinuous(const QString& caption);
    void SetAutomatic(const QString& caption);
    /** How often the sound has been interrupted since the start. */
    void SetStarvations(quint64 count);
    /** Name of the output device. */
    void SetOutput(const QString& name);
    /** Stays until the next one, with the time it came in front. */
    void Tell(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void TakeUnits();
    QLabel* Part(const QString& name, const QString& accessibleName);

    QLabel* mode_;
    QLabel* continuous_;
    QLabel* automatic_;
    QLabel* starvations_;
    ElidedLabel* message_;
    QLabel* output_;
};

} // namespace kalvo
