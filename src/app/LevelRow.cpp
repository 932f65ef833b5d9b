#include "app/LevelRow.h"

#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"
#include "widgets/VolumeSlider.h"

#include <QEvent>
#include <QHBoxLayout>

namespace kalvo {

LevelRow::LevelRow(const QString& name, const QString& accessibleName, QWidget* parent)
    : QWidget(parent), slider_(new VolumeSlider(this)), text_(new TimeLabel(QStringLiteral("100 %"), this)) {
    slider_->setObjectName(name);
    slider_->setAccessibleName(accessibleName);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(slider_);
    row->addWidget(text_);
    row->addStretch(1);
    connect(slider_, &QSlider::valueChanged, this,
            [this](int value) { text_->setText(QStringLiteral("%1 %").arg(value)); });
    setFocusProxy(slider_);
    ApplyLook();
    text_->setText(QStringLiteral("0 %"));
}

int LevelRow::Value() const {
    return slider_->value();
}

void LevelRow::SetValue(int value) {
    slider_->setValue(value);
}

void LevelRow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

void LevelRow::ApplyLook() {
    slider_->setFixedWidth(SkinStyle::Units().Of(13));
    layout()->setSpacing(SkinStyle::Units().Gap(2));
}

} // namespace kalvo
