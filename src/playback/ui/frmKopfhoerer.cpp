#include "playback/ui/frmKopfhoerer.h"

#include "base/FileName.h"
#include "base/Settings.h"
#include "playlists/CueText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/Icons.h"
#include "widgets/LevelBar.h"
#include "widgets/PositionSlider.h"
#include "widgets/SilenceParts.h"
#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"
#include "widgets/xMessageBox.h"

#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSlider>

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr int kPositionInterval = 50; // ms
constexpr int kRepeatInterval = 100;  // ms
constexpr int kDefaultVolume = 50;
constexpr double kLevelRange = 48; // dB

const QString kSection = QStringLiteral("Soundkarte");
const QString kVolumeKey = QStringLiteral("Volume");

IconButton* Button(const char* icon, QWidget* parent) {
    return new IconButton(QString::fromLatin1(icon), IconButton::Size::Big, parent);
}

float Lit(float peak) {
    return peak <= 0 ? 0 : float(std::clamp(1.0 + 20.0 * std::log10(double(peak)) / kLevelRange, 0.0, 1.0));
}

} // namespace

struct frmKopfhoerer::Parts {
    explicit Parts(frmKopfhoerer* window)
        : title(new ElidedLabel(window)),
          artist(new ElidedLabel(window)),
          seconds(new TimeLabel(QStringLiteral("0000.0"), window)),
          length(new QLabel(window)),
          status(new QLabel(window)),
          position(new PositionSlider(1, window)),
          level(new LevelBar(window)),
          restart(Button("previous", window)),
          play(Button("play", window)),
          fromCue(Button("play-next", window)),
          pause(Button("pause", window)),
          stop(Button("stop", window)),
          back(Button("fade-left", window)),
          forward(Button("fade-right", window)),
          half(Button("play", window)),
          take(Button("check", window)),
          clear(Button("trash", window)),
          sign(new QLabel(window)),
          volume(new QSlider(Qt::Vertical, window)),
          volumeText(new TimeLabel(QStringLiteral("100 %"), window)),
          message(new ElidedLabel(window)) {}

    ElidedLabel *title, *artist;
    TimeLabel* seconds;
    QLabel *length, *status;
    PositionSlider* position;
    LevelBar* level;
    IconButton *restart, *play, *fromCue, *pause, *stop;
    IconButton *back, *forward, *half, *take, *clear;
    QLabel* sign;
    QSlider* volume;
    TimeLabel* volumeText;
    ElidedLabel* message;
    QList<QHBoxLayout*> rows; ///< of buttons, and of the state
};

frmKopfhoerer::frmKopfhoerer(AudioLayer& layer, Settings& settings, QWidget* parent)
    : QDialog(parent), settings_(settings), player_(layer), parts_(std::make_unique<Parts>(this)) {
    setObjectName(QStringLiteral("frmKopfhoerer"));
    setWindowTitle(QStringLiteral("Vorhören mit Kopfhörer"));
    NameControls();
    Arrange();
    ApplyLook();
    ConnectTransport();
    ConnectSteps(*parts_->back, timer2_, -1);
    ConnectSteps(*parts_->forward, timer3_, 1);
    ConnectPoints();
    parts_->volume->setValue(std::clamp(settings.GetNumber(kSection, kVolumeKey, kDefaultVolume), 0, 100));
    ShowState();
}

frmKopfhoerer::~frmKopfhoerer() {
    SilenceParts(*this);
    settings_.PutNumber(kSection, kVolumeKey, parts_->volume->value());
}

void frmKopfhoerer::NameControls() {
    const auto name = [](QWidget* part, const char* objectName, const QString& spoken) {
        part->setObjectName(QString::fromLatin1(objectName));
        part->setAccessibleName(spoken);
    };
    const auto button = [&](IconButton* part, const char* objectName, const QString& caption, const QString& hint) {
        name(part, objectName, caption);
        part->setText(caption);
        part->setToolTip(hint);
    };
    button(parts_->restart, "Label2", tr("Anfang"), tr("Von vorn"));
    button(parts_->play, "Command2", tr("Wiedergabe"), tr("Wiedergabe (Leertaste)"));
    button(parts_->fromCue, "Command10", tr("ab Cue"), tr("Wiedergabe ab dem Cue-Punkt"));
    button(parts_->pause, "Command8", tr("Pause"), tr("Pause (Leertaste)"));
    button(parts_->stop, "Command1", tr("Stop"), tr("Stop"));
    button(parts_->back, "Command5", tr("0,1 s"), QStringLiteral("zurück"));
    button(parts_->forward, "Command6", tr("0,1 s"), QStringLiteral("vorwärts"));
    button(parts_->half, "Command7", QStringLiteral("0,5 speed"), tr("Halbe Geschwindigkeit, solange gedrückt"));
    button(parts_->take, "Command3", tr("Cue-Punkt übernehmen"), tr("Hier beginnt der Titel auf seinem Player"));
    button(parts_->clear, "Command9", tr("Cue löschen"), tr("Der Titel beginnt wieder an seinem Anfang"));
    parts_->back->setAccessibleName(tr("0,1 Sekunden zurück"));
    parts_->forward->setAccessibleName(tr("0,1 Sekunden vorwärts"));
    parts_->forward->SetIconSide(IconButton::IconSide::Right);
    name(parts_->title, "lblTitel", tr("Titel"));
    name(parts_->artist, "lblInterpret", tr("Interpret"));
    name(parts_->seconds, "Label9", tr("Position in Sekunden"));
    name(parts_->length, "lblLaenge", tr("Länge"));
    name(parts_->status, "lblStatus", tr("Zustand"));
    name(parts_->position, "Slider1", tr("Position"));
    name(parts_->level, "Pegel", tr("Pegel"));
    name(parts_->volume, "VScroll1", tr("Lautstärke des Kopfhörers"));
    name(parts_->volumeText, "lblLautstaerke", tr("Lautstärke"));
    name(parts_->message, "lblMeldung", tr("Meldung"));
    timer1_.setObjectName(QStringLiteral("Timer1"));
    timer2_.setObjectName(QStringLiteral("Timer2"));
    timer3_.setObjectName(QStringLiteral("Timer3"));
}

void frmKopfhoerer::Arrange() {
    auto* grid = new QGridLayout(this);
    const auto row = [&](int line, std::initializer_list<QWidget*> parts) {
        auto* box = new QHBoxLayout;
        for (QWidget* part : parts)
            box->addWidget(part, part == parts_->take ? 2 : 1);
        grid->addLayout(box, line, 0, 1, 2);
        parts_->rows.append(box);
    };
    grid->addWidget(parts_->title, 0, 0);
    grid->addWidget(parts_->seconds, 0, 1, Qt::AlignRight | Qt::AlignBottom);
    auto* state = new QHBoxLayout;
    parts_->rows.append(state);
    parts_->seconds->setAlignment(Qt::AlignRight);
    state->addStretch(1);
    state->addWidget(parts_->length);
    state->addWidget(parts_->status);
    grid->addWidget(parts_->artist, 1, 0);
    grid->addLayout(state, 1, 1);
    grid->addWidget(parts_->position, 2, 0, 1, 2);
    grid->addWidget(parts_->level, 3, 0, 1, 2);
    row(4, {parts_->restart, parts_->play, parts_->fromCue, parts_->pause, parts_->stop});
    row(5, {parts_->back, parts_->forward, parts_->half});
    row(6, {parts_->take, parts_->clear});
    grid->addWidget(parts_->message, 7, 0, 1, 3);
    auto* side = new QVBoxLayout;
    side->addWidget(parts_->sign, 0, Qt::AlignHCenter);
    side->addWidget(parts_->volume, 1, Qt::AlignHCenter);
    side->addSpacing(SkinStyle::Units().G());
    side->addWidget(parts_->volumeText, 0, Qt::AlignHCenter);
    grid->addLayout(side, 0, 2, 7, 1);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(2, 1);
    parts_->volume->setRange(0, 100);
    parts_->volume->setPageStep(10);
    parts_->volumeText->setAlignment(Qt::AlignHCenter);
}

void frmKopfhoerer::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    parts_->title->setFont(units.Font(1.5, true));
    parts_->artist->setFont(units.Font(1.15));
    parts_->seconds->setFont(units.Font(2.6, true));
    parts_->status->setFont(units.Font(1, true));
    parts_->length->setForegroundRole(QPalette::PlaceholderText);
    parts_->sign->setPixmap(
        Icons::Pixmap(QStringLiteral("headphones"), SkinStyle::Colours().text, units.Icon(), devicePixelRatioF()));
    parts_->message->SetTone(Tone::Warning);
    parts_->message->setMinimumHeight(units.Of(1.4)); // its place is kept
    parts_->position->setMinimumHeight(units.Of(3.4));
    parts_->level->SetHeight(0.85);
    parts_->volume->setMinimumSize(units.Of(2.4), units.Of(9));
    auto* grid = static_cast<QGridLayout*>(layout());
    grid->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(2));
    grid->setHorizontalSpacing(units.Gap(3));
    grid->setVerticalSpacing(units.Gap(2));
    for (QHBoxLayout* row : std::as_const(parts_->rows))
        row->setSpacing(units.Gap(1.5));
    setMinimumWidth(units.Of(46));
}

// ---- transport

void frmKopfhoerer::ConnectTransport() {
    connect(parts_->restart, &QPushButton::clicked, &player_, &HeadphonePlayer::Restart);
    connect(parts_->play, &QPushButton::clicked, &player_, &HeadphonePlayer::Play);
    connect(parts_->fromCue, &QPushButton::clicked, this, [this] { player_.PlayFrom(std::max(0.0, title_.cue)); });
    connect(parts_->pause, &QPushButton::clicked, &player_, &HeadphonePlayer::Pause);
    connect(parts_->stop, &QPushButton::clicked, &player_, &HeadphonePlayer::Stop);
    connect(parts_->half, &QPushButton::pressed, &player_, &HeadphonePlayer::BeginHalfSpeed);
    connect(parts_->half, &QPushButton::released, &player_, &HeadphonePlayer::EndHalfSpeed);
    connect(parts_->position, &PositionSlider::Dragged, &player_, &HeadphonePlayer::Seek);
    connect(parts_->position, &PositionSlider::DragEnded, this, [this](double fraction) {
        player_.Seek(fraction);
        ShowPosition();
    });
    connect(parts_->volume, &QSlider::valueChanged, this, &frmKopfhoerer::SetVolume);
    connect(&player_, &HeadphonePlayer::Changed, this, &frmKopfhoerer::ShowState);
    connect(&player_, &HeadphonePlayer::Told, this, &frmKopfhoerer::Tell);
    timer1_.setInterval(kPositionInterval);
    connect(&timer1_, &QTimer::timeout, this, [this] {
        player_.Tick();
        ShowPosition();
    });
}

void frmKopfhoerer::ConnectSteps(IconButton& button, QTimer& repeat, int direction) {
    repeat.setInterval(kRepeatInterval);
    const auto stepOnce = [this, direction] {
        player_.Step(direction);
        ShowPosition();
    };
    connect(&repeat, &QTimer::timeout, this, stepOnce);
    connect(&button, &QPushButton::pressed, this, [this, &repeat, stepOnce] {
        timer1_.stop();
        player_.BeginSteps();
        stepOnce();
        repeat.start();
    });
    connect(&button, &QPushButton::released, this, [this, &repeat] {
        repeat.stop();
        player_.EndSteps();
        timer1_.start();
    });
}

void frmKopfhoerer::ConnectPoints() {
    connect(parts_->take, &QPushButton::clicked, this,
            [this] { Q_EMIT CueWanted(title_, CueText::Write(player_.Position())); });
    connect(parts_->clear, &QPushButton::clicked, this, [this] { Q_EMIT CueWanted(title_, {}); });
}

/** The space bar plays and pauses wherever the focus is, unless it presses a button. */
void frmKopfhoerer::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space || event->isAutoRepeat()) {
        QDialog::keyPressEvent(event);
        return;
    }
    if (player_.Now() == HeadphonePlayer::State::Play)
        player_.Pause();
    else
        player_.Play();
}

// ---- what is heard

void frmKopfhoerer::ShowWaves(const QString& cacheFolder) {
    pictures_ = std::make_unique<TitlePictures>(cacheFolder);
}

void frmKopfhoerer::Listen(const HeadphoneTitle& title) {
    title_ = title;
    parts_->title->SetText(FileName::ShownTitle(title.title, title.artist, title.path));
    parts_->artist->SetText(title.artist);
    parts_->message->SetText({});
    if (pictures_)
        pictures_->Show(title.path);
    player_.Load(title.path);
    if (OpenCard())
        player_.Restart();
    ShowState();
    timer1_.start();
}

bool frmKopfhoerer::OpenCard() {
    if (player_.IsOpen())
        return true;
    const QString refusal = player_.Open(OutputChoice::Read(settings_, audio::Output::Headphones));
    if (refusal.isEmpty()) {
        SetVolume(parts_->volume->value());
        return true;
    }
    Tell(refusal);
    // Only now the caller shows the window: the question belongs above it.
    QMetaObject::invokeMethod(
        this,
        [this, refusal] {
            xMessageBox::Ask(this, windowTitle(), refusal, {QStringLiteral("OK")}, xMessageBox::Sign::Warning);
        },
        Qt::QueuedConnection);
    return false;
}

void frmKopfhoerer::ShowCue(double cue) {
    title_.cue = cue;
    ShowState();
}

void frmKopfhoerer::SetVolume(int volume) {
    player_.SetVolume(volume);
    parts_->volumeText->SetText(QStringLiteral("%1 %").arg(volume));
}

void frmKopfhoerer::Tell(const QString& text) {
    parts_->message->SetText(text);
}

void frmKopfhoerer::ShowState() {
    using State = HeadphonePlayer::State;
    const State state = player_.Now();
    parts_->status->setText(player_.StatusText());
    parts_->play->SetOn(state == State::Play);
    parts_->pause->SetOn(state == State::Pause);
    parts_->half->SetOn(state == State::HalfSpeed);
    for (QWidget* part : std::initializer_list<QWidget*>{parts_->restart, parts_->play, parts_->volume})
        part->setEnabled(player_.IsOpen());
    parts_->fromCue->setEnabled(player_.IsOpen() && title_.cue >= 0);
    for (IconButton* part : {parts_->pause, parts_->stop})
        part->setEnabled(state != State::Stop);
    // A held button that is disabled would never be released.
    for (IconButton* part : {parts_->back, parts_->forward, parts_->half})
        part->setEnabled(player_.HasStream() || part->isDown());
    parts_->take->setEnabled(title_.source != 0 && player_.HasStream());
    parts_->take->SetOn(parts_->take->isEnabled() && state == State::Pause);
    parts_->clear->setEnabled(title_.source != 0 && title_.cue >= 0);
    parts_->fromCue->setToolTip(title_.cue < 0 ? tr("Kein Cue-Punkt gesetzt")
                                               : tr("Wiedergabe ab dem Cue-Punkt %1").arg(CueText::Write(title_.cue)));
    ShowPosition();
}

void frmKopfhoerer::ShowPosition() {
    const double position = player_.Position();
    const double length = player_.Length();
    parts_->seconds->SetText(CueText::Write(position));
    const QString total = length > 0 ? tr("von %1 Sekunden").arg(CueText::Write(length)) : tr("Sekunden");
    if (parts_->length->text() != total)
        parts_->length->setText(total);
    parts_->position->SetTitle(length, 0, title_.cue);
    if (pictures_)
        parts_->position->SetWave(pictures_->Wave());
    parts_->position->SetPosition(length > 0 ? position / length : -1);
    const audio::Levels levels = player_.Level();
    parts_->level->SetLevels(Lit(levels.left), Lit(levels.right));
}

void frmKopfhoerer::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && parts_ != nullptr)
        ApplyLook();
}

} // namespace kalvo
