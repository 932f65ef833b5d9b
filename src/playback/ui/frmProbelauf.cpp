#include "playback/ui/frmProbelauf.h"

#include "base/Clock.h"
#include "base/Settings.h"
#include "playback/ui/frmProbelaufControls.h"
#include "widgets/Mnemonics.h"
#include "widgets/SilenceParts.h"
#include "widgets/xMessageBox.h"

#include <QEvent>
#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kTickInterval = 50;    // ms
constexpr int kClockInterval = 5000; // ms
constexpr int kFirstVolume = 50;

const QString kRehearsalSection = u"Soundkarte"_s;
const QString kRehearsalVolume = u"Volume"_s;

} // namespace

frmProbelauf::frmProbelauf(const Parts& parts, QWidget* parent)
    : QDialog(parent),
      parts_(parts),
      model_(parts.rehearsal, parts.tempo),
      player_(parts.mixer),
      controls_(std::make_unique<Controls>(this)) {
    setObjectName(u"frmProbelauf"_s);
    setWindowTitle(u"Probelauf"_s);
    NameControls();
    Arrange();
    Connect();
    ApplyLook();
    controls_->volume->setValue(
        std::clamp(parts_.settings.GetNumber(kRehearsalSection, kRehearsalVolume, kFirstVolume), 0, 100));
    tick_.start(kTickInterval);
    clock_.start(kClockInterval);
    ShowPlan();
    controls_->table->setFocus();
}

frmProbelauf::~frmProbelauf() {
    SilenceParts(*this);
    parts_.rehearsal.disconnect(this);
    parts_.rehearsal.Stop();
    parts_.settings.PutNumber(kRehearsalSection, kRehearsalVolume, controls_->volume->value());
}

void frmProbelauf::Connect() {
    Rehearsal* rehearsal = &parts_.rehearsal;
    connect(rehearsal, &Rehearsal::Planned, this, &frmProbelauf::ShowPlan);
    connect(rehearsal, &Rehearsal::Progressed, this, &frmProbelauf::ShowProgress);
    connect(rehearsal, &Rehearsal::Rendered, this, [this](int row) {
        model_.Renew(row);
        if (row != Row())
            return;
        ShowJoint();
        if (waiting_)
            TryToPlay();
    });
    connect(&player_, &JointPlayer::Ended, this, &frmProbelauf::GoOn);
    connect(&player_, &JointPlayer::Told, this, &frmProbelauf::Tell);
    connect(controls_->table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &frmProbelauf::Choose);
    connect(controls_->table, &QTableView::activated, this, [this] { Listen(false); });
    connect(controls_->play, &QPushButton::clicked, this, &frmProbelauf::Toggle);
    connect(controls_->all, &QPushButton::clicked, this, [this] { all_ ? StopListening() : Listen(true); });
    connect(controls_->previous, &QPushButton::clicked, this, [this] {
        Select(Row() - 1);
        Listen(false);
    });
    connect(controls_->next, &QPushButton::clicked, this, [this] {
        Select(Row() + 1);
        Listen(false);
    });
    connect(controls_->position, &PositionSlider::DragEnded, &player_, &JointPlayer::Seek);
    connect(controls_->volume, &QSlider::valueChanged, &player_, &JointPlayer::SetVolume);
    for (QSpinBox* margin : {controls_->before, controls_->after}) {
        connect(margin, &QSpinBox::valueChanged, this, [this] {
            StopListening();
            parts_.rehearsal.SetMargins({controls_->before->value(), controls_->after->value()});
            ShowJoint();
        });
    }
    connect(controls_->cancel, &QPushButton::clicked, this,
            [this] { parts_.rehearsal.IsRunning() ? parts_.rehearsal.Stop() : parts_.rehearsal.Start(); });
    connect(controls_->close, &QPushButton::clicked, this, &QDialog::reject);
    connect(&tick_, &QTimer::timeout, this, [this] {
        player_.Tick();
        ShowPosition();
    });
    connect(&clock_, &QTimer::timeout, this, [this] {
        if (player_.IsMainFree())
            model_.MoveTo(parts_.clock.Now());
    });
}

// ---- what is shown

int frmProbelauf::Row() const {
    return controls_->table->currentIndex().row();
}

void frmProbelauf::Select(int row) {
    if (row < 0 || row >= model_.rowCount())
        return;
    controls_->table->selectRow(row);
    controls_->table->scrollTo(model_.index(row, 0));
}

/** The chosen joint stays chosen where the new plan has it too. */
void frmProbelauf::ShowPlan() {
    const int wanted = parts_.rehearsal.Wanted();
    {
        const QSignalBlocker quiet(controls_->table->selectionModel());
        model_.Reload(parts_.clock.Now());
    }
    Select(std::max(0, wanted));
    ShowProgress();
    ShowJoint();
}

/** What is looked at is rendered first. */
void frmProbelauf::Choose() {
    if (const int row = Row(); row >= 0 && row < model_.rowCount()) {
        const QList<DeckTitle>& titles = parts_.rehearsal.Joints().at(row).titles;
        Q_EMIT JointChosen({titles.constFirst().path, titles.constLast().path});
        parts_.rehearsal.Want(row);
    }
    ShowJoint();
}

void frmProbelauf::ShowProgress() {
    const Rehearsal& rehearsal = parts_.rehearsal;
    const auto count = static_cast<int>(rehearsal.Joints().size());
    const int done = rehearsal.Done();
    const bool running = rehearsal.IsRunning();
    controls_->bar->setRange(0, rehearsal.IsPlanning() ? 0 : std::max(1, count));
    controls_->bar->setValue(done);
    controls_->bar->setVisible(running);
    ShowCaption(*controls_->cancel, running ? u"Abbrechen"_s : u"Neu rechnen"_s);
    if (rehearsal.IsPlanning())
        controls_->state->setText(u"Der Ablauf wird geplant..."_s);
    else if (count == 0)
        controls_->state->setText(u"Es steht kein Übergang bevor."_s);
    else if (running || done < count)
        controls_->state->setText(u"%1 von %2 Übergängen gerechnet"_s.arg(done).arg(count));
    else
        controls_->state->setText(count == 1 ? u"1 Übergang"_s : u"%1 Übergänge"_s.arg(count));
}

void frmProbelauf::ShowJoint() {
    const int row = Row();
    const bool exists = row >= 0 && row < model_.rowCount();
    for (IconButton* button : {controls_->play, controls_->all})
        button->setEnabled(exists);
    controls_->previous->setEnabled(exists && row > 0);
    controls_->next->setEnabled(exists && row + 1 < model_.rowCount());
    const bool plays = player_.IsPlaying() || waiting_;
    controls_->play->SetOn(plays && !all_);
    controls_->play->SetIconName(plays && !all_ ? u"stop"_s : u"play"_s);
    ShowCaption(*controls_->play, plays && !all_ ? u"Stop"_s : u"Anhören"_s);
    controls_->all->SetOn(all_);
    if (!exists) {
        controls_->titles->SetText({});
        controls_->facts->SetText({});
        controls_->position->SetTitle(0, 0, -1);
        controls_->position->SetWave(nullptr);
        return;
    }
    const auto cell = [&](int column) { return model_.index(row, column).data().toString(); };
    controls_->titles->SetText(parts_.rehearsal.Joints().at(row).Text());
    QStringList facts{u"Blende: "_s + cell(JointModel::Fade), u"Pegel: "_s + cell(JointModel::Level),
                      u"Lücke: "_s + cell(JointModel::Gap)};
    if (const QString tempo = cell(JointModel::Tempo); !tempo.isEmpty())
        facts.append(u"BPM: "_s + tempo);
    controls_->facts->SetText(facts.join(u"   "_s));
    const std::optional<RenderedJoint> sound = parts_.rehearsal.Sound(row);
    controls_->position->SetTitle(sound ? sound->length : 0, sound ? sound->length - sound->begin : 0, -1);
    controls_->position->SetWave(sound ? sound->wave : nullptr);
    ShowPosition();
}

void frmProbelauf::ShowPosition() {
    const std::optional<RenderedJoint> sound = parts_.rehearsal.Sound(Row());
    const bool plays = player_.IsPlaying() && sound && sound->length > 0;
    controls_->position->SetPosition(plays ? player_.Position() / sound->length : -1);
}

void frmProbelauf::Tell(const QString& text) {
    controls_->message->SetText(text);
    controls_->message->setVisible(!text.isEmpty());
}

// ---- listening

void frmProbelauf::Toggle() {
    if ((player_.IsPlaying() || waiting_) && !all_)
        StopListening();
    else
        Listen(false);
}

void frmProbelauf::Listen(bool all) {
    StopListening();
    if (Row() < 0)
        return;
    Tell({});
    if (!player_.IsMainFree())
        way_ = JointPlayer::Way::Headphones; // chosen while nothing was on air
    all_ = all;
    waiting_ = true;
    parts_.rehearsal.Want(Row());
    TryToPlay();
}

/** At once, or when its sound has been rendered. */
void frmProbelauf::TryToPlay() {
    const std::optional<RenderedJoint> sound = parts_.rehearsal.Sound(Row());
    if (sound) {
        waiting_ = false;
        const OutputChoice headphones = OutputChoice::Read(parts_.settings, audio::Output::Headphones);
        QString refusal = player_.Play(way_, sound->sound, headphones, controls_->volume->value());
        if (!refusal.isEmpty() && sound->sound && way_ == JointPlayer::Way::Headphones && AskForMain(refusal))
            refusal = player_.Play(way_, sound->sound, headphones, controls_->volume->value());
        Tell(refusal);
        all_ = all_ && refusal.isEmpty();
    }
    ShowJoint();
}

/** Nothing of it reaches the guests: the main output is only offered while nothing is on air there. */
bool frmProbelauf::AskForMain(const QString& refusal) {
    if (!player_.IsMainFree()) {
        xMessageBox::Ask(this, windowTitle(),
                         refusal + u"\nSolange Musik auf Sendung ist, wird auf der Hauptausgabe nichts vorgehört."_s,
                         {u"OK"_s}, xMessageBox::Sign::Warning);
        return false;
    }
    const QString answer =
        xMessageBox::Ask(this, windowTitle(),
                         refusal + u"\nEs ist nichts auf Sendung. Sollen die Übergänge auf der Hauptausgabe zu hören "
                                   u"sein?"_s,
                         {u"Ja"_s, u"Nein"_s}, xMessageBox::Sign::Warning);
    way_ = answer == u"Ja"_s ? JointPlayer::Way::Main : JointPlayer::Way::Headphones;
    return way_ == JointPlayer::Way::Main;
}

void frmProbelauf::StopListening() {
    player_.Stop();
    waiting_ = false;
    all_ = false;
    ShowJoint();
}

/** The sound has ended. */
void frmProbelauf::GoOn() {
    if (all_ && Row() + 1 < model_.rowCount()) {
        Select(Row() + 1);
        Listen(true);
    } else {
        StopListening();
    }
}

/** The space bar plays and stops wherever the focus is, unless it presses a button. */
void frmProbelauf::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat())
        Toggle();
    else
        QDialog::keyPressEvent(event);
}

void frmProbelauf::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    Fold();
}

void frmProbelauf::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && controls_ != nullptr) // the parts take their style after this
        QMetaObject::invokeMethod(this, &frmProbelauf::ApplyLook, Qt::QueuedConnection);
}

} // namespace kalvo
