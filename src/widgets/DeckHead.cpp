#include "widgets/DeckHead.h"

#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QPainter>

namespace kalvo {

namespace {

bool IsFilled(DeckSignal deckSignal) {
    return deckSignal == DeckSignal::OnAir || deckSignal == DeckSignal::Muted;
}

QColor Ink(DeckSignal deckSignal) {
    const Skin& skin = SkinStyle::Colours();
    switch (deckSignal) {
    case DeckSignal::OnAir:
        return skin.onAirInk;
    case DeckSignal::Muted:
        return skin.warningFillInk;
    case DeckSignal::Paused:
        return skin.warning;
    case DeckSignal::Ready:
        return skin.cued;
    case DeckSignal::Running:
    case DeckSignal::None:
        break;
    }
    return skin.text;
}

Tone StatusTone(DeckSignal deckSignal) {
    if (deckSignal == DeckSignal::OnAir)
        return Tone::OnAirInk;
    if (deckSignal == DeckSignal::Muted)
        return Tone::WarningFillInk;
    return deckSignal == DeckSignal::None ? Tone::Dim : Tone::Text;
}

} // namespace

DeckHead::DeckHead(int player, QWidget* parent) : QWidget(parent), player_(player), status_(new ElidedLabel(this)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent);
    status_->setAlignment(Qt::AlignVCenter | (player == 1 ? Qt::AlignRight : Qt::AlignLeft));
    status_->setFont(SkinStyle::Units().Font(1.15));
    status_->SetTone(StatusTone(signal_));
    TakeName();
}

QString DeckHead::WordOf(DeckSignal deckSignal) {
    switch (deckSignal) {
    case DeckSignal::OnAir:
        return QStringLiteral("ON AIR");
    case DeckSignal::Muted:
        return QStringLiteral("STUMM");
    case DeckSignal::Running:
        return QStringLiteral("LÄUFT");
    case DeckSignal::Paused:
        return QStringLiteral("PAUSE");
    case DeckSignal::Ready:
        return QStringLiteral("BEREIT");
    case DeckSignal::None:
        break;
    }
    return {};
}

void DeckHead::SetSignal(DeckSignal deckSignal) {
    if (deckSignal == signal_)
        return;
    signal_ = deckSignal;
    status_->SetTone(StatusTone(signal_));
    TakeName();
    if (signal_ == DeckSignal::OnAir)
        Announce(*this);
    update();
}

void DeckHead::TakeName() {
    setAccessibleName(QStringLiteral("Player %1 %2").arg(QString::number(player_), WordOf(signal_)).trimmed());
}

void DeckHead::SetLayoutMode(LayoutMode mode) {
    mode_ = mode;
    status_->setVisible(!IsNarrow(mode));
    PlaceStatus();
    updateGeometry();
    update();
}

QSize DeckHead::sizeHint() const {
    return {SkinStyle::Units().Of(24), SkinStyle::Units().PanelHead(mode_)};
}

QSize DeckHead::minimumSizeHint() const {
    return {SkinStyle::Units().Of(11), SkinStyle::Units().PanelHead(mode_)};
}

QRect DeckHead::FromOutside(int offset, int width) const {
    return {player_ == 1 ? offset : this->width() - offset - width, 0, width, height()};
}

int DeckHead::NameWidth() const {
    return SkinStyle::Units().Of(6.6);
}

QFont DeckHead::WordFont() const {
    const double filled = IsNarrow(mode_) ? 1.5 : mode_ == LayoutMode::Wide ? 2.2 : 1.75;
    QFont font = SkinStyle::Units().Font(IsFilled(signal_) ? filled : 1.15, true);
    font.setLetterSpacing(QFont::PercentageSpacing, 108);
    return font;
}

int DeckHead::WordWidth() const {
    const int text = QFontMetrics(WordFont()).horizontalAdvance(WordOf(signal_));
    return IsFilled(signal_) ? text : text + SkinStyle::Units().Of(2.2);
}

bool DeckHead::HasRoomForName() const {
    const int used = SkinStyle::Units().PanelHead(mode_) + NameWidth() + (status_->isHidden() ? 0 : status_->width());
    return used + WordWidth() + SkinStyle::Units().Gap(2) <= width();
}

QColor DeckHead::Background() const {
    const Skin& skin = SkinStyle::Colours();
    if (signal_ == DeckSignal::OnAir)
        return skin.onAir;
    return signal_ == DeckSignal::Muted ? skin.warningFill : skin.panel;
}

void DeckHead::paintEvent(QPaintEvent*) {
    const Skin& skin = SkinStyle::Colours();
    const FontUnits& units = SkinStyle::Units();
    QPainter painter(this);
    painter.fillRect(rect(), Background());
    if (!IsFilled(signal_))
        painter.fillRect(QRect(0, height() - 1, width(), 1), skin.line);

    const QRect box = FromOutside(0, units.PanelHead(mode_));
    painter.fillRect(box, skin.Player(player_));
    painter.setPen(skin.PlayerInk(player_));
    painter.setFont(units.Font(1.75, true));
    painter.drawText(box, Qt::AlignCenter, QString::number(player_));

    int left = box.width();
    if (HasRoomForName()) {
        const QRect name = FromOutside(left, NameWidth()).adjusted(units.Of(0.9), 0, -units.Of(0.9), 0);
        painter.setPen(IsFilled(signal_) ? Ink(signal_) : signal_ == DeckSignal::None ? skin.dim : skin.text);
        painter.setFont(units.Font(1.15));
        painter.drawText(name, Qt::AlignVCenter | Qt::TextDontClip | (player_ == 1 ? Qt::AlignLeft : Qt::AlignRight),
                         QStringLiteral("Player %1").arg(player_));
        left += NameWidth();
    }
    const int right = status_->isHidden() ? 0 : status_->width() + 2 * units.Of(0.9);
    PaintWord(painter, FromOutside(left, width() - left - right));
}

void DeckHead::PaintWord(QPainter& painter, const QRect& room) const {
    const QString word = WordOf(signal_);
    if (word.isEmpty())
        return;
    const QColor ink = Ink(signal_);
    painter.setFont(WordFont());
    if (!IsFilled(signal_)) {
        const int high = SkinStyle::Units().Of(1.85);
        const QRect frame(room.center().x() - WordWidth() / 2, (height() - high) / 2, WordWidth(), high);
        painter.fillRect(frame, ink);
        painter.fillRect(frame.adjusted(2, 2, -2, -2), Background());
    }
    painter.setPen(ink);
    painter.drawText(room, Qt::AlignCenter | Qt::TextDontClip, word);
}

void DeckHead::PlaceStatus() {
    const int pad = SkinStyle::Units().Of(0.9);
    const int wide = SkinStyle::Units().Of(3.8);
    status_->setGeometry(player_ == 1 ? QRect(width() - pad - wide, 0, wide, height()) : QRect(pad, 0, wide, height()));
}

void DeckHead::resizeEvent(QResizeEvent*) {
    PlaceStatus();
}

void DeckHead::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        status_->setFont(SkinStyle::Units().Font(1.15));
        PlaceStatus();
        updateGeometry();
        update();
    }
}

} // namespace kalvo
