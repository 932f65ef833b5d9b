#include "app/StatusLine.h"

#include "widgets/ElidedLabel.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QTime>

namespace kalvo {

StatusLine::StatusLine(QWidget* parent)
    : QStatusBar(parent),
      mode_(Part(QStringLiteral("lblModus"), QStringLiteral("Überblendmodus"))),
      continuous_(Part(QStringLiteral("lblKontinuierlich"), QStringLiteral("Kontinuierliche Wiedergabe"))),
      automatic_(Part(QStringLiteral("lblAutomatik"), QStringLiteral("Mixerautomatik"))),
      starvations_(Part(QStringLiteral("lblAussetzer"), QStringLiteral("Aussetzer"))),
      message_(new ElidedLabel(this)),
      output_(new QLabel(this)) {
    setObjectName(QStringLiteral("Statuszeile"));
    setSizeGripEnabled(false);
    message_->setObjectName(QStringLiteral("lblMeldung"));
    message_->setAccessibleName(QStringLiteral("Meldung"));
    addWidget(message_, 1);
    output_->setObjectName(QStringLiteral("lblAusgabe"));
    output_->setAccessibleName(QStringLiteral("Ausgabegerät"));
    output_->setProperty("dim", true);
    addPermanentWidget(output_);
    SetStarvations(0);
    TakeUnits();
}

void StatusLine::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    const int side = units.Of(0.8);
    for (QLabel* label : {mode_, continuous_, automatic_, starvations_, output_}) {
        label->setContentsMargins(side, 0, side, 0);
    }
    message_->setIndent(side);
    setMinimumHeight(units.Of(2));
}

void StatusLine::changeEvent(QEvent* event) {
    QStatusBar::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        TakeUnits();
    }
}

/** One line behind each part instead of the frames of a status bar. */
void StatusLine::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(SkinStyle::Colours().line);
    const int inset = height() / 5;
    for (const QLabel* label : {mode_, continuous_, automatic_, starvations_}) {
        const int x = label->geometry().right() + 1;
        painter.drawLine(x, inset, x, height() - inset);
    }
}

QLabel* StatusLine::Part(const QString& name, const QString& accessibleName) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setAccessibleName(accessibleName);
    addWidget(label);
    return label;
}

void StatusLine::SetMode(const QString& caption) {
    mode_->setText(caption);
}
void StatusLine::SetContinuous(const QString& caption) {
    continuous_->setText(caption);
}
void StatusLine::SetAutomatic(const QString& caption) {
    automatic_->setText(caption);
}

void StatusLine::SetStarvations(quint64 count) {
    starvations_->setText(QStringLiteral("Aussetzer %1").arg(count));
}

void StatusLine::SetOutput(const QString& name) {
    output_->setText(name.isEmpty() ? QString() : QStringLiteral("Ausgabe: ") + name);
}

void StatusLine::Tell(const QString& text) {
    message_->setText(QTime::currentTime().toString(QStringLiteral("HH:mm  ")) + text);
}

} // namespace kalvo
