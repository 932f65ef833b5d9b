#include "app/OptionMixerPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSpinBox>

namespace kalvo {

namespace {

QStringList SpeedTexts() {
    QStringList texts;
    for (const FadeSpeed& speed : kFadeSpeeds)
        texts.append(QString::fromUtf16(speed.text));
    return texts;
}

const QString seconds = QStringLiteral(" sec");

} // namespace

OptionMixerPage::OptionMixerPage(QWidget* parent) : OptionPage(tr("Mixer"), parent) {
    mode_ = AddChoice(QStringLiteral("Überblendmodus"), tr("Überblendmodus"),
                      {FadeModeText(FadeMode::FadeCrossOver), FadeModeText(FadeMode::NoFading)});
    speed_ = AddChoice(QStringLiteral("Überblendgeschwindigkeit"), tr("Überblendgeschwindigkeit"), SpeedTexts());
    switchOver_ = AddNumber(QStringLiteral("Umschaltzeitpunkt"), tr("Umschaltzeitpunkt"), 0, 99, seconds);
    scan_ = AddNumber(QStringLiteral("ScanIntervall"), tr("Anspielen je Titel"), 1, 99, seconds);
    removePlayed_ = AddSwitch(QStringLiteral("WlLoeschen"), tr("Gespielte Titel aus der Liste löschen"));
    preload_ = AddSwitch(QStringLiteral("Nachladen"), tr("Nächsten Titel im Voraus laden"));
    tagsIntoLists_ = AddSwitch(QStringLiteral("Check8"), tr("Titel und Interpret aus ID3-Tags lesen"));
    cuePoints_ = AddSwitch(QStringLiteral("CuePunkte"), tr("Titel an ihrem Cue-Punkt beginnen"));
    evenLoudness_ = AddSwitch(QStringLiteral("LautheitAusgleich"), tr("Lautheit der Titel ausgleichen"));
    AddHint(tr("Zum Umschaltzeitpunkt vor seinem Ende wird der laufende Titel in den nächsten überblendet."));
}

void OptionMixerPage::Show(const OptionValues& values) {
    mode_->setCurrentText(FadeModeText(values.fadeMode));
    speed_->setCurrentIndex(FadeSpeedIndex(values.fadeInterval));
    switchOver_->setValue(values.switchOver);
    scan_->setValue(values.scanInterval);
    removePlayed_->setChecked(values.removePlayed);
    preload_->setChecked(values.preload);
    tagsIntoLists_->setChecked(values.tagsIntoLists);
    cuePoints_->setChecked(values.useCuePoints);
    evenLoudness_->setChecked(values.evenLoudness);
}

void OptionMixerPage::Take(OptionValues& values) const {
    values.fadeMode = FadeModeFromText(mode_->currentText());
    values.fadeInterval = kFadeSpeeds.at(static_cast<std::size_t>(speed_->currentIndex())).interval;
    values.switchOver = switchOver_->value();
    values.scanInterval = scan_->value();
    values.removePlayed = removePlayed_->isChecked();
    values.preload = preload_->isChecked();
    values.tagsIntoLists = tagsIntoLists_->isChecked();
    values.useCuePoints = cuePoints_->isChecked();
    values.evenLoudness = evenLoudness_->isChecked();
}

} // namespace kalvo
