#include "app/NoticeBar.h"

#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

namespace kalvo {

NoticeBar::NoticeBar(QWidget* parent)
    : QWidget(parent),
      text_(new ElidedLabel(this)),
      close_(new IconButton(QStringLiteral("close"), IconButton::Size::Normal, this)) {
    setObjectName(QStringLiteral("Hinweiszeile"));
    text_->setObjectName(QStringLiteral("lblHinweis"));
    text_->setAccessibleName(QStringLiteral("Hinweis"));
    text_->SetTone(Tone::WarningFillInk);
    close_->setObjectName(QStringLiteral("cmdHinweisSchliessen"));
    close_->setAccessibleName(QStringLiteral("Hinweis schließen"));
    close_->setToolTip(close_->accessibleName());
    close_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(close_, &QPushButton::clicked, this, &QWidget::hide);
    auto* row = new QHBoxLayout(this);
    row->addWidget(text_, 1);
    row->addWidget(close_);
    TakeUnits();
    hide();
}

void NoticeBar::Show(const QString& text) {
    text_->SetText(text);
    show();
    setAccessibleName(text);
    Announce(*this);
}

void NoticeBar::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    text_->setFont(units.Font(1.15, true));
    layout()->setContentsMargins(units.Of(0.8), units.G(), units.G(), units.G());
    layout()->setSpacing(units.Of(0.8));
}

void NoticeBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), SkinStyle::Colours().warningFill);
}

void NoticeBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange && layout() != nullptr) {
        TakeUnits();
    }
}

} // namespace kalvo
