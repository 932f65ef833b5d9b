#include "archive/ui/SelectedTitleLine.h"

#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
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
    AddListening(*row);
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

/** Pre-listening touches the programme: it stands apart and looks like it. */
void SelectedTitleLine::AddListening(QBoxLayout& row) {
    headphones_ = new IconButton(QStringLiteral("headphones"), IconButton::Size::Normal, this);
    headphones_->setObjectName(QStringLiteral("cmdKopfhoerer"));
    headphones_->setText(tr("Kopfhörer"));
    headphones_->setAccessibleName(tr("Titel mit Kopfhörer vorhören"));
    headphones_->setToolTip(headphones_->accessibleName());
    preListen_ = new IconButton(QStringLiteral("play"), IconButton::Size::Normal, this);
    preListen_->setObjectName(QStringLiteral("Label5"));
    preListen_->setText(tr("Probehören"));
    preListen_->setAccessibleName(tr("Titel über die Anlage probehören"));
    preListen_->setToolTip(tr("Links: über die Anlage, die laufende Musik wird ausgeblendet\n"
                              "Andere Maustasten: mit Kopfhörer"));
    preListen_->SetFill(IconButton::Fill::Warning);
    preListen_->installEventFilter(this);
    for (IconButton* button : {headphones_, preListen_}) {
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        row.addWidget(button);
    }
    row.insertSpacing(row.indexOf(preListen_), SkinStyle::Units().Of(1));
    connect(headphones_, &QPushButton::clicked, this, &SelectedTitleLine::HeadphonesRequested);
    connect(preListen_, &QPushButton::clicked, this, &SelectedTitleLine::PreListenRequested);
}

bool SelectedTitleLine::eventFilter(QObject* watched, QEvent* event) {
    if (watched == preListen_ && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) {
        Q_EMIT HeadphonesRequested();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void SelectedTitleLine::ShowPreListening(bool on) {
    preListen_->SetOn(on);
}

void SelectedTitleLine::ShowInPlaceOfArtist(const QString& text) {
    artist_->SetText(text);
    title_->SetText(text);
    title_->SetTone(Tone::Warning);
    title_->updateGeometry();
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
    title_->SetTone(Tone::Text);
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
