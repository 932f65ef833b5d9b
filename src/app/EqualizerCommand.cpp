#include "app/EqualizerCommand.h"

#include "app/Desk.h"

#include <QAction>
#include <QMenu>

namespace kalvo {

EqualizerCommand::EqualizerCommand(Desk& desk, QMenu& mixerMenu, QObject* parent)
    : QObject(parent), desk_(desk), status_(mixerMenu.addAction(QString())) {
    status_->setObjectName(QStringLiteral("EQStatus"));
    status_->setCheckable(true);
    connect(status_, &QAction::triggered, this, &EqualizerCommand::Switch);
}

void EqualizerCommand::Load() {
    const EqualiserSettings equaliser = EqualiserSettings::Read(desk_.settings);
    status_->setChecked(equaliser.on);
    status_->setText(equaliser.on ? tr("Equalizer an") : tr("Equalizer aus"));
    desk_.layer.SetEqualiser(equaliser);
}

void EqualizerCommand::Switch(bool on) {
    desk_.settings.PutSwitch(QStringLiteral("Equalizer"), QStringLiteral("EQStatus"), on);
    Load();
}

} // namespace kalvo
