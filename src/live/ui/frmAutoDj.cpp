#include "live/ui/frmAutoDj.h"

#include "archive/CategoryLists.h"
#include "live/AutoDjRefill.h"
#include "live/ui/ValueChoice.h"
#include "widgets/ElidedLabel.h"
#include "widgets/MainButton.h"
#include "widgets/Mnemonics.h"
#include "widgets/xMessageBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include <cmath>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr double kMostHours = 1000;
constexpr int kUsualDistance = 5;

QString HoursInput(double hours) {
    return QLocale(QLocale::German).toString(hours, 'g', QLocale::FloatingPointShortest);
}

} // namespace

void frmAutoDj::Start() {
    ShowSaved({});
    Show(parts_.store.last);
    ShowRefill();
}

void frmAutoDj::ReloadValues() {
    values_->Reload();
}

/** "4", "0,5" and "0.5". */
std::optional<double> frmAutoDj::Hours() const {
    bool isNumber = false;
    const double hours = hours_->text().trimmed().replace(u',', u'.').toDouble(&isNumber);
    return isNumber && std::isfinite(hours) && hours > 0 && hours <= kMostHours ? std::optional(hours) : std::nullopt;
}

AutoDjSelection frmAutoDj::Shown() const {
    AutoDjSelection selection;
    selection.field = values_->Field();
    selection.values = values_->Values();
    selection.hours = Hours().value_or(parts_.store.last.hours);
    selection.bothLists = bothLists_->isChecked();
    selection.rules.artistDistance = artistRule_->isChecked() ? artistDistance_->value() : 0;
    selection.rules.skipPlayedToday = playedRule_->isChecked();
    selection.rules.skipOtherVersions = versionRule_->isChecked();
    return selection;
}

std::optional<AutoDjSelection> frmAutoDj::Selection() {
    if (values_->Values().isEmpty()) {
        Tell(u"Wählen Sie bitte zuerst Werte aus, nach denen Titel gesucht werden sollen."_s);
        return std::nullopt;
    }
    return Shown();
}

void frmAutoDj::Show(const AutoDjSelection& selection) {
    values_->SetChoice(selection.field, selection.values);
    hours_->setText(HoursInput(selection.hours));
    (selection.bothLists ? bothLists_ : firstList_)->setChecked(true);
    const int distance = selection.rules.artistDistance;
    artistRule_->setChecked(distance > 0);
    artistDistance_->setValue(distance > 0 ? distance : kUsualDistance);
    artistDistance_->setEnabled(distance > 0);
    playedRule_->setChecked(selection.rules.skipPlayedToday);
    versionRule_->setChecked(selection.rules.skipOtherVersions);
}

void frmAutoDj::ShowSaved(const QString& name) {
    const QSignalBlocker quiet(saved_);
    saved_->clear();
    for (const NamedSelection& named : parts_.store.Saved())
        saved_->addItem(named.name);
    saved_->setCurrentIndex(saved_->findText(name, Qt::MatchFixedString));
    saved_->setEditText(name);
}

void frmAutoDj::ShowRefill() {
    const AutoDjRefillOptions& options = parts_.refill.Options();
    const QSignalBlocker quiet(refillBelow_);
    refill_->setChecked(options.isOn);
    refillBelow_->setValue(options.below);
    const QString from =
        CategoryLists::Name(options.selection.field) + u": "_s + options.selection.values.join(u", "_s);
    refillState_->SetText(options.isOn ? parts_.refill.StateText() + u"  ·  "_s + from : parts_.refill.StateText());
    refillState_->SetTone(parts_.refill.IsStuck() ? Tone::Warning : Tone::Dim);
}

void frmAutoDj::ShowProgress(int percent) {
    progress_->setValue(percent);
    percent_->setText(QString::number(percent) + u" %"_s);
}

void frmAutoDj::SetRunning(bool running) {
    ShowCaption(*start_, running ? u"&Abbrechen"_s : u"&Füllen"_s);
    MakeMain(*start_, !running);
    start_->setAccessibleName(running ? u"Füllen abbrechen"_s : u"Wiedergabeliste füllen"_s);
}

void frmAutoDj::Tell(const QString& text) {
    xMessageBox::Ask(this, u" Auto DJ"_s, text, {});
}

/** What the window shows, for the next time. */
void frmAutoDj::Keep() {
    parts_.store.last = Shown();
    if (!parts_.store.Save())
        Q_EMIT Told(u"Die Auswahlen des Auto DJ können nicht geschrieben werden."_s);
}

void frmAutoDj::Fill() {
    if (fill_.IsRunning()) {
        fill_.Cancel();
        SetRunning(false);
        ShowProgress(0);
        return told_->SetText(u"Abgebrochen, die Wiedergabelisten bleiben, wie sie sind."_s);
    }
    if (!Hours())
        return Tell(u"Geben Sie bitte die Gesamtspielzeit in Stunden ein, zum Beispiel 2,5."_s);
    const std::optional<AutoDjSelection> selection = Selection();
    if (!selection)
        return;
    Keep();
    told_->SetText({});
    SetRunning(true);
    fill_.Start(*selection);
}

void frmAutoDj::End(int titles, qint64 seconds, bool isReached) {
    SetRunning(false);
    if (!isReached)
        told_->SetText(titles > 0 ? u"Mehr passende Titel gibt es nicht."_s : QString());
    Tell(titles > 0 ? AutoDj::Message(seconds)
                    : u"Zu dieser Auswahl gibt es keinen Titel, der nicht schon in der Wiedergabeliste steht oder den "
                      u"die Regeln auslassen."_s);
}

void frmAutoDj::LoadSaved() {
    if (const AutoDjSelection* selection = parts_.store.Find(saved_->currentText()))
        Show(*selection);
}

void frmAutoDj::SaveSelection() {
    const QString name = saved_->currentText().trimmed();
    if (name.isEmpty()) {
        saved_->setFocus();
        return Tell(u"Geben Sie bitte einen Namen für die Auswahl ein."_s);
    }
    const std::optional<AutoDjSelection> selection = Selection();
    if (!selection)
        return;
    parts_.store.Put({name, *selection});
    Keep();
    ShowSaved(name);
    told_->SetText(u"Auswahl „%1“ gespeichert."_s.arg(name));
}

void frmAutoDj::RemoveSelection() {
    const QString name = saved_->currentText().trimmed();
    if (!parts_.store.Find(name))
        return;
    const QString question = u"Wollen Sie die Auswahl „%1“ wirklich löschen?"_s.arg(name);
    if (xMessageBox::Ask(this, u" Achtung!"_s, question, {u"Ja"_s, u"Nein"_s}) != u"Ja"_s)
        return;
    parts_.store.Remove(name);
    Keep();
    ShowSaved({});
}

void frmAutoDj::SwitchRefill(bool on) {
    AutoDjRefillOptions options = parts_.refill.Options();
    options.isOn = false;
    if (on) {
        if (const std::optional<AutoDjSelection> selection = Selection()) {
            options.isOn = true;
            options.selection = *selection;
        }
    }
    options.below = refillBelow_->value();
    parts_.refill.SetOptions(options);
    ShowRefill();
}

void frmAutoDj::ChangeRefillBelow(int titles) {
    AutoDjRefillOptions options = parts_.refill.Options();
    options.below = titles;
    parts_.refill.SetOptions(options);
}

void frmAutoDj::done(int result) {
    fill_.Cancel();
    Keep();
    Q_EMIT NormalViewWanted();
    QDialog::done(result);
}

} // namespace kalvo
