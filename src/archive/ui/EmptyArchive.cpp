#include "archive/ui/EmptyArchive.h"

#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace kalvo {

EmptyArchive::EmptyArchive(QWidget* parent) : QWidget(parent), heading_(new ElidedLabel(this)) {
    heading_->setText(tr("Das Musikarchiv ist noch leer."));
    heading_->setAlignment(Qt::AlignCenter);
    auto* advice = new ElidedLabel(this);
    advice->setText(tr("Lesen Sie einen Ordner mit MP3- und OGG-Dateien ein."));
    advice->setAlignment(Qt::AlignCenter);
    advice->SetTone(Tone::Dim);
    auto* button = new IconButton(QStringLiteral("import"), IconButton::Size::Normal, this);
    button->setObjectName(QStringLiteral("cmdOrdnerEinlesen"));
    button->setText(tr("Ordner einlesen…"));
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(button, &QPushButton::clicked, this, &EmptyArchive::ImportRequested);

    auto* column = new QVBoxLayout(this);
    column->addStretch();
    column->addWidget(heading_);
    column->addWidget(advice);
    column->addWidget(button, 0, Qt::AlignCenter);
    column->addStretch();
    ApplyLook();
}

void EmptyArchive::ApplyLook() {
    heading_->setFont(SkinStyle::Units().Font(1.25, true));
}

void EmptyArchive::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), SkinStyle::Colours().base);
}

void EmptyArchive::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

} // namespace kalvo
