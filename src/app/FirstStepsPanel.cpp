#include "app/FirstStepsPanel.h"

#include "widgets/ButtonPainting.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr std::array<const char*, 3> kIcons{"folder", "add", "play"};

/** The step's number in a disc, or a tick once it is done. */
QPixmap NumberPixmap(int step, bool isNext, bool isDone, double ratio) {
    const Skin& skin = SkinStyle::Colours();
    const int size = SkinStyle::Units().Of(1.9);
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(isNext ? skin.highlight : skin.edge, 1.5));
    painter.setBrush(isNext ? QBrush(skin.highlight) : QBrush(Qt::NoBrush));
    painter.drawEllipse(QRectF(1, 1, size - 2, size - 2));
    const QColor ink = isNext ? skin.highlightText : skin.dim;
    if (isDone) {
        const int tick = SkinStyle::Units().Of(1.2);
        painter.drawPixmap(QPoint(size - tick, size - tick) / 2,
                           Icons::Pixmap(QStringLiteral("check"), isNext ? ink : skin.text, tick, ratio));
    } else {
        painter.setFont(SkinStyle::Units().Font(1.15, true));
        painter.setPen(ink);
        painter.drawText(QRect(0, 0, size, size), Qt::AlignCenter, QString::number(step + 1));
    }
    return pixmap;
}

} // namespace

FirstStepsPanel::FirstStepsPanel(QWidget* parent)
    : QScrollArea(parent),
      page_(new QWidget),
      heading_(new ElidedLabel(page_)),
      close_(new IconButton(QStringLiteral("close"), IconButton::Size::Normal, page_)) {
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    page_->setBackgroundRole(QPalette::Base);
    page_->setAutoFillBackground(true);
    setObjectName(QStringLiteral("ErsteSchritte"));
    setAccessibleName(QStringLiteral("Erste Schritte"));
    heading_->setText(QStringLiteral("In drei Schritten zum ersten Titel"));
    auto* steps = new QHBoxLayout;
    for (int step = 0; step < 3; ++step) {
        cards_.at(static_cast<std::size_t>(step)) = MakeCard(step);
        steps->addWidget(cards_.at(static_cast<std::size_t>(step)).frame, 1);
    }
    close_->setObjectName(QStringLiteral("cmdErsteSchritteSchliessen"));
    close_->setAccessibleName(QStringLiteral("Erste Schritte schließen"));
    close_->setToolTip(QStringLiteral("Schließt die ersten Schritte für immer; unter Hilfe sind sie wieder zu finden"));
    close_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(close_, &QPushButton::clicked, this, &FirstStepsPanel::CloseRequested);
    steps->addWidget(close_, 0, Qt::AlignTop);
    auto* column = new QVBoxLayout(page_);
    column->addWidget(heading_);
    column->addStretch(1);
    column->addLayout(steps);
    column->addStretch(2);
    setWidget(page_);
    ApplyLook();
}

FirstStepsPanel::Card FirstStepsPanel::MakeCard(int step) {
    Card card{};
    card.frame = new QFrame(page_);
    card.number = new QLabel(card.frame);
    card.title = new ElidedLabel(card.frame);
    card.hint = new QLabel(card.frame);
    card.hint->setWordWrap(true);
    card.hint->setForegroundRole(QPalette::PlaceholderText);
    card.hint->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    card.button = new IconButton(QString::fromLatin1(kIcons.at(static_cast<std::size_t>(step))),
                                 IconButton::Size::Normal, card.frame);
    card.button->setObjectName(QStringLiteral("cmdSchritt%1").arg(step + 1));
    card.other = new QPushButton(card.frame);
    card.other->setAutoDefault(false);
    card.other->setObjectName(QStringLiteral("cmdSchritt%1Anders").arg(step + 1));
    for (QPushButton* button : std::initializer_list<QPushButton*>{card.button, card.other}) {
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        connect(button, &QPushButton::clicked, this,
                [this, step, isOther = button == card.other] { Q_EMIT Chosen(step, isOther); });
    }
    auto* head = new QHBoxLayout;
    head->addWidget(card.number);
    head->addWidget(card.title, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(card.button);
    buttons->addWidget(card.other);
    buttons->addStretch(1);
    auto* column = new QVBoxLayout(card.frame);
    column->setContentsMargins(focusRingMargin, 0, focusRingMargin, focusRingMargin);
    column->addLayout(head);
    column->addWidget(card.hint);
    column->addLayout(buttons);
    return card;
}

void FirstStepsPanel::Show(const FirstStepsState& state) {
    next_ = static_cast<int>(state.Next());
    for (std::size_t step = 0; step < cards_.size(); ++step) {
        Card& card = cards_.at(step);
        card.view = ViewOfStep(state, step);
        card.title->SetText(card.view.title);
        card.hint->setText(card.view.hint);
        card.button->setText(card.view.button);
        card.button->setEnabled(card.view.isEnabled);
        card.button->SetOn(static_cast<int>(step) == next_);
        card.other->setText(card.view.other);
        card.other->setEnabled(card.view.isEnabled);
        card.other->setHidden(card.view.other.isEmpty());
    }
    ApplyLook();
}

void FirstStepsPanel::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    heading_->setFont(units.Font(1.25, true));
    page_->layout()->setContentsMargins(units.Gap(4), units.Gap(2), units.Gap(2), units.Gap(2));
    page_->layout()->setSpacing(units.Gap(2));
    for (std::size_t step = 0; step < cards_.size(); ++step) {
        const Card& card = cards_.at(step);
        const bool isNext = static_cast<int>(step) == next_;
        card.number->setPixmap(NumberPixmap(static_cast<int>(step), isNext, card.view.isDone, devicePixelRatioF()));
        card.title->setFont(units.Font(1.15, true));
        card.title->SetTone(isNext ? Tone::Text : Tone::Dim);
        card.frame->layout()->setSpacing(units.Gap(2));
        card.hint->setFixedHeight(2 * QFontMetrics(units.Font()).lineSpacing());
    }
    FitRoom();
}

void FirstStepsPanel::FitRoom() {
    const FontUnits& units = SkinStyle::Units();
    const int cards = units.Of(2.2) + units.Button() + units.Gap(8);
    const int hints = 2 * QFontMetrics(units.Font()).lineSpacing() + units.Gap(2);
    const bool isNarrow = width() < units.Of(70);
    const bool hasRoomForTitles = width() > units.Of(55);
    for (const Card& card : cards_) {
        card.title->setMinimumWidth(hasRoomForTitles ? card.title->sizeHint().width() : 0);
        card.hint->setHidden(height() < cards + hints);
        card.other->setHidden(card.view.other.isEmpty() ||
                              (isNarrow && &card != &cards_.at(static_cast<std::size_t>(next_))));
    }
    heading_->setVisible(height() >= cards + hints + units.Button() + units.Gap(6));
}

void FirstStepsPanel::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    FitRoom();
}

void FirstStepsPanel::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

} // namespace kalvo
