#include "archive/ui/EmptyArchive.h"

#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace kalvo {

EmptyArchive::EmptyArchive(QWidget* parent)
    : QWidget(parent), heading_(new ElidedLabel(this)), advice_(new ElidedLabel(this)) {
    heading_->setText(tr("Das Musikarchiv ist noch leer."));
    heading_->setAlignment(Qt::AlignCenter);
    advice_->setText(tr("Lesen Sie einen Ordner mit MP3- und OGG-Dateien ein."));
    advice_->setAlignment(Qt::AlignCenter);
    advice_->SetTone(Tone::Dim);
    auto* button = new IconButton(QStringLiteral("import"), IconButton::Size::Normal, this);
    button->setObjectName(QStringLiteral("cmdOrdnerEinlesen"));
    button->setText(tr("Ordner einlesen…"));
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(button, &QPushButton::clicked, this, &EmptyArchive::ImportRequested);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addStretch();
    column->addWidget(heading_);
    column->addWidget(advice_);
    column->addWidget(button, 0, Qt::AlignCenter);
    column->addStretch();
    ApplyLook();
}

void EmptyArchive::ApplyLook() {
    heading_->setFont(SkinStyle::Units().Font(1.25, true));
}

/** Where there is no room for all three, the advice goes: the button says the same. */
void EmptyArchive::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    int wanted = 2 * layout()->spacing();
    for (int item = 0; item < layout()->count(); ++item) {
        const QWidget* part = layout()->itemAt(item)->widget();
        wanted += part == nullptr ? 0 : part->sizeHint().height();
    }
    advice_->setVisible(height() >= wanted);
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
