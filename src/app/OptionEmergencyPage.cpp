#include "app/OptionEmergencyPage.h"

#include "base/FileName.h"
#include "base/Settings.h"
#include "widgets/ButtonPainting.h"
#include "widgets/PlainTip.h"
#include "widgets/RingRoom.h"
#include "widgets/xMessageBox.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>

namespace kalvo {

OptionEmergencyPage::OptionEmergencyPage(QWidget* parent) : OptionPage(tr("Notfalltitel"), parent) {
    auto* row = new RingRoom(this);
    path_ = Named(new QLineEdit(row), QStringLiteral("Notfalltitel"), tr("Datei des Notfalltitels"));
    path_->setReadOnly(true);
    path_->setPlaceholderText(tr("keiner"));
    auto* choose = Named(new QPushButton(tr("Auswählen..."), row), QStringLiteral("cmdNotfalltitel"),
                         tr("Notfalltitel auswählen"));
    remove_ =
        Named(new QPushButton(tr("Entfernen"), row), QStringLiteral("cmdKeinNotfalltitel"), tr("Keinen Notfalltitel"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(focusRingMargin, focusRingMargin, focusRingMargin, focusRingMargin);
    layout->addWidget(path_, 1);
    for (QPushButton* button : {choose, remove_}) {
        button->setAutoDefault(false);
        layout->addWidget(button);
    }
    AddRow(row);
    atListEnd_ = AddSwitch(QStringLiteral("NotfalltitelAmEnde"), tr("Auch am Ende beider Wiedergabelisten"));
    state_ = Named(new QLabel(this), QStringLiteral("lblNotfalltitel"), tr("Zustand des Notfalltitels"));
    state_->setWordWrap(true);
    AddRow(state_);
    AddHint(tr("Er liegt ganz im Arbeitsspeicher und wird gespielt, wenn die Musik zwei Sekunden lang stillsteht oder "
               "kein Titel der Listen mehr gelesen werden kann: wenn etwa die Festplatte mit der Musik abgezogen wird "
               "oder das Netzlaufwerk nicht mehr antwortet. Danach geht es mit den Listen weiter."));
    connect(choose, &QPushButton::clicked, this, &OptionEmergencyPage::Ask);
    connect(remove_, &QPushButton::clicked, this, [this] { ShowPath({}); });
}

void OptionEmergencyPage::Ask() {
    const QString folder = path_->text().isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::MusicLocation)
                                                   : QFileInfo(path_->text()).path();
    const QString path = QFileDialog::getOpenFileName(this, tr("Notfalltitel auswählen"), folder,
                                                      tr("Musikdateien (*.mp3 *.ogg *.MP3 *.OGG)"));
    if (path.size() > Settings::kLongestValue || FileName::HasControls(path)) {
        xMessageBox::Ask(this, tr("Notfalltitel"), FileName::Refusal(path, Settings::kLongestValue), {tr("ok")},
                         xMessageBox::Sign::Warning);
        return;
    }
    if (!path.isEmpty())
        ShowPath(path);
}

void OptionEmergencyPage::ShowPath(const QString& path) {
    path_->setText(path);
    path_->setToolTip(PlainTip(path));
    path_->setCursorPosition(static_cast<int>(path.size())); // the name rather than the root
    remove_->setEnabled(!path.isEmpty());
    atListEnd_->setEnabled(!path.isEmpty());
    state_->setText(
        path.isEmpty()
            ? tr("Es ist kein Notfalltitel gewählt: lässt sich kein Titel der Listen mehr spielen, bleibt es still.")
            : tr("Der Titel wird bei jedem Start im Hintergrund in den Speicher geladen."));
}

void OptionEmergencyPage::Show(const OptionValues& values) {
    ShowPath(values.emergencyTitle);
    atListEnd_->setChecked(values.emergencyAtEnd);
}

void OptionEmergencyPage::Take(OptionValues& values) const {
    values.emergencyTitle = path_->text();
    values.emergencyAtEnd = atListEnd_->isChecked();
}

} // namespace kalvo
