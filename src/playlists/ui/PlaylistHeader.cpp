#include "playlists/ui/PlaylistHeader.h"

#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

namespace kalvo {

PlaylistHeader::PlaylistHeader(int number, QWidget* parent)
    : QWidget(parent), number_(number), caption_(new ElidedLabel(this)), end_(new ElidedLabel(this)) {
    caption_->setObjectName(number == 1 ? QStringLiteral("Label16") : QStringLiteral("Label17"));
    end_->SetTone(Tone::Dim);
    end_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    end_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->addWidget(caption_, 1);
    row->addWidget(end_);
    TakeUnits();
}

void PlaylistHeader::paintEvent(QPaintEvent*) {
    const Skin& skin = SkinStyle::Colours();
    QPainter painter(this);
    painter.fillRect(rect(), skin.panel);
    painter.setPen(skin.line);
    painter.drawRect(rect().adjusted(0, 0, -1, 0));
    const QRect box(0, 0, height(), height());
    painter.fillRect(box, skin.Player(number_));
    painter.setPen(skin.PlayerInk(number_));
    painter.setFont(SkinStyle::Units().Font(1.15, true));
    painter.drawText(box, Qt::AlignCenter, QString::number(number_));
}

void PlaylistHeader::changeEvent(QEvent* event) {
    if (event->type() == QEvent::StyleChange)
        TakeUnits();
    QWidget::changeEvent(event);
}

void PlaylistHeader::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    setFixedHeight(units.ListHead());
    caption_->setFont(units.Font(1.0, true));
    end_->setFont(units.Font());
    layout()->setContentsMargins(units.ListHead() + units.Of(0.8), 0, units.Of(0.8), 0);
    layout()->setSpacing(units.Of(0.8));
}

} // namespace kalvo
