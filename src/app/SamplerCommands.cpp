#include "app/SamplerCommands.h"

#include "app/Desk.h"
#include "app/DeskActions.h"
#include "live/KeypadPads.h"
#include "live/ui/frmSample.h"
#include "live/ui/frmSampleEinstellungen.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <utility>

namespace kalvo {

namespace {

constexpr int kTickInterval = 50;    // ms
constexpr int kReadyInterval = 5000; // ms

/** A field that the keys of the keypad write into. */
bool IsTextField(const QWidget* widget) {
    if (const auto* line = qobject_cast<const QLineEdit*>(widget))
        return !line->isReadOnly();
    const auto* box = qobject_cast<const QComboBox*>(widget);
    return qobject_cast<const QAbstractSpinBox*>(widget) || qobject_cast<const QTextEdit*>(widget) ||
           qobject_cast<const QPlainTextEdit*>(widget) || (box && box->isEditable());
}

template<typename Window>
void BringUp(Window& window) {
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

SamplerCommands::SamplerCommands(Desk& desk, DeskActions& actions, QWidget& window)
    : QObject(&window),
      desk_(desk),
      window_(window),
      file_(desk.folder.Path(QStringLiteral("\\sample.dll")), desk.clock),
      sampler_(desk.mixer),
      ticks_(new QTimer(this)),
      ready_(new QTimer(this)) {
    Add(actions, QStringLiteral("Sampler"), QStringLiteral("&Sampler..."), &SamplerCommands::ShowPads);
    Add(actions, QStringLiteral("SamplerEinstellungen"), QStringLiteral("Sampler-&Einstellungen..."),
        &SamplerCommands::ShowSettings);
    ticks_->setInterval(kTickInterval);
    ready_->setInterval(kReadyInterval);
    connect(ticks_, &QTimer::timeout, &sampler_, &Sampler::Tick);
    connect(ready_, &QTimer::timeout, &sampler_, &Sampler::KeepReady);
    connect(&sampler_, &Sampler::HeldChanged, this, &SamplerCommands::WatchHeld);
    QApplication::instance()->installEventFilter(this);
    QTimer::singleShot(0, this, &SamplerCommands::Begin); // the output is open by then
}

SamplerCommands::~SamplerCommands() {
    delete pads_.data();
    delete settings_.data();
}

QAction* SamplerCommands::Add(DeskActions& actions, const QString& name, const QString& text,
                              void (SamplerCommands::*act)()) {
    QAction* action = actions.toolsMenu->addAction(text, this, act);
    action->setObjectName(name);
    return action;
}

void SamplerCommands::Begin() {
    sampler_.SetReduction(frmSample::StoredReduction(desk_.settings));
    sampler_.SetSlots(file_.Read());
    ready_->start();
}

void SamplerCommands::ShowPads() {
    if (!pads_) {
        pads_ = new frmSample(sampler_, desk_.settings, &window_);
        pads_->setAttribute(Qt::WA_DeleteOnClose);
        connect(pads_, &frmSample::SettingsRequested, this, &SamplerCommands::ShowSettings);
    }
    BringUp(*pads_);
}

void SamplerCommands::ShowSettings() {
    if (!settings_) {
        settings_ = new frmSampleEinstellungen(file_.Read(),
                                               {desk_.layer.Audio(), desk_.folder.Path(QStringLiteral("\\sample\\")),
                                                [this](const SampleSlots& slots) { return Save(slots); }},
                                               &window_);
        settings_->setAttribute(Qt::WA_DeleteOnClose);
    }
    BringUp(*settings_);
}

bool SamplerCommands::Save(const SampleSlots& slots) {
    const bool isKept = slots == file_.Read(); // or where nothing can be written nobody would need to
    const bool saved = (isKept && file_.IsComplete()) || file_.Write(slots) || isKept;
    sampler_.SetSlots(file_.Read()); // as its fields hold them
    return saved;
}

void SamplerCommands::WatchHeld(int pad) {
    pad == 0 ? ticks_->stop() : ticks_->start();
}

bool SamplerCommands::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride: // comes first: the keypad's keys are not a shortcut's then
    case QEvent::KeyPress:
        if (watched->isWidgetType() && PressKey(*static_cast<QKeyEvent*>(event))) {
            event->accept();
            return true;
        }
        break;
    case QEvent::KeyRelease:
        if (watched->isWidgetType() && ReleaseKey(*static_cast<QKeyEvent*>(event)))
            return true;
        break;
    case QEvent::WindowDeactivate:
        DropKey();
        break;
    case QEvent::FocusIn:
        if (!KeysFire())
            DropKey();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool SamplerCommands::KeysFire() const {
    const QWidget* active = QApplication::activeWindow();
    return active != nullptr && (active == &window_ || active == pads_) && !QApplication::activePopupWidget() &&
           !IsTextField(QApplication::focusWidget());
}

bool SamplerCommands::PressKey(const QKeyEvent& event) {
    const int pad = PadOfKey(event.key(), event.modifiers().testFlag(Qt::KeypadModifier));
    const bool isPlain = (event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == Qt::NoModifier;
    if (pad == 0 || !isPlain || !KeysFire() || !sampler_.IsAssigned(pad))
        return false;
    if (!event.isAutoRepeat() && keyPad_ != pad && event.type() == QEvent::KeyPress) {
        keyPad_ = pad;
        sampler_.Press(pad);
    }
    return true;
}

bool SamplerCommands::ReleaseKey(const QKeyEvent& event) {
    const int pad = PadOfKey(event.key(), event.modifiers().testFlag(Qt::KeypadModifier));
    if (pad == 0 || pad != keyPad_)
        return false;
    if (!event.isAutoRepeat())
        DropKey();
    return true;
}

void SamplerCommands::DropKey() {
    if (const int pad = std::exchange(keyPad_, 0); pad != 0)
        sampler_.Release(pad);
}

} // namespace kalvo
