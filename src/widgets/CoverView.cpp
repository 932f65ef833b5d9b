#include "widgets/CoverView.h"

#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QPainter>

namespace kalvo {

CoverView::CoverView(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(QStringLiteral("Kein Coverbild"));
}

void CoverView::SetPicture(const QPixmap& picture) {
    if (picture.cacheKey() == picture_.cacheKey())
        return;
    picture_ = picture;
    scaled_ = {};
    setAccessibleName(picture_.isNull() ? QStringLiteral("Kein Coverbild") : QStringLiteral("Coverbild"));
    update();
}

void CoverView::paintEvent(QPaintEvent*) {
    const Skin& skin = SkinStyle::Colours();
    const qreal ratio = devicePixelRatioF();
    QPainter painter(this);
    painter.fillRect(rect(), skin.base);
    const auto middle = [this](const QSizeF& size) {
        return QPoint((width() - qRound(size.width())) / 2, (height() - qRound(size.height())) / 2);
    };
    if (picture_.isNull()) {
        const QPixmap note = Icons::Pixmap(QStringLiteral("note"), skin.edge, qMin(width(), height()) / 2, ratio);
        painter.drawPixmap(middle(note.deviceIndependentSize()), note);
    } else {
        const QSize wanted = picture_.size().scaled(size() * ratio, Qt::KeepAspectRatio);
        if (scaled_.size() != wanted) {
            scaled_ = picture_.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            scaled_.setDevicePixelRatio(ratio);
        }
        painter.drawPixmap(middle(scaled_.deviceIndependentSize()), scaled_);
    }
    painter.setPen(skin.line);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace kalvo
