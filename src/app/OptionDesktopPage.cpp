#include "app/OptionDesktopPage.h"

#include <QCheckBox>

namespace kalvo {

OptionDesktopPage::OptionDesktopPage(QWidget* parent) : OptionPage(tr("Desktop"), parent) {
    remote_ = AddSwitch(QStringLiteral("Fernbedienung"), tr("Medientasten bedienen Kalvo"));
    AddHint(tr("Auch wenn ein anderes Programm vorn ist: Wiedergabe, Pause, Stopp und nächster Titel gehen an den "
               "Player, der zu hören ist. Das gilt auch für die Bedienung auf dem Sperrbildschirm und in der Leiste "
               "des Desktops."));
    staysAwake_ = AddSwitch(QStringLiteral("Wachbleiben"), tr("Bildschirmschoner abhalten"));
    AddHint(tr("Solange Musik spielt, bleibt der Bildschirm an, und der Rechner geht nicht in den Ruhezustand."));
    AddHeading(tr("Benachrichtigungen"));
    warnings_ = AddSwitch(QStringLiteral("Warnungen"), tr("Warnungen melden"));
    titles_ = AddSwitch(QStringLiteral("Titelwechsel"), tr("Jeden neuen Titel melden"));
    AddHint(tr("Nur, solange ein anderes Programm vorn ist. Gewarnt wird etwa, wenn eine Soundkarte ausfällt oder "
               "beide Wiedergabelisten am Ende sind."));
}

void OptionDesktopPage::Show(const OptionValues& values) {
    remote_->setChecked(values.desktop.remote);
    staysAwake_->setChecked(values.desktop.staysAwake);
    warnings_->setChecked(values.desktop.warnings);
    titles_->setChecked(values.desktop.titles);
}

void OptionDesktopPage::Take(OptionValues& values) const {
    values.desktop = {remote_->isChecked(), warnings_->isChecked(), titles_->isChecked(), staysAwake_->isChecked()};
}

} // namespace kalvo
