#include "playback/ui/DeckPanel.h"

#include "widgets/CoverView.h"
#include "widgets/DeckHead.h"
#include "widgets/IconButton.h"
#include "widgets/LevelBar.h"
#include "widgets/PitchSlider.h"
#include "widgets/PlainTip.h"
#include "widgets/PositionSlider.h"
#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"

#include <QEvent>
#include <QGridLayout>
#include <QPainter>

namespace kalvo {

namespace {

constexpr int deckFrame = 3;
/** Between the buttons of a deck without room; the smallest that keeps neighbours apart. */
constexpr int tightGap = 4;

/** Of a narrow deck whose five buttons have their least width. */
int TransportWidth(int side, int gap) {
    const FontUnits& units = SkinStyle::Units();
    const int button = qMax(44, units.BigIcon() + units.G());
    return 5 * button + 4 * gap + 2 * (side + deckFrame);
}

IconButton* BigButton(const char* icon, QWidget* parent) {
    return new IconButton(QString::fromLatin1(icon), IconButton::Size::Big, parent);
}

bool IsDim(DeckSignal deckSignal) {
    return deckSignal == DeckSignal::None || deckSignal == DeckSignal::Ready;
}

} // namespace

struct DeckPanel::Parts {
    explicit Parts(int number, DeckPanel* deck)
        : head(new DeckHead(number, deck)),
          title(new ElidedLabel(deck)),
          artist(new ElidedLabel(deck)),
          bitrate(new ElidedLabel(deck)),
          time(new TimeLabel(QStringLiteral("00:00/00:00"), deck)),
          remaining(new TimeLabel(QString(QChar(0x2212)) + QStringLiteral("00:00"), deck)),
          cover(new CoverView(deck)),
          position(new PositionSlider(number, deck)),
          toStart(BigButton("previous", deck)),
          play(BigButton("play", deck)),
          pause(BigButton("pause", deck)),
          stop(BigButton("stop", deck)),
          next(BigButton("next", deck)),
          mute(BigButton("unmute", deck)),
          headphones(BigButton("headphones", deck)),
          pitchCaption(new ElidedLabel(deck)),
          pitch(new PitchSlider(deck)),
          pitchText(new TimeLabel(PitchSlider::TextOf(-120), deck)),
          level(new LevelBar(deck)) {}

    DeckHead* head;
    ElidedLabel *title, *artist, *bitrate;
    TimeLabel *time, *remaining;
    CoverView* cover;
    PositionSlider* position;
    IconButton *toStart, *play, *pause, *stop, *next, *mute, *headphones;
    ElidedLabel* pitchCaption;
    PitchSlider* pitch;
    TimeLabel* pitchText;
    LevelBar* level;
};

DeckPanel::DeckPanel(int number, QWidget* parent)
    : QFrame(parent), number_(number), parts_(std::make_unique<Parts>(number, this)) {
    setAccessibleName(QStringLiteral("Player %1").arg(number));
    parts_->play->SetFill(number == 2 ? IconButton::Fill::Player2 : IconButton::Fill::Player1);
    parts_->pitchCaption->setText(QStringLiteral("Pitch"));
    parts_->pitchCaption->SetTone(Tone::Dim);
    parts_->pitchText->SetText(PitchSlider::TextOf(0));
    parts_->pitchText->setAlignment(Qt::AlignRight);
    NameControls();
    Connect();
    SetLayoutMode(mode_);
    ShowSignal();
    ShowTitle();
    ShowControls();
}

DeckPanel::~DeckPanel() = default;

void DeckPanel::NameControls() {
    const bool second = number_ == 2;
    const QString n = QString::number(number_);
    const auto numbered = [&](const char* name) { return QString::fromLatin1(name) + n; };
    const auto name = [&](QWidget* widget, const QString& objectName, const QString& spoken, const QString& hint) {
        widget->setObjectName(objectName);
        widget->setAccessibleName(QStringLiteral("Player %1: %2").arg(n, spoken));
        if (!hint.isEmpty())
            widget->setToolTip(hint);
    };
    const auto key = [&](int ofPlayer1) { return QStringLiteral(" (F%1)").arg(second ? ofPlayer1 + 4 : ofPlayer1); };
    name(parts_->play, numbered("cmdPlay"), QStringLiteral("Wiedergabe"), QStringLiteral("Wiedergabe") + key(1));
    name(parts_->stop, numbered("cmdStop"), QStringLiteral("Stop"), QStringLiteral("Stop") + key(2));
    name(parts_->pause, numbered("cmdPause"), QStringLiteral("Pause"), QStringLiteral("Pause") + key(3));
    name(parts_->next, second ? QStringLiteral("Command3") : QStringLiteral("Command1"),
         QStringLiteral("Nächster Titel"), QStringLiteral("Nächster Titel") + key(4));
    name(parts_->mute, second ? QStringLiteral("Command4") : QStringLiteral("Command2"), QStringLiteral("Stumm"),
         QStringLiteral("Stumm"));
    name(parts_->toStart, numbered("cmdAnfang"), QStringLiteral("Zum Anfang"),
         QStringLiteral("Zum Anfang oder Cue-Punkt"));
    name(parts_->headphones, numbered("cmdKopfhoerer"), QStringLiteral("Gewählten Titel der Liste vorhören"),
         QStringLiteral("Gewählten Titel der Liste mit Kopfhörer vorhören"));
    name(parts_->position, numbered("SPos"), QStringLiteral("Position"), {});
    name(parts_->pitch, second ? QStringLiteral("HScroll3") : QStringLiteral("HScroll2"), QStringLiteral("Pitch"),
         QStringLiteral("Pitch, Doppelklick: 0"));
    name(parts_->level, numbered("Pegel"), QStringLiteral("Pegel"), {});
    parts_->cover->setObjectName(numbered("imgCover"));
    name(parts_->artist, numbered("LArtist"), QStringLiteral("Interpret"), {});
    name(parts_->title, numbered("LSong"), QStringLiteral("Titel"), {});
    name(parts_->bitrate, numbered("lblbitrate"), QStringLiteral("Bitrate"), {});
    name(parts_->time, numbered("LTiempo"), QStringLiteral("Zeit"), {});
    name(parts_->remaining, numbered("lblRest"), QStringLiteral("Restzeit"), {});
    parts_->pitchText->setObjectName(numbered("lblPitch"));
    parts_->head->Status().setObjectName(numbered("lblStatus"));
}

void DeckPanel::Connect() {
    connect(parts_->play, &QPushButton::clicked, this, &DeckPanel::PlayClicked);
    connect(parts_->pause, &QPushButton::clicked, this, &DeckPanel::PauseClicked);
    connect(parts_->stop, &QPushButton::clicked, this, &DeckPanel::StopClicked);
    connect(parts_->next, &QPushButton::clicked, this, &DeckPanel::NextClicked);
    connect(parts_->mute, &QPushButton::clicked, this, &DeckPanel::MuteClicked);
    connect(parts_->toStart, &QPushButton::clicked, this, &DeckPanel::ToStartClicked);
    connect(parts_->headphones, &QPushButton::clicked, this, &DeckPanel::HeadphonesClicked);
    connect(parts_->position, &PositionSlider::DragBegan, this, &DeckPanel::PositionDragBegan);
    connect(parts_->position, &PositionSlider::Dragged, this, &DeckPanel::PositionDragged);
    connect(parts_->position, &PositionSlider::DragEnded, this, &DeckPanel::PositionDragEnded);
    connect(parts_->pitch, &QSlider::valueChanged, this, [this](int permille) {
        view_.pitchPermille = permille;
        parts_->pitchText->SetText(PitchSlider::TextOf(permille));
        Q_EMIT PitchChanged(permille);
    });
}

void DeckPanel::SetView(const DeckView& view) {
    const DeckSignal before = view_.signal;
    const bool coverMoved = view_.showsCover != view.showsCover;
    if (view_.lengthSeconds != view.lengthSeconds) { // another title's times may be shorter
        parts_->time->Narrow();
        parts_->remaining->Narrow();
    }
    view_ = view;
    if (coverMoved)
        Arrange();
    if (view_.signal != before)
        ShowSignal();
    ShowTitle();
    ShowControls();
}

void DeckPanel::ShowSignal() {
    parts_->head->SetSignal(view_.signal);
    const Tone tone = view_.signal == DeckSignal::None ? Tone::Dim : Tone::Text;
    for (ElidedLabel* label : {parts_->title, parts_->artist})
        label->SetTone(tone);
    parts_->time->SetTone(tone);
    parts_->bitrate->SetTone(Tone::Dim);
    update();
}

void DeckPanel::ShowTitle() {
    if (const QString tip = PlainTip(view_.caption); parts_->head->toolTip() != tip)
        parts_->head->setToolTip(tip);
    parts_->head->Status().SetText(view_.status);
    parts_->title->SetText(view_.title);
    parts_->artist->SetText(view_.artist);
    parts_->bitrate->SetText(view_.bitrate);
    parts_->bitrate->setVisible(!IsNarrow(mode_) && !view_.bitrate.isEmpty());
    parts_->time->SetText(view_.time);
    parts_->cover->SetPicture(view_.cover);
    parts_->remaining->SetText(view_.remaining);
    parts_->remaining->SetTone(view_.warning ? Tone::Warning : IsDim(view_.signal) ? Tone::Dim : Tone::Text);
}

void DeckPanel::ShowControls() {
    parts_->position->SetTitle(view_.lengthSeconds, view_.switchOverSeconds, view_.cueSeconds);
    parts_->position->SetWave(view_.wave);
    parts_->position->SetPosition(view_.position);
    parts_->level->SetLevels(view_.levelLeft, view_.levelRight);
    parts_->play->SetOn(view_.playing);
    parts_->pause->SetOn(view_.signal == DeckSignal::Paused);
    parts_->mute->SetOn(view_.muted);
    parts_->mute->SetIconName(view_.muted ? QStringLiteral("mute") : QStringLiteral("unmute"));
    if (!parts_->pitch->isSliderDown() && parts_->pitch->value() != view_.pitchPermille) {
        const QSignalBlocker silent(parts_->pitch);
        parts_->pitch->setValue(view_.pitchPermille);
        parts_->pitchText->SetText(PitchSlider::TextOf(view_.pitchPermille));
    }
}

void DeckPanel::SetLayoutMode(LayoutMode mode) {
    mode_ = mode;
    tight_ = IsTight(width());
    roomy_ = IsRoomy(width());
    parts_->head->SetLayoutMode(mode);
    for (IconButton* button :
         {parts_->toStart, parts_->play, parts_->pause, parts_->stop, parts_->next, parts_->mute, parts_->headphones})
        button->SetLow(mode == LayoutMode::Low);
    parts_->position->SetLow(mode == LayoutMode::Low);
    parts_->level->SetHeight(mode == LayoutMode::Low ? 0.6 : IsNarrow(mode) ? 0.85 : 1.45);
    ApplyFonts();
    Arrange();
}

int DeckPanel::TightWidth() const {
    return TransportWidth(SkinStyle::Units().G(), tightGap);
}

bool DeckPanel::IsTight(int width) const {
    const FontUnits& units = SkinStyle::Units();
    // Below 17 F the times do not stand side by side at their full size either.
    const int comfortable = qMax(TransportWidth(units.Gap(3), units.Gap(1.5)), units.Of(17));
    return IsNarrow(mode_) && width < comfortable;
}

bool DeckPanel::IsRoomy(int width) const {
    return !IsNarrow(mode_) && width >= SkinStyle::Units().Of(32);
}

QSize DeckPanel::minimumSizeHint() const {
    const QSize content = QFrame::minimumSizeHint();
    const int headphones = roomy_ ? parts_->headphones->sizeHint().width() : 0; // goes when there is no room
    return {IsNarrow(mode_) ? TightWidth() : content.width() - headphones, content.height()};
}

void DeckPanel::ApplyFonts() {
    const FontUnits& units = SkinStyle::Units();
    const bool narrow = IsNarrow(mode_);
    const bool wide = mode_ == LayoutMode::Wide;
    const bool low = mode_ == LayoutMode::Low;
    parts_->title->setFont(units.Font(low ? 1.25 : narrow ? 1.5 : wide ? 2.2 : 1.75, true));
    parts_->artist->setFont(units.Font(low ? 1.0 : narrow ? 1.15 : wide ? 1.5 : 1.25));
    parts_->time->setFont(units.Font(narrow ? 1.0 : wide ? 1.5 : 1.15, true));
    parts_->bitrate->setFont(units.Font(wide ? 1.15 : 1.0));
    parts_->remaining->setFont(units.Font(low ? 1.75 : tight_ ? 1.9 : narrow ? 2.6 : wide ? 5.2 : 3.5, true));
    parts_->pitchCaption->setFont(units.Font());
    parts_->pitchText->setFont(units.Font());
}

void DeckPanel::Arrange() {
    const FontUnits& units = SkinStyle::Units();
    const bool narrow = IsNarrow(mode_);
    delete layout();
    parts_->bitrate->setVisible(!narrow && !view_.bitrate.isEmpty());
    for (QWidget* part :
         std::initializer_list<QWidget*>{parts_->toStart, parts_->pitchCaption, parts_->pitch, parts_->pitchText})
        part->setVisible(!narrow);
    parts_->cover->setVisible(ShowsCover());
    parts_->headphones->setVisible(roomy_);

    auto* body = new QVBoxLayout;
    const int side = tight_ ? units.G() : units.Gap(3);
    const int gap = units.Gap(mode_ == LayoutMode::Low ? 1 : 2);
    body->setContentsMargins(side, gap, side, gap);
    body->setSpacing(gap);
    body->addLayout(narrow ? NarrowTitles() : Titles());
    body->addWidget(parts_->position, 1);
    body->addLayout(Transport());
    body->addLayout(Bottom());

    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(deckFrame, deckFrame, deckFrame, deckFrame);
    whole->setSpacing(0);
    whole->addWidget(parts_->head);
    whole->addLayout(body, 1);
}

/** Title over artist and times, the remaining time on the mixer's side, the cover on the other. */
QLayout* DeckPanel::Titles() const {
    const FontUnits& units = SkinStyle::Units();
    const bool first = number_ == 1;
    const Qt::Alignment outside = first ? Qt::AlignLeft : Qt::AlignRight;
    parts_->title->setAlignment(outside | Qt::AlignVCenter);
    parts_->artist->setAlignment(outside | Qt::AlignVCenter);
    parts_->remaining->setAlignment(first ? Qt::AlignRight : Qt::AlignLeft);

    auto* technical = new QHBoxLayout;
    technical->setSpacing(units.Of(0.4));
    if (!first)
        technical->addStretch(1);
    technical->addWidget(parts_->time, 0, Qt::AlignBottom);
    technical->addWidget(parts_->bitrate, 0, Qt::AlignBottom);
    if (first)
        technical->addStretch(1);

    auto* names = new QVBoxLayout;
    names->setSpacing(units.Gap(0.5));
    names->addStretch(1);
    names->addWidget(parts_->artist);
    names->addLayout(technical);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(units.Gap(3));
    grid->setVerticalSpacing(0);
    const int cover = first ? 0 : 2;
    const int rest = first ? 2 : 0;
    grid->addWidget(parts_->title, 0, first ? 1 : 0, 1, 2);
    grid->addLayout(names, 1, 1);
    grid->addWidget(parts_->remaining, 1, rest, Qt::AlignBottom);
    grid->setColumnStretch(1, 1);
    if (ShowsCover()) {
        const int size = units.Of(mode_ == LayoutMode::Wide ? 8.2 : 6.4);
        parts_->cover->setFixedSize(size, size);
        grid->addWidget(parts_->cover, 0, cover, 2, 1);
    }
    return grid;
}

/** Both decks alike: names to the left, remaining time to the right. */
QLayout* DeckPanel::NarrowTitles() const {
    const FontUnits& units = SkinStyle::Units();
    parts_->title->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    parts_->artist->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    parts_->remaining->setAlignment(Qt::AlignRight);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(units.G());
    grid->setVerticalSpacing(units.Gap(0.5));
    grid->addWidget(parts_->title, 0, 0, 1, 2);
    grid->addWidget(parts_->artist, 1, 0, 1, tight_ ? 2 : 1);
    grid->addWidget(parts_->time, 2, 0, Qt::AlignLeft);
    grid->addWidget(parts_->remaining, tight_ ? 2 : 1, 1, tight_ ? 1 : 2, 1, Qt::AlignRight | Qt::AlignBottom);
    grid->setColumnStretch(0, 1);
    return grid;
}

QLayout* DeckPanel::Transport() const {
    const FontUnits& units = SkinStyle::Units();
    const bool narrow = IsNarrow(mode_);
    auto* row = new QHBoxLayout;
    row->setSpacing(tight_ ? tightGap : units.Gap(1.5));
    if (!narrow)
        row->addWidget(parts_->toStart, 10);
    row->addWidget(parts_->play, 17);
    row->addWidget(parts_->pause, 10);
    row->addWidget(parts_->stop, 10);
    row->addWidget(parts_->next, 10);
    if (!narrow)
        row->addStretch(4);
    row->addWidget(parts_->mute, 10);
    if (roomy_)
        row->addWidget(parts_->headphones, 10);
    return row;
}

QLayout* DeckPanel::Bottom() const {
    const FontUnits& units = SkinStyle::Units();
    auto* row = new QHBoxLayout;
    row->setSpacing(units.Gap(2));
    if (!IsNarrow(mode_)) {
        parts_->pitch->setMinimumWidth(units.Of(4));
        parts_->pitch->setMaximumWidth(units.Of(13));
        row->addWidget(parts_->pitchCaption);
        row->addWidget(parts_->pitch, 10);
        row->addWidget(parts_->pitchText);
        row->addSpacing(units.Of(0.4));
    }
    row->addWidget(parts_->level, 15);
    return row;
}

void DeckPanel::paintEvent(QPaintEvent*) {
    const Skin& skin = SkinStyle::Colours();
    const bool red = view_.signal == DeckSignal::OnAir || view_.signal == DeckSignal::Muted;
    QPainter painter(this);
    painter.fillRect(rect(), red ? skin.onAir : skin.line);
    painter.fillRect(rect().adjusted(deckFrame, deckFrame, -deckFrame, -deckFrame), skin.panel);
}

void DeckPanel::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange && parts_)
        SetLayoutMode(mode_);
}

void DeckPanel::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    if (IsTight(width()) != tight_ || IsRoomy(width()) != roomy_)
        SetLayoutMode(mode_);
}

} // namespace kalvo
