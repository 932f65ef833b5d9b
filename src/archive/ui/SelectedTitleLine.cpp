#include "archive/ui/SelectedTitleLine.h"

#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

namespace kalvo {

SelectedTitleLine::SelectedTitleLine(QWidget* parent)
    : QWidget(parent), artist_(new ElidedLabel(this)), title_(new ElidedLabel(this)), path_(new ElidedLabel(this)) {
    artist_->setObjectName(QStringLiteral("lblInterpret"));
    artist_->hide();
    title_->setObjectName(QStringLiteral("lblTitel"));
    title_->setAccessibleName(tr("Gewählter Titel"));
    path_->setObjectName(QStringLiteral("lblPfad"));
    path_->setAccessibleName(tr("Datei des gewählten Titels"));
    path_->SetTone(Tone::Dim);

    auto* row = new QHBoxLayout(this);
    title_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    path_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    row->addWidget(title_);
    row->addWidget(path_, 1);
    for (const int list : {1, 2})
        buttons_.append(AddListButton(*row, list));
    ApplyLook();
    Show({});
}

IconButton* SelectedTitleLine::AddListButton(QBoxLayout& row, int list) {
    auto* button = new IconButton(QStringLiteral("add"), IconButton::Size::Normal, this);
    button->setObjectName(QStringLiteral("cmdListe%1").arg(list));
    button->setText(tr("Liste %1").arg(list));
    button->setAccessibleName(tr("Zu Wiedergabeliste %1 hinzufügen").arg(list));
    button->setToolTip(button->accessibleName());
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(button, &QPushButton::clicked, this, [this, list] { Q_EMIT AddToListRequested(list); });
    row.addWidget(button);
    return button;
}

void SelectedTitleLine::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    setFixedHeight(qMax(units.ListHead(), units.Button() + units.Gap(2)));
    layout()->setContentsMargins(units.Gap(2), 1, units.Gap(2), 0);
    layout()->setSpacing(units.Gap(2));
    title_->setFont(units.Font(1, true));
}

void SelectedTitleLine::Show(const TitleRecord& record) {
    const bool any = !record.Pfad.isEmpty();
    artist_->SetText(record.Interpret);
    title_->SetText(any ? record.Interpret + QStringLiteral(" - ") + record.Titel : QString());
    path_->SetText(record.Pfad);
    title_->updateGeometry();
    for (IconButton* button : std::as_const(buttons_))
        button->setEnabled(any);
}

void SelectedTitleLine::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(0, 0, width(), 1, SkinStyle::Colours().line);
}

void SelectedTitleLine::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange)
        ApplyLook();
}

} // namespace kalvo
