#include "playback/ui/MixerPanel.h"

#include "playback/CrossFader.h"
#include "widgets/CheckButton.h"
#include "widgets/FaderSlider.h"
#include "widgets/IconButton.h"
#include "widgets/Icons.h"
#include "widgets/MeterDisplay.h"
#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"
#include "widgets/VolumeSlider.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QSignalBlocker>

namespace kalvo {

namespace {

void ShowChoice(QComboBox& box, int index) {
    if (index < 0)
        return;
    const QSignalBlocker silent(box);
    box.setCurrentIndex(index);
}

void Name(QWidget* widget, const char* objectName, const QString& spoken, const QString& hint = {}) {
    widget->setObjectName(QString::fromLatin1(objectName));
    widget->setAccessibleName(spoken);
    widget->setToolTip(hint.isEmpty() ? spoken : hint);
}

QHBoxLayout* Pair(QWidget* left, QWidget* right) {
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(1.5));
    row->addWidget(left, 1);
    row->addWidget(right, 1);
    return row;
}

} // namespace

struct MixerPanel::Parts {
    explicit Parts(MixerPanel* mixer)
        : head(new QWidget(mixer)),
          clock(new TimeLabel(QStringLiteral("00:00:00"), mixer)),
          volumeSign(new QLabel(mixer)),
          volume(new VolumeSlider(mixer)),
          volumeText(new TimeLabel(QStringLiteral("100"), mixer)),
          meter(new MeterDisplay(mixer)),
          handOver(new HandOverLine(mixer)),
          toPlayer1(new IconButton(QStringLiteral("fade-left"), IconButton::Size::Big, mixer)),
          toPlayer2(new IconButton(QStringLiteral("fade-right"), IconButton::Size::Big, mixer)),
          fader(new FaderSlider(mixer)),
          modes(new QComboBox(mixer)),
          tempo(new QComboBox(mixer)),
          continuous(new CheckButton(QStringLiteral("Kontinuierlich"), mixer)),
          automatic(new CheckButton(QStringLiteral("Automatik"), mixer)) {}

    QWidget* head;
    TimeLabel* clock;
    QLabel* volumeSign;
    VolumeSlider* volume;
    TimeLabel* volumeText;
    MeterDisplay* meter;
    HandOverLine* handOver;
    IconButton *toPlayer1, *toPlayer2;
    FaderSlider* fader;
    QComboBox *modes, *tempo;
    CheckButton *continuous, *automatic;
};

MixerPanel::MixerPanel(QWidget* parent) : QFrame(parent), parts_(std::make_unique<Parts>(this)) {
    setAccessibleName(QStringLiteral("Mixer"));
    parts_->toPlayer2->SetIconSide(IconButton::IconSide::Right);
    parts_->volumeText->setAlignment(Qt::AlignRight);
    parts_->volumeText->SetText(QStringLiteral("0"));
    for (const char* mode : {"No Fading", "Fade-CrossOver"})
        parts_->modes->addItem(QString::fromLatin1(mode));
    for (const FadeSpeed& speed : kFadeSpeeds)
        parts_->tempo->addItem(QStringLiteral("Tempo: %1").arg(QStringView(speed.text)), speed.interval);
    for (QComboBox* box : {parts_->modes, parts_->tempo}) {
        box->setFocusPolicy(Qt::TabFocus);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(4);
    }
    NameControls();
    Connect();
    SetLayoutMode(mode_);
}

MixerPanel::~MixerPanel() = default;

void MixerPanel::NameControls() {
    const QString menuHint = QStringLiteral(", rechte Maustaste: Geschwindigkeit");
    Name(parts_->clock, "lblUhr", QStringLiteral("Uhrzeit"));
    Name(parts_->volume, "hscroll1", QStringLiteral("Gesamtlautstärke"));
    parts_->volumeText->setObjectName(QStringLiteral("lblGesamtlautstaerke"));
    parts_->meter->setObjectName(QStringLiteral("Pegel"));
    parts_->handOver->setObjectName(QStringLiteral("lblUebergabe"));
    Name(parts_->toPlayer1, "Command5", QStringLiteral("Zu Player 1 überblenden"),
         QStringLiteral("Zu Player 1 überblenden") + menuHint);
    Name(parts_->toPlayer2, "Command6", QStringLiteral("Zu Player 2 überblenden"),
         QStringLiteral("Zu Player 2 überblenden") + menuHint);
    Name(parts_->fader, "SFader", QStringLiteral("Überblendregler"),
         QStringLiteral("Überblendregler, Doppelklick: Mitte"));
    Name(parts_->modes, "cboModus", QStringLiteral("Überblendmodus"));
    Name(parts_->tempo, "cboTempo", QStringLiteral("Überblendgeschwindigkeit"));
    Name(parts_->continuous, "chkKontinuierlich", QStringLiteral("Kontinuierliche Wiedergabe"));
    Name(parts_->automatic, "chkAutomatik", QStringLiteral("Mixerautomatik"));
}

void MixerPanel::Connect() {
    connect(parts_->volume, &QSlider::valueChanged, this, [this](int volume) {
        parts_->volumeText->SetText(QString::number(volume));
        Q_EMIT VolumeChanged(volume);
    });
    connect(parts_->fader, &QSlider::valueChanged, this, &MixerPanel::FaderChanged);
    connect(parts_->fader, &QSlider::sliderPressed, this, [this] { Q_EMIT FaderHeld(true); });
    connect(parts_->fader, &QSlider::sliderReleased, this, [this] { Q_EMIT FaderHeld(false); });
    connect(parts_->toPlayer1, &QPushButton::clicked, this, &MixerPanel::FadeToPlayer1Clicked);
    connect(parts_->toPlayer2, &QPushButton::clicked, this, &MixerPanel::FadeToPlayer2Clicked);
    for (IconButton* button : {parts_->toPlayer1, parts_->toPlayer2}) {
        button->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(button, &QWidget::customContextMenuRequested, this,
                [this, button](const QPoint& at) { Q_EMIT FadeMenuRequested(button->mapToGlobal(at)); });
    }
    connect(parts_->modes, &QComboBox::currentTextChanged, this, &MixerPanel::ModeChosen);
    connect(parts_->tempo, &QComboBox::currentIndexChanged, this,
            [this](int index) { Q_EMIT SpeedChosen(parts_->tempo->itemData(index).toInt()); });
    connect(parts_->continuous, &QCheckBox::toggled, this, &MixerPanel::ContinuousToggled);
    connect(parts_->automatic, &QCheckBox::toggled, this, &MixerPanel::AutomaticToggled);
}

void MixerPanel::SetClock(const QTime& time) {
    parts_->clock->SetText(time.toString(QStringLiteral("hh:mm:ss")));
}

void MixerPanel::SetVolume(int volume) {
    const QSignalBlocker silent(parts_->volume);
    parts_->volume->setValue(volume);
    parts_->volumeText->SetText(QString::number(parts_->volume->value()));
}

int MixerPanel::Volume() const {
    return parts_->volume->value();
}

void MixerPanel::SetFader(int position) {
    parts_->fader->setValue(position);
}

int MixerPanel::Fader() const {
    return parts_->fader->value();
}

void MixerPanel::SetHandOver(const HandOverView& view) {
    parts_->handOver->SetView(view);
}

void MixerPanel::SetMode(const QString& mode) {
    ShowChoice(*parts_->modes, parts_->modes->findText(mode));
}

void MixerPanel::SetSpeed(int milliseconds) {
    ShowChoice(*parts_->tempo, parts_->tempo->findData(milliseconds));
}

void MixerPanel::SetContinuous(bool on) {
    const QSignalBlocker silent(parts_->continuous);
    parts_->continuous->setChecked(on);
}

void MixerPanel::SetAutomatic(bool on) {
    const QSignalBlocker silent(parts_->automatic);
    parts_->automatic->setChecked(on);
}

MeterDisplay& MixerPanel::Meter() {
    return *parts_->meter;
}

void MixerPanel::SetMeter(MeterStyle style, const QColor& colour) {
    parts_->meter->SetStyle(style);
    parts_->meter->SetColour(colour);
    ShowMeter();
}

void MixerPanel::ShowMeter() {
    parts_->meter->SetHeight(mode_ == LayoutMode::Wide ? 3.4 : 2.4);
    parts_->meter->setHidden(IsNarrow(mode_) || parts_->meter->Style() == MeterStyle::None);
}

void MixerPanel::SetLayoutMode(LayoutMode mode) {
    mode_ = mode;
    const bool narrow = IsNarrow(mode);
    parts_->modes->setVisible(!narrow);
    parts_->tempo->setVisible(!narrow);
    parts_->handOver->SetBrief(narrow);
    parts_->volumeSign->setVisible(mode != LayoutMode::Low);
    for (IconButton* button : {parts_->toPlayer1, parts_->toPlayer2})
        button->SetLow(mode == LayoutMode::Low);
    parts_->toPlayer1->setText(narrow ? QStringLiteral("1") : QStringLiteral("Zu Player 1"));
    parts_->toPlayer2->setText(narrow ? QStringLiteral("2") : QStringLiteral("Zu Player 2"));
    parts_->continuous->setText(narrow ? QStringLiteral("Kont.") : QStringLiteral("Kontinuierlich"));
    parts_->automatic->setText(narrow ? QStringLiteral("Auto") : QStringLiteral("Automatik"));
    ShowMeter();
    Arrange();
    ApplySizes(); // a label that has got another parent comes with the font of the style before
}

void MixerPanel::ApplySizes() {
    const FontUnits& units = SkinStyle::Units();
    const double clock = mode_ == LayoutMode::Low      ? 1.15
                         : mode_ == LayoutMode::Narrow ? 1.5
                         : mode_ == LayoutMode::Wide   ? 2.2
                                                       : 1.75;
    parts_->clock->setFont(units.Font(clock, true));
    parts_->volumeText->setFont(units.Font());
    parts_->volume->setMinimumWidth(units.Of(3));
    parts_->volume->setMaximumWidth(IsNarrow(mode_) ? QWIDGETSIZE_MAX : units.Of(11));
    parts_->volumeSign->setPixmap(
        Icons::Pixmap(QStringLiteral("unmute"), SkinStyle::Colours().dim, units.Icon(), devicePixelRatioF()));
    parts_->head->setFixedHeight(units.PanelHead(mode_));
    const double width = IsNarrow(mode_) ? 13.5 : mode_ == LayoutMode::Wide ? 29 : 22;
    setFixedWidth(units.Of(width));
}

void MixerPanel::Arrange() {
    const FontUnits& units = SkinStyle::Units();
    const bool narrow = IsNarrow(mode_);
    const bool low = mode_ == LayoutMode::Low;
    delete layout();
    delete parts_->head->layout();
    auto* loudness = new QHBoxLayout;
    loudness->setSpacing(units.Gap(low ? 1 : 2));
    if (!narrow)
        loudness->addStretch(1);
    loudness->addWidget(parts_->volumeSign);
    loudness->addWidget(parts_->volume, 8);
    loudness->addWidget(parts_->volumeText);

    auto* head = new QHBoxLayout(parts_->head);
    const int side = units.Gap(low ? 2 : 3);
    head->setContentsMargins(side, 0, side, 0);
    head->setSpacing(units.Of(low ? 0.6 : 1.4));
    head->addWidget(parts_->clock, 0, Qt::AlignCenter);
    if (!narrow || low)
        head->addLayout(loudness, 1);

    auto* body = new QVBoxLayout;
    const int gap = units.Gap(low ? 1 : narrow ? 1.5 : 2);
    body->setContentsMargins(side, gap, side, gap);
    body->setSpacing(gap);
    if (narrow && !low)
        body->addLayout(loudness);
    body->addWidget(parts_->meter);
    body->addWidget(parts_->handOver);
    body->addLayout(Pair(parts_->toPlayer1, parts_->toPlayer2));
    body->addWidget(parts_->fader, 1);
    if (!narrow)
        body->addLayout(Pair(parts_->modes, parts_->tempo));
    body->addLayout(Pair(parts_->continuous, parts_->automatic));

    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(1, 1, 1, 1);
    whole->setSpacing(0);
    whole->addWidget(parts_->head);
    whole->addLayout(body, 1);
}

void MixerPanel::paintEvent(QPaintEvent*) {
    const Skin& skin = SkinStyle::Colours();
    QPainter painter(this);
    painter.fillRect(rect(), skin.line);
    painter.fillRect(rect().adjusted(1, 1, -1, -1), skin.panel);
    painter.fillRect(QRect(1, SkinStyle::Units().PanelHead(mode_), width() - 2, 1), skin.line);
}

void MixerPanel::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange && parts_)
        SetLayoutMode(mode_);
}

} // namespace kalvo
