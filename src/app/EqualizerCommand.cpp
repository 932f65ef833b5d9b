#include "app/EqualizerCommand.h"

#include "app/Desk.h"
#include "playback/ui/frmEqualizer.h"

#include <QAction>
#include <QMenu>

#include <utility>

namespace kalvo {

namespace {

constexpr int kKeepAfter = 1000; // ms

} // namespace

EqualizerCommand::EqualizerCommand(Desk& desk, QMenu& mixerMenu, QWidget& window)
    : QObject(&window), desk_(desk), window_(window), status_(mixerMenu.addAction(QString())) {
    status_->setObjectName(QStringLiteral("EQStatus"));
    status_->setCheckable(true);
    connect(status_, &QAction::triggered, this, &EqualizerCommand::Switch);
    QAction* open = mixerMenu.addAction(tr("E&qualizer..."));
    open->setObjectName(QStringLiteral("Equalizer"));
    open->setShortcut(Qt::CTRL | Qt::Key_E);
    open->setAutoRepeat(false);
    connect(open, &QAction::triggered, this, &EqualizerCommand::Open);
    keepSoon_.setSingleShot(true);
    keepSoon_.setInterval(kKeepAfter);
    connect(&keepSoon_, &QTimer::timeout, this, &EqualizerCommand::Keep);
}

EqualizerCommand::~EqualizerCommand() {
    Keep();
}

void EqualizerCommand::Load() {
    Apply(EqualiserSettings::Read(desk_.settings));
}

void EqualizerCommand::Apply(const EqualiserSettings& equaliser) {
    equaliser_ = equaliser;
    status_->setChecked(equaliser.on);
    status_->setText(equaliser.on ? tr("Equalizer an") : tr("Equalizer aus"));
    desk_.layer.SetEqualiser(equaliser);
    if (dialog_ != nullptr)
        dialog_->Show(equaliser);
}

void EqualizerCommand::Switch(bool on) {
    EqualiserSettings switched = equaliser_;
    switched.on = on;
    Apply(switched);
    changed_ = true;
    Keep();
}

void EqualizerCommand::Open() {
    if (dialog_ == nullptr) {
        dialog_ = new frmEqualizer(&window_);
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
        dialog_->Show(equaliser_);
        connect(dialog_, &frmEqualizer::Changed, this, [this] {
            Apply(dialog_->Shown());
            changed_ = true;
            keepSoon_.start();
        });
        connect(dialog_, &QDialog::finished, this, [this] {
            changed_ = true; // all its keys exist from the first closing on
            Keep();
        });
    }
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

/** Only after a change or a look: keys that nobody has seen stay absent. */
void EqualizerCommand::Keep() {
    keepSoon_.stop();
    if (std::exchange(changed_, false))
        equaliser_.Write(desk_.settings);
}

} // namespace kalvo
