#pragma once

#include "widgets/ButtonPainting.h"

#include <QPushButton>

namespace kalvo {

/** A push button with an icon and a short text or none, painted; switched on it is filled. Tab reaches it. */
class IconButton : public QPushButton {
    Q_OBJECT

public:
    enum class Size { Normal, Big };
    enum class IconSide { Left, Right };
    /** Warning: an amber edge also while it is off, for what can touch the programme by mistake. */
    enum class Fill { Highlight, Player1, Player2, Warning };

    IconButton(const QString& icon, Size size, QWidget* parent = nullptr);

    void SetIconName(const QString& icon);
    void SetIconSide(IconSide side);
    void SetFill(Fill fill);
    /** A big button of a low console. */
    void SetLow(bool low);
    /** The look of a switched-on button; independent of being pressed. */
    void SetOn(bool on);
    bool IsOn() const { return on_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int IconSize() const;
    ButtonColours Colours(QStyle::State state) const;

    QString icon_;
    Size size_;
    IconSide side_ = IconSide::Left;
    Fill fill_ = Fill::Highlight;
    bool on_ = false;
    bool low_ = false;
};

} // namespace kalvo
