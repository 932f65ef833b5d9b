#include "archive/ui/SelectedTitleView.h"

#include "base/FileName.h"
#include "widgets/CoverView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/Named.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>

namespace kalvo {

namespace {

int SleeveSize() {
    return SkinStyle::Units().Of(5.2);
}

} // namespace

int SelectedTitleView::CardHeight() {
    const FontUnits& units = SkinStyle::Units();
    return SleeveSize() + units.Gap(2) + units.Button() + focusRingMargin;
}

SelectedTitleView::SelectedTitleView(QWidget* parent)
    : QWidget(parent),
      cover_(new CoverView(this)),
      title_(Named(new ElidedLabel(this), QStringLiteral("lblTitel"), tr("Gewählter Titel"))),
      name_(Named(new ElidedLabel(this), QStringLiteral("lblTitelname"), tr("Gewählter Titel"))),
      artist_(Named(new ElidedLabel(this), QStringLiteral("lblInterpret"), tr("Interpret des gewählten Titels"))),
      album_(Named(new ElidedLabel(this), QStringLiteral("lblAlbum"), tr("Album, Jahr und Stil"))),
      path_(Named(new ElidedLabel(this), QStringLiteral("lblPfad"), tr("Datei des gewählten Titels"))) {
    cover_->setObjectName(QStringLiteral("imgCover"));
    cover_->setToolTip(tr("Coverbild aus den Tags des Titels"));
    album_->SetTone(Tone::Dim);
    path_->SetTone(Tone::Dim);
    BuildButtons();
    ApplyLook();
    Show({});
}

IconButton* SelectedTitleView::MakeButton(const QString& icon, const QString& name, const QString& accessibleName) {
    auto* button = Named(new IconButton(icon, IconButton::Size::Normal, this), name, accessibleName);
    button->setToolTip(accessibleName);
    return button;
}

void SelectedTitleView::BuildButtons() {
    for (const int list : {1, 2}) {
        IconButton* button = MakeButton(QStringLiteral("add"), QStringLiteral("cmdListe%1").arg(list),
                                        tr("Zu Wiedergabeliste %1 hinzufügen").arg(list));
        button->setText(tr("Liste %1").arg(list));
        connect(button, &QPushButton::clicked, this, [this, list] { Q_EMIT AddToListRequested(list); });
        lists_.append(button);
    }
    headphones_ =
        MakeButton(QStringLiteral("headphones"), QStringLiteral("cmdKopfhoerer"), tr("Titel mit Kopfhörer vorhören"));
    connect(headphones_, &QPushButton::clicked, this, &SelectedTitleView::HeadphonesRequested);
    preListen_ = MakeButton(QStringLiteral("play"), QStringLiteral("Label5"), tr("Titel über die Anlage probehören"));
    preListen_->setText(tr("Probehören"));
    preListen_->setToolTip(tr("Links: über die Anlage, die laufende Musik wird ausgeblendet\n"
                              "Andere Maustasten: mit Kopfhörer"));
    preListen_->SetFill(IconButton::Fill::Warning);
    preListen_->installEventFilter(this);
    connect(preListen_, &QPushButton::clicked, this, &SelectedTitleView::PreListenRequested);
}

bool SelectedTitleView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == preListen_ && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) {
        Q_EMIT HeadphonesRequested();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void SelectedTitleView::SetForm(Form form) {
    if (form == form_)
        return;
    form_ = form;
    ApplyLook();
    ShowTexts();
}

void SelectedTitleView::ApplyLook() {
    const bool isLine = form_ == Form::Line;
    delete layout();
    isLine ? LayOutLine() : LayOutCard();
    title_->setFont(SkinStyle::Units().Font(1, true));
    name_->setFont(SkinStyle::Units().Font(1.25, true));
    headphones_->setText(isLine ? tr("Kopfhörer") : QString());
    headphones_->updateGeometry();
    cover_->setVisible(!isLine && coverShown_);
    album_->setVisible(!isLine);
    path_->setVisible(isLine);
    const QSizePolicy::Policy wide = isLine ? QSizePolicy::Fixed : QSizePolicy::Expanding;
    for (IconButton* button : {lists_[0], lists_[1], preListen_})
        button->setSizePolicy(wide, QSizePolicy::Fixed);
    headphones_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

/** Pre-listening touches the programme: it stands apart and looks like it. */
void SelectedTitleView::LayOutLine() {
    const FontUnits& units = SkinStyle::Units();
    setFixedHeight(qMax(units.ListHead(), units.Button() + units.Gap(2)));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(units.Gap(2), 1, units.Gap(2), 0);
    row->setSpacing(units.Gap(2));
    title_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    path_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    row->addWidget(title_);
    row->addWidget(path_, 1);
    for (IconButton* button : {lists_[0], lists_[1], headphones_})
        row->addWidget(button);
    row->addSpacing(units.Of(1));
    row->addWidget(preListen_);
}

void SelectedTitleView::LayOutCard() {
    const FontUnits& units = SkinStyle::Units();
    setMinimumHeight(0);
    setMaximumHeight(QWIDGETSIZE_MAX);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    name_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    cover_->setFixedSize(SleeveSize(), SleeveSize());

    auto* texts = new QVBoxLayout;
    texts->setSpacing(units.Gap(0.5));
    texts->addStretch();
    for (ElidedLabel* label : {name_, artist_, album_})
        texts->addWidget(label);
    texts->addStretch();
    auto* sleeve = new QHBoxLayout;
    sleeve->setSpacing(units.Of(1));
    sleeve->addWidget(cover_);
    sleeve->addLayout(texts, 1);
    sleeve->addStrut(SleeveSize()); // the place is kept without a cover, too

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(units.Gap(1.5));
    for (IconButton* button : {lists_[0], lists_[1], headphones_})
        buttons->addWidget(button);
    buttons->addSpacing(units.Gap(1));
    buttons->addWidget(preListen_);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(focusRingMargin, 0, focusRingMargin, focusRingMargin);
    column->setSpacing(units.Gap(2));
    column->addLayout(sleeve);
    column->addLayout(buttons);
}

void SelectedTitleView::Show(const TitleRecord& record) {
    record_ = record;
    notice_.clear();
    ShowTexts();
    for (IconButton* button : std::as_const(lists_))
        button->setEnabled(!record_.Pfad.isEmpty());
}

void SelectedTitleView::ShowInPlaceOfArtist(const QString& text) {
    notice_ = text;
    ShowTexts();
}

void SelectedTitleView::ShowTexts() {
    const bool isLine = form_ == Form::Line;
    const bool any = !record_.Pfad.isEmpty();
    const QString both = any ? record_.Interpret + QStringLiteral(" - ") + record_.Titel : QString();
    const Tone tone = notice_.isEmpty() ? Tone::Text : Tone::Warning;
    artist_->SetText(notice_.isEmpty() ? record_.Interpret : notice_);
    artist_->SetTone(tone);
    title_->SetText(notice_.isEmpty() ? both : notice_);
    title_->SetTone(tone);
    title_->updateGeometry();
    name_->SetText(FileName::ShownTitle(record_.Titel, record_.Interpret, record_.Pfad));
    QStringList details{record_.Album, record_.Jahr, record_.Stil};
    details.removeAll(QString());
    album_->SetText(any ? details.join(QStringLiteral(" · ")) : tr("Kein Titel gewählt"));
    // In the card what there is stands in the middle, without gaps.
    title_->setVisible(isLine);
    name_->setVisible(!isLine && !name_->text().isEmpty());
    artist_->setVisible(!isLine && !artist_->text().isEmpty());
    path_->SetText(record_.Pfad);
}

void SelectedTitleView::ShowCover(const QPixmap& picture) {
    cover_->SetPicture(picture);
}

void SelectedTitleView::SetCoverShown(bool shown) {
    coverShown_ = shown;
    cover_->setVisible(form_ == Form::Card && coverShown_);
}

void SelectedTitleView::ShowPreListening(bool on) {
    preListen_->SetOn(on);
}

void SelectedTitleView::paintEvent(QPaintEvent*) {
    if (form_ == Form::Line)
        QPainter(this).fillRect(0, 0, width(), 1, SkinStyle::Colours().line);
}

} // namespace kalvo
