#pragma once

#include <QAbstractButton>

namespace kalvo {

/**
 * A pad of the sampler: sounds from the press to the release, wherever the pointer is then; by mouse, touch or the
 * space bar. A click without them, as assistive programs give it, begins the hold and the next one ends it. Shows its
 * number, its title and, while it sounds, how far it is.
 */
class PadButton : public QAbstractButton {
    Q_OBJECT

public:
    /** wide: a low pad over the whole width, number and title in one line. */
    PadButton(int pad, bool wide, QWidget* parent = nullptr);

    /** An empty title with assigned: the pad has a sound without a name. */
    void SetSlot(const QString& title, bool assigned);
    /** progress: 0..1, shown while held. */
    void SetHeld(bool held, double progress);
    /** Ends the press that this pad itself has seen. */
    void Release();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void HoldBegan(int pad);
    void HoldEnded(int pad);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Begin();
    void PaintTexts(QPainter& painter, const QRect& body, const QColor& ink) const;

    int pad_;
    bool wide_;
    bool assigned_ = false;
    bool pressed_ = false; ///< by this widget's own input
    bool held_ = false;
    double progress_ = 0;
};

} // namespace kalvo
