#include "live/ui/frmTerminPlay.h"

#include "base/FileName.h"
#include "widgets/CheckButton.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/Named.h"
#include "widgets/SkinStyle.h"
#include "widgets/xMessageBox.h"

#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QTimeEdit>

namespace kalvo {

namespace {

const QString kTimeFormat = QStringLiteral("HH:mm");

/** Selects a text; one that is not offered counts as the fallback. */
void Select(QComboBox& box, const QString& text, const QString& fallback) {
    const int found = box.findText(text);
    box.setCurrentIndex(found >= 0 ? found : box.findText(fallback));
}

IconButton* Button(const QString& name, const QString& icon, const QString& text, QWidget* parent) {
    auto* button = new IconButton(icon, IconButton::Size::Normal, parent);
    button->setObjectName(name);
    button->setText(text);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

} // namespace

frmTerminPlay::frmTerminPlay(const JingleRecord& record, const QString& folder, QWidget* parent)
    : QDialog(parent),
      record_(record),
      folder_(folder),
      path_(new ElidedLabel(this)),
      active_(new CheckButton(QStringLiteral("Aktiv"), this)),
      afterTitle_(new CheckButton(QStringLiteral("Ende des laufenden Titels abwarten"), this)) {
    setObjectName(QStringLiteral("frmTerminPlay"));
    setWindowTitle(QStringLiteral("Termin-Play %1").arg(record.number));
    path_->setObjectName(QStringLiteral("lblDatei"));
    active_->setObjectName(QStringLiteral("Check1"));
    active_->setChecked(record.active);
    afterTitle_->setObjectName(QStringLiteral("Check2"));
    afterTitle_->setChecked(record.afterTitle);
    afterTitle_->setToolTip(QStringLiteral("Die Datei beginnt nicht mitten in einem Titel, sondern nach ihm"));
    auto* choose =
        Button(QStringLiteral("Command1"), QStringLiteral("folder"), QStringLiteral("Datei wählen..."), this);
    connect(choose, &QPushButton::clicked, this, &frmTerminPlay::AskForFile);
    auto* file = new QHBoxLayout;
    file->addWidget(path_, 1);
    file->addWidget(choose);
    accept_ = Button(QStringLiteral("Command2"), QStringLiteral("check"), QStringLiteral("Übernehmen"), this);
    accept_->SetOn(true);
    accept_->setDefault(true);
    connect(accept_, &QPushButton::clicked, this, &frmTerminPlay::accept);
    auto* cancel = Named(new QPushButton(QStringLiteral("Abbrechen"), this), QStringLiteral("Command3"),
                         QStringLiteral("Abbrechen"));
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* switches = new QHBoxLayout;
    switches->addWidget(active_);
    switches->addWidget(afterTitle_);
    switches->addStretch(1);
    auto* foot = new QHBoxLayout;
    foot->setSpacing(SkinStyle::Units().Gap(2));
    foot->addStretch(1);
    foot->addWidget(cancel);
    foot->addWidget(accept_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(file);
    column->addLayout(BuildSlots());
    column->addLayout(switches);
    column->addStretch(1);
    column->addLayout(foot);
    TakeUnits();
    ShowPath();
    (record_.IsEmpty() ? static_cast<QWidget*>(choose) : rows_.front().mode)->setFocus();
}

QGridLayout* frmTerminPlay::BuildSlots() {
    auto* grid = new QGridLayout;
    int column = 0;
    for (const QString& head :
         {QString(), QStringLiteral("Modus"), QStringLiteral("Wochentag"), QStringLiteral("Uhrzeit")})
        grid->addWidget(new QLabel(head, this), 0, column++);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 2);
    grid->setColumnStretch(3, 1);
    for (int slot = 0; slot < JingleRecord::kSlots; ++slot) {
        const auto index = static_cast<std::size_t>(slot);
        rows_.at(index) = AddSlot(*grid, slot + 1);
        ShowSlot(rows_.at(index), record_.slots.at(index));
    }
    return grid;
}

frmTerminPlay::SlotRow frmTerminPlay::AddSlot(QGridLayout& grid, int slot) {
    const auto name = [slot](QWidget* widget, const QString& given, const QString& accessible) {
        widget->setObjectName(given + QString::number(slot));
        widget->setAccessibleName(QStringLiteral("Termin %1: ").arg(slot) + accessible);
    };
    const SlotRow row{new QComboBox(this), new QComboBox(this), new QTimeEdit(this)};
    name(row.mode, QStringLiteral("Combo2"), QStringLiteral("Modus"));
    name(row.weekday, QStringLiteral("Combo4"), QStringLiteral("Wochentag"));
    name(row.time, QStringLiteral("combo3"), QStringLiteral("Uhrzeit"));
    row.mode->addItems({JingleSlot::Daily(), JingleSlot::Weekly(), JingleSlot::Off()});
    row.weekday->addItems(JingleSlot::Weekdays());
    row.weekday->addItem(QString());
    row.time->setDisplayFormat(kTimeFormat);
    row.time->setWrapping(true);
    grid.addWidget(new QLabel(QString::number(slot), this), slot, 0);
    grid.addWidget(row.mode, slot, 1);
    grid.addWidget(row.weekday, slot, 2);
    grid.addWidget(row.time, slot, 3);
    connect(row.mode, &QComboBox::currentIndexChanged, this, [this, row] { EnableRow(row); });
    return row;
}

void frmTerminPlay::ShowSlot(const SlotRow& row, const JingleSlot& slot) {
    Select(*row.mode, slot.mode, JingleSlot::Off());
    Select(*row.weekday, slot.weekday, {});
    const QTime time = QTime::fromString(slot.time, kTimeFormat);
    row.time->setTime(time.isValid() ? time : QTime(0, 0));
    EnableRow(row);
}

void frmTerminPlay::EnableRow(const SlotRow& row) const {
    row.weekday->setEnabled(row.mode->currentText() == JingleSlot::Weekly());
    row.time->setEnabled(row.mode->currentText() != JingleSlot::Off());
}

void frmTerminPlay::ShowPath() {
    path_->SetTone(record_.IsEmpty() ? Tone::Dim : Tone::Text);
    path_->SetText(record_.IsEmpty() ? QStringLiteral("Keine Datei gewählt") : record_.path);
    path_->setAccessibleName(QStringLiteral("Datei: ") + path_->text());
}

void frmTerminPlay::AskForFile() {
    const QString path = QFileDialog::getOpenFileName(
        this, QStringLiteral("Datei für Termin-Play wählen"), folder_,
        QStringLiteral("Audio-Dateien  (MP3/OGG/WAV) (*.mp3 *.ogg *.wav *.MP3 *.OGG *.WAV)"));
    if (!path.isEmpty())
        Choose(path);
}

void frmTerminPlay::Choose(const QString& path) {
    if (!JingleRecord::Fits(path)) {
        Tell(FileName::Refusal(path, JingleRecord::kPathWidth));
        return;
    }
    if (record_.IsEmpty())
        active_->setChecked(true); // whoever chooses a file for a new record wants to hear it
    record_.path = path;
    ShowPath();
}

JingleRecord frmTerminPlay::Edited() const {
    JingleRecord record = record_;
    record.active = active_->isChecked();
    record.afterTitle = afterTitle_->isChecked();
    for (std::size_t slot = 0; slot < rows_.size(); ++slot) {
        const SlotRow& row = rows_.at(slot);
        record.slots.at(slot) = {row.mode->currentText(), row.weekday->currentText(),
                                 row.time->time().toString(kTimeFormat)};
    }
    return record;
}

void frmTerminPlay::accept() {
    const JingleRecord record = Edited();
    if (record.active && record.IsEmpty()) {
        Tell(QStringLiteral("Bitte wählen Sie zuerst eine Datei."));
        return;
    }
    for (const JingleSlot& slot : record.slots) {
        if (slot.mode == JingleSlot::Weekly() && slot.weekday.isEmpty()) {
            Tell(QStringLiteral("Bitte wählen Sie für jeden wöchentlichen Termin einen Wochentag."));
            return;
        }
    }
    QDialog::accept();
}

void frmTerminPlay::Tell(const QString& text) {
    xMessageBox::Ask(this, windowTitle(), text, {QStringLiteral("ok")}, xMessageBox::Sign::Warning);
}

void frmTerminPlay::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && accept_ != nullptr)
        TakeUnits();
}

void frmTerminPlay::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    const int margin = units.Gap(4);
    layout()->setContentsMargins(margin, margin, margin, margin);
    layout()->setSpacing(units.Gap(3));
    for (QGridLayout* grid : findChildren<QGridLayout*>())
        grid->setHorizontalSpacing(units.Gap(3));
    setMinimumWidth(units.Of(40));
}

} // namespace kalvo
