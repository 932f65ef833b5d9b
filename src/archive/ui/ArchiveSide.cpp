#include "archive/ui/ArchiveSide.h"

#include "archive/ui/SelectedTitleView.h"
#include "widgets/ButtonPainting.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

int LeastHeight(const QWidget& part) {
    return qMax(part.minimumHeight(), part.minimumSizeHint().height());
}

} // namespace

ArchiveSide::ArchiveSide(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this)) {
    setObjectName(QStringLiteral("Seitenfeld"));
    ApplyLook();
}

void ArchiveSide::Add(QWidget& part, int stretch) {
    parts_.append(&part);
    column_->addWidget(&part, stretch);
    ShowWhatFits();
}

void ArchiveSide::TakeTitle(SelectedTitleView& title) {
    column_->insertWidget(0, &title);
}

int ArchiveSide::LowestHeight() {
    const FontUnits& units = SkinStyle::Units();
    return units.Gap(8) + SelectedTitleView::CardHeight();
}

QSize ArchiveSide::minimumSizeHint() const {
    return {width(), 0};
}

void ArchiveSide::ShowWhatFits() {
    QList<QWidget*> byHeight = parts_;
    std::stable_sort(byHeight.begin(), byHeight.end(),
                     [](const QWidget* one, const QWidget* other) { return LeastHeight(*one) < LeastHeight(*other); });
    int left = height() - LowestHeight();
    for (QWidget* part : std::as_const(byHeight)) {
        left -= LeastHeight(*part) + column_->spacing();
        part->setVisible(left >= 0);
    }
}

void ArchiveSide::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    const int margin = units.Gap(3) - focusRingMargin; // the parts keep room for their focus rings
    column_->setContentsMargins(margin, units.Gap(3), margin, units.Gap(2));
    column_->setSpacing(units.Gap(2));
    setFixedWidth(units.Of(28));
    ShowWhatFits();
}

void ArchiveSide::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ShowWhatFits();
}

void ArchiveSide::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(0, 0, 1, height(), SkinStyle::Colours().line);
}

void ArchiveSide::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

} // namespace kalvo
