#include "app/StatusLine.h"

#include "widgets/ElidedLabel.h"
#include "widgets/SkinStyle.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QTime>

namespace kalvo {

namespace {

constexpr int kAloneMilliseconds = 8000;
constexpr int kWarningMilliseconds = 20000;

} // namespace

StatusLine::StatusLine(QWidget* parent) : QStatusBar(parent), row_(new QWidget(this)) {
    setObjectName(QStringLiteral("Statuszeile"));
    setSizeGripEnabled(false);
    auto* layout = new QHBoxLayout(row_);
    layout->setContentsMargins({});
    parts_ = {AddLabel(QStringLiteral("lblModus"), QStringLiteral("Überblendmodus"), 0),
              AddLabel(QStringLiteral("lblKontinuierlich"), QStringLiteral("Kontinuierliche Wiedergabe"), 0),
              AddLabel(QStringLiteral("lblAutomatik"), QStringLiteral("Mixerautomatik"), 0),
              AddLabel(QStringLiteral("lblAussetzer"), QStringLiteral("Aussetzer"), 0),
              AddLabel(QStringLiteral("lblMitschnitt"), QStringLiteral("Mitschnitt"), 0)};
    message_ = AddLabel(QStringLiteral("lblMeldung"), QStringLiteral("Meldung"), 1);
    output_ = AddLabel(QStringLiteral("lblAusgabe"), QStringLiteral("Ausgabegerät"), 0);
    output_->SetTone(Tone::Dim);
    layout->addStretch(); // while there is no message
    addWidget(row_, 1);
    telling_.setSingleShot(true);
    telling_.setInterval(kAloneMilliseconds);
    connect(&telling_, &QTimer::timeout, this, &StatusLine::ShowParts);
    warning_.setSingleShot(true);
    warning_.setInterval(kWarningMilliseconds);
    connect(&warning_, &QTimer::timeout, this, [this] {
        warnings_.clear();
        ShowMessages();
    });
    SetStarvations(0, 0);
    SetLayoutMode(mode_);
}

ElidedLabel* StatusLine::AddLabel(const QString& name, const QString& accessibleName, int stretch) {
    auto* label = new ElidedLabel(row_);
    label->setObjectName(name);
    label->setAccessibleName(accessibleName);
    static_cast<QHBoxLayout*>(row_->layout())->addWidget(label, stretch);
    return label;
}

void StatusLine::SetLayoutMode(LayoutMode mode) {
    mode_ = mode;
    const FontUnits& units = SkinStyle::Units();
    row_->layout()->setSpacing(units.Of(1.4));
    row_->layout()->setContentsMargins(units.Of(0.8), 0, units.Of(0.8), 0);
    setMinimumHeight(units.Of(mode == LayoutMode::Low ? 1.6 : 2));
    ShowParts();
}

void StatusLine::ShowParts() {
    const bool isNarrow = IsNarrow(mode_);
    const bool isAlone = isNarrow && telling_.isActive();
    for (ElidedLabel* part : parts_) {
        part->setVisible(!isAlone && (part != parts_[Recording] || !part->text().isEmpty()));
    }
    message_->setVisible(isAlone || !isNarrow);
    output_->setVisible(!isNarrow);
}

void StatusLine::SetMode(const QString& caption) {
    parts_[Mode]->SetText(caption);
}
void StatusLine::SetContinuous(const QString& caption) {
    parts_[Continuous]->SetText(caption);
}
void StatusLine::SetAutomatic(const QString& caption) {
    parts_[Automatic]->SetText(caption);
}

void StatusLine::SetStarvations(quint64 titles, quint64 machine) {
    ElidedLabel& label = *parts_[Starvations];
    label.SetText(QStringLiteral("Aussetzer %1").arg(titles + machine));
    label.setToolTip(QStringLiteral("Titel kam zu langsam von der Platte: %1\nRechner war zu langsam: %2 (ein größerer "
                                    "Puffer hilft: Einstellungen - Optionen - Soundkarten)")
                         .arg(titles)
                         .arg(machine));
}

void StatusLine::SetRecording(const QString& text) {
    const bool appears = text.isEmpty() != parts_[Recording]->text().isEmpty();
    parts_[Recording]->SetText(text);
    if (appears) {
        ShowParts();
    }
}

void StatusLine::SetOutput(const QString& name) {
    output_->SetText(name.isEmpty() ? QString() : QStringLiteral("Ausgabe: ") + name);
}

void StatusLine::Tell(const QString& text) {
    told_ = text;
    ShowMessages();
}

void StatusLine::Warn(const QString& text) {
    if (text.isEmpty() || warnings_.contains(text)) {
        return;
    }
    warnings_.append(text);
    Q_EMIT Warned(text);
    warning_.start();
    ShowMessages();
}

void StatusLine::ShowMessages() {
    const QStringList texts = (told_.isEmpty() ? QStringList() : QStringList{told_}) + warnings_;
    const QString text = texts.join(QStringLiteral("  ·  "));
    message_->SetText(QTime::currentTime().toString(QStringLiteral("HH:mm  ")) + text);
    telling_.start();
    ShowParts();
}

/** A line behind each part instead of a status bar's frames. */
void StatusLine::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(SkinStyle::Colours().line);
    const int inset = height() / 5;
    for (const ElidedLabel* part : parts_) {
        if (part->isVisible()) {
            const int x = row_->mapToParent(part->geometry().topRight()).x() + row_->layout()->spacing() / 2;
            painter.drawLine(x, inset, x, height() - inset);
        }
    }
}

} // namespace kalvo
