#include "app/OptionTextPages.h"

#include "base/Settings.h"

#include <QCheckBox>
#include <QIntValidator>
#include <QLineEdit>

namespace kalvo {

namespace {

constexpr int mostTitles = 99'999;

} // namespace

OptionScreenSaverPage::OptionScreenSaverPage(QWidget* parent) : OptionPage(tr("Bildschirmschoner"), parent) {
    password_ = Named(new QLineEdit(this), QStringLiteral("Passwort"), tr("Passwort"));
    password_->setEchoMode(QLineEdit::Password);
    password_->setMaxLength(Settings::kLongestValue);
    password_->setPlaceholderText(tr("keines"));
    AddRow(tr("Passwort"), password_);
    auto* reveal = new QCheckBox(tr("Passwort anzeigen"), this);
    AddRow(Named(reveal, QStringLiteral("chkAnzeigen"), reveal->text()));
    connect(reveal, &QCheckBox::toggled, password_,
            [this](bool on) { password_->setEchoMode(on ? QLineEdit::Normal : QLineEdit::Password); });
    keys_ = AddSwitch(QStringLiteral("Tastaturfunktion"), tr("Tastaturfunktionen im Bildschirmschoner"));
    AddHint(tr("Das Passwort steht lesbar in der Datei „kalvo.ini“; nehmen Sie keines, das Sie anderswo gebrauchen. "
               "„0“ heißt: kein Passwort."));
}

void OptionScreenSaverPage::Show(const OptionValues& values) {
    password_->setText(values.password);
    keys_->setChecked(values.screenSaverKeys);
}

void OptionScreenSaverPage::Take(OptionValues& values) const {
    values.password = password_->text() == QStringLiteral("0") ? QString() : password_->text();
    values.screenSaverKeys = keys_->isChecked();
}

OptionChartsPage::OptionChartsPage(QWidget* parent) : OptionPage(tr("Charts"), parent) {
    limit_ = Named(new QLineEdit(this), QStringLiteral("Text2"), tr("Titelbegrenzung"));
    limit_->setValidator(new QIntValidator(1, mostTitles, limit_));
    limit_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    AddRow(tr("Titelbegrenzung"), limit_);
    AddHint(tr("So viele Titel zeigt die Rangliste der Charts höchstens."));
}

void OptionChartsPage::Show(const OptionValues& values) {
    limit_->setText(values.chartsLimit);
}

void OptionChartsPage::Take(OptionValues& values) const {
    if (limit_->hasAcceptableInput())
        values.chartsLimit = limit_->text();
}

OptionMetadataPage::OptionMetadataPage(QWidget* parent) : OptionPage(tr("Metadaten"), parent) {
    alternative_ = AddText(QStringLiteral("txtAlternativ"), tr("Text ohne Titelangaben"));
    stop_ = AddText(QStringLiteral("txtStop"), tr("Text, wenn nichts spielt"));
    status_ = AddText(QStringLiteral("txtStatus"), tr("Status"));
    AddHint(tr("Die Datei „meta.dat“ im Datenordner enthält immer den laufenden Titel als „Interpret - Titel“, für "
               "Streaming-Encoder und Einblendungen."));
}

QLineEdit* OptionMetadataPage::AddText(const QString& name, const QString& caption) {
    auto* text = Named(new QLineEdit(this), name, caption);
    text->setMaxLength(Settings::kLongestValue);
    AddRow(caption, text);
    return text;
}

void OptionMetadataPage::Show(const OptionValues& values) {
    alternative_->setText(values.metaAlternative);
    stop_->setText(values.metaStop);
    status_->setText(values.metaStatus);
}

void OptionMetadataPage::Take(OptionValues& values) const {
    values.metaAlternative = alternative_->text();
    values.metaStop = stop_->text();
    values.metaStatus = status_->text();
}

} // namespace kalvo
