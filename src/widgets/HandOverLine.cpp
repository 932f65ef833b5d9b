#include "widgets/HandOverLine.h"

#include "widgets/SkinStyle.h"

#include <QPainter>

namespace kalvo {

HandOverLine::HandOverLine(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    TakeName();
}

void HandOverLine::SetView(const HandOverView& view) {
    if (view == view_)
        return;
    view_ = view;
    TakeName();
}

void HandOverLine::SetBrief(bool brief) {
    brief_ = brief;
    TakeName();
}

QString HandOverLine::Text() const {
    const QString seconds = QString::number(view_.seconds);
    switch (view_.kind) {
    case HandOverView::Kind::Coming:
        return brief_ ? QStringLiteral("Übergabe in %1 s").arg(seconds)
                      : QStringLiteral("Übergabe an Player %1 in %2 s").arg(QString::number(view_.player), seconds);
    case HandOverView::Kind::Rest:
        return brief_ ? QStringLiteral("%1 s vor Ende").arg(seconds)
                      : QStringLiteral("Übergabe %1 s vor Ende").arg(seconds);
    case HandOverView::Kind::Off:
        break;
    }
    return QStringLiteral("Keine Übergabe");
}

void HandOverLine::TakeName() {
    setAccessibleName(Text());
    setToolTip(Text());
    update();
}

QSize HandOverLine::sizeHint() const {
    return {SkinStyle::Units().Of(brief_ ? 10 : 17), SkinStyle::Units().Of(2)};
}

QSize HandOverLine::minimumSizeHint() const {
    return {SkinStyle::Units().Of(6), SkinStyle::Units().Of(2)};
}

void HandOverLine::paintEvent(QPaintEvent*) {
    const Skin& skin = SkinStyle::Colours();
    const bool coming = view_.kind == HandOverView::Kind::Coming;
    QPainter painter(this);
    painter.fillRect(rect(), coming ? skin.warningFill : skin.line);
    if (!coming)
        painter.fillRect(rect().adjusted(1, 1, -1, -1), skin.panel);
    painter.setFont(SkinStyle::Units().Font(coming ? 1.15 : 1.0, coming));
    painter.setPen(coming ? skin.warningFillInk : skin.dim);
    const QRect inside = rect().adjusted(SkinStyle::Units().G(), 0, -SkinStyle::Units().G(), 0);
    painter.drawText(inside, Qt::AlignCenter, painter.fontMetrics().elidedText(Text(), Qt::ElideRight, inside.width()));
}

} // namespace kalvo
