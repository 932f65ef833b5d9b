#include "live/ui/JingleLine.h"

#include "widgets/ButtonPainting.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Icons.h"
#include "widgets/Named.h"
#include "widgets/PlainTip.h"
#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

/** "Samstag, 00:00 Uhr" and below it the file. */
QString WhenAndWhat(const ComingJingle& jingle) {
    const QString day = JingleSlot::Weekdays().at(jingle.at.date().dayOfWeek() - 1);
    return day + jingle.at.toString(u", HH:mm"_s) + u" Uhr\n"_s + jingle.path;
}

} // namespace

JingleLine::JingleLine(QWidget* parent)
    : QWidget(parent),
      name_(Named(new ElidedLabel(this), u"lblNaechsterJingle"_s, u"Nächster Jingle"_s)),
      time_(Named(new TimeLabel(u"in 00:00:00"_s, this), u"lblJingleZeit"_s, u"Zeit bis zum nächsten Jingle"_s)) {
    QFont bold; // its size is the program's, whatever that becomes
    bold.setBold(true);
    time_->setFont(bold);
    time_->setAlignment(Qt::AlignRight);
    auto* row = new QHBoxLayout(this);
    row->addWidget(name_, 1);
    row->addWidget(time_);
    ApplyLook();
    Show({}, {});
}

void JingleLine::Show(const std::optional<ComingJingle>& next, const QDateTime& now) {
    time_->SetText(next ? next->WhenText(now) : QString());
    name_->SetText(next ? u"Nächster Jingle: "_s + next->Name() : u"Kein Jingle geplant"_s);
    name_->SetTone(next ? Tone::Text : Tone::Dim);
    if (next == shown_)
        return;
    shown_ = next;
    for (QWidget* part : std::initializer_list<QWidget*>{name_, time_})
        part->setToolTip(next ? PlainTip(WhenAndWhat(*next)) : QString());
}

QSize JingleLine::minimumSizeHint() const {
    return {0, SkinStyle::Units().Of(1.6)};
}

void JingleLine::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    setFixedHeight(units.Of(1.6));
    layout()->setContentsMargins(focusRingMargin + units.Icon() + units.Of(0.6), 0, focusRingMargin, 0);
    layout()->setSpacing(units.Gap(2));
}

void JingleLine::paintEvent(QPaintEvent*) {
    const int size = SkinStyle::Units().Icon();
    QPainter(this).drawPixmap(focusRingMargin, (height() - size) / 2,
                              Icons::Pixmap(u"jingle"_s, SkinStyle::Colours().dim, size, devicePixelRatioF()));
}

void JingleLine::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

} // namespace kalvo
