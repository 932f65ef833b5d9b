#include "live/ui/PadButton.h"

#include "widgets/ButtonPainting.h"
#include "widgets/PlainTip.h"
#include "widgets/SkinStyle.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QTextOption>

#include <algorithm>
#include <utility>

namespace kalvo {

namespace {

constexpr int kSmallerBy = 4; ///< pixels at most

/** Rather somewhat smaller than a word in two lines. */
QFont TitleFont(const QString& title, int width) {
    const QStringList words = title.split(u' ');
    QFont font = SkinStyle::Units().Font();
    for (const int least = font.pixelSize() - kSmallerBy; font.pixelSize() > least;
         font.setPixelSize(font.pixelSize() - 1)) {
        const QFontMetrics metrics(font);
        if (std::all_of(words.begin(), words.end(),
                        [&](const QString& word) { return metrics.horizontalAdvance(word) < width; }))
            break;
    }
    return font;
}

} // namespace

PadButton::PadButton(int pad, bool wide, QWidget* parent) : QAbstractButton(parent), pad_(pad), wide_(wide) {
    setObjectName(QStringLiteral("cmdSample%1").arg(pad));
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_AcceptTouchEvents);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, wide ? QSizePolicy::Fixed : QSizePolicy::Expanding);
    connect(this, &QAbstractButton::clicked, this, [this] { pressed_ ? Release() : Begin(); });
    SetSlot({}, false);
}

void PadButton::SetSlot(const QString& title, bool assigned) {
    assigned_ = assigned;
    setText(assigned ? title : QStringLiteral("Kein Sample zugewiesen"));
    setShortcut({}); // "&" is a letter of the title's
    setAccessibleName(QStringLiteral("Sample %1: %2").arg(pad_).arg(text()));
    setToolTip(PlainTip(text()));
    update();
}

void PadButton::SetHeld(bool held, double progress) {
    if (held == held_ && progress == progress_)
        return;
    held_ = held;
    progress_ = progress;
    update();
}

QSize PadButton::sizeHint() const {
    const FontUnits& units = SkinStyle::Units();
    return wide_ ? QSize(units.Of(20), units.BigButton() - units.G()) : QSize(units.Of(9.4), units.Of(7));
}

void PadButton::Begin() {
    if (!std::exchange(pressed_, true))
        Q_EMIT HoldBegan(pad_);
}

void PadButton::Release() {
    if (std::exchange(pressed_, false))
        Q_EMIT HoldEnded(pad_);
}

bool PadButton::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::TouchBegin:
        Begin();
        return true;
    case QEvent::TouchUpdate:
        return true;
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        Release();
        return true;
    case QEvent::UngrabMouse: // a menu or a drag has taken the pointer
        Release();
        break;
    default:
        break;
    }
    return QAbstractButton::event(event);
}

void PadButton::mousePressEvent(QMouseEvent* event) {
    event->button() == Qt::LeftButton ? Begin() : event->ignore();
}

void PadButton::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        Release();
}

void PadButton::mouseMoveEvent(QMouseEvent* event) {
    event->accept(); // the pad stays held outside of it, and its window is not dragged
}

void PadButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space)
        QAbstractButton::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        Begin();
}

void PadButton::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space)
        QAbstractButton::keyReleaseEvent(event);
    else if (!event->isAutoRepeat())
        Release();
}

void PadButton::focusOutEvent(QFocusEvent* event) {
    Release();
    QAbstractButton::focusOutEvent(event);
}

void PadButton::hideEvent(QHideEvent* event) {
    Release();
    QAbstractButton::hideEvent(event);
}

void PadButton::paintEvent(QPaintEvent* /*event*/) {
    const FontUnits& units = SkinStyle::Units();
    QPainter painter(this);
    const QRect body = rect().adjusted(focusRingMargin, focusRingMargin, -focusRingMargin, -focusRingMargin);
    QStyleOption option;
    option.initFrom(this);
    option.state.setFlag(QStyle::State_On, held_);
    const ButtonColours colours = ColoursOf(option.state);
    if (assigned_) {
        PaintButton(painter, body, colours);
    } else {
        painter.setPen(QPen(SkinStyle::Colours().edge, 1, Qt::DashLine));
        painter.drawRoundedRect(QRectF(body).adjusted(0.5, 0.5, -0.5, -0.5), units.Corner(), units.Corner());
    }
    PaintTexts(painter, body, colours.ink);
    if (held_) {
        const int done = qRound(body.width() * progress_);
        painter.fillRect(QRect(body.left(), body.bottom() - units.G() + 1, done, units.G()), colours.ink);
    }
    if (hasFocus())
        PaintFocusRing(painter, body);
}

void PadButton::PaintTexts(QPainter& painter, const QRect& body, const QColor& ink) const {
    const FontUnits& units = SkinStyle::Units();
    const QColor quiet = held_ ? ink : SkinStyle::Colours().dim;
    const QRect inner = body.adjusted(units.Gap(1.5), units.Gap(1.5), -units.Gap(1), -units.Gap(2));
    painter.setFont(units.Font(1.25, true));
    painter.setPen(quiet);
    painter.drawText(inner, Qt::AlignLeft | (wide_ ? Qt::AlignVCenter : Qt::AlignTop), QString::number(pad_));
    const QRect place = wide_ ? inner.adjusted(units.Of(2.2), 0, 0, 0) : inner.adjusted(0, units.Of(1.7), 0, 0);
    painter.setFont(wide_ ? units.Font() : TitleFont(text(), place.width()));
    painter.setPen(assigned_ ? ink : quiet);
    QTextOption option(Qt::AlignLeft | (wide_ ? Qt::AlignVCenter : Qt::AlignBottom));
    option.setWrapMode(wide_ ? QTextOption::NoWrap : QTextOption::WrapAtWordBoundaryOrAnywhere);
    painter.drawText(place, text(), option);
}

} // namespace kalvo
