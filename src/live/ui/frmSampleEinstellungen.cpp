#include "live/ui/frmSampleEinstellungen.h"

#include "base/FileName.h"
#include "widgets/IconButton.h"
#include "widgets/Named.h"
#include "widgets/SilenceParts.h"
#include "widgets/SkinStyle.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QEvent>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeWidget>

namespace kalvo {

namespace {

constexpr int kTickInterval = 50; // ms
constexpr int kTitle = 1;         // columns
constexpr int kPath = 2;

QLineEdit* Field(const QString& name, const QString& accessibleName, QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setAccessibleName(accessibleName);
    return field;
}

} // namespace

frmSampleEinstellungen::frmSampleEinstellungen(const SampleSlots& slots, const Parts& parts, QWidget* parent)
    : QDialog(parent),
      parts_(parts),
      trial_(parts.audio),
      ticks_(new QTimer(this)),
      list_(new QTreeWidget(this)),
      title_(Field(QStringLiteral("txtTitel"), QStringLiteral("Titel"), this)),
      path_(Field(QStringLiteral("txtTitelPfad"), QStringLiteral("Datei"), this)),
      clear_(new QAction(QStringLiteral("Sample löschen"), this)) {
    setObjectName(QStringLiteral("frmSampleEinstellungen"));
    setWindowTitle(QStringLiteral("Sampler-Einstellungen"));
    BuildList(slots);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Titel"), title_);
    form->addRow(QStringLiteral("Datei"), path_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(list_, 1);
    column->addLayout(form);
    column->addLayout(BuildButtons());
    ticks_->setInterval(kTickInterval);
    connect(ticks_, &QTimer::timeout, this, &frmSampleEinstellungen::Tick);
    connect(list_, &QTreeWidget::currentItemChanged, this, &frmSampleEinstellungen::ShowSelected);
    connect(title_, &QLineEdit::textEdited, this, &frmSampleEinstellungen::TakeTitle);
    connect(path_, &QLineEdit::textEdited, this, &frmSampleEinstellungen::TakePath);
    connect(path_, &QLineEdit::editingFinished, this, &frmSampleEinstellungen::EndPath);
    TakeUnits();
    list_->setCurrentItem(list_->topLevelItem(0));
    ShowTest();
}

frmSampleEinstellungen::~frmSampleEinstellungen() {
    SilenceParts(*this);
}

void frmSampleEinstellungen::BuildList(const SampleSlots& slots) {
    list_->setObjectName(QStringLiteral("ListView1"));
    list_->setAccessibleName(QStringLiteral("Samples"));
    list_->setHeaderLabels({QStringLiteral("Nr."), QStringLiteral("Titel"), QStringLiteral("Datei")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAlternatingRowColors(true);
    list_->setAllColumnsShowFocus(true);
    list_->setTextElideMode(Qt::ElideMiddle);
    for (std::size_t pad = 0; pad < slots.size(); ++pad)
        list_->addTopLevelItem(
            new QTreeWidgetItem({QString::number(pad + 1), slots.at(pad).title, slots.at(pad).path}));
    clear_->setObjectName(QStringLiteral("SampleLoeschen"));
    clear_->setShortcut(QKeySequence::Delete);
    clear_->setShortcutContext(Qt::WidgetShortcut);
    connect(clear_, &QAction::triggered, this, &frmSampleEinstellungen::SampleLoeschen);
    list_->addAction(clear_);
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QHBoxLayout* frmSampleEinstellungen::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    const auto add = [&](const QString& name, const QString& icon, const QString& text, auto act) {
        auto* button = new IconButton(icon, IconButton::Size::Normal, this);
        button->setObjectName(name);
        button->setText(text);
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        connect(button, &QPushButton::clicked, this, act);
        row->addWidget(button);
        return button;
    };
    add(QStringLiteral("Command1"), QStringLiteral("folder"), QStringLiteral("Datei wählen..."),
        &frmSampleEinstellungen::AskForFile);
    test_ = add(QStringLiteral("Command2"), QStringLiteral("play"), QStringLiteral("Testen"),
                &frmSampleEinstellungen::TestPlay);
    test_->setToolTip(QStringLiteral("Spielt die Datei einmal über den Hauptausgang"));
    stop_ = add(QStringLiteral("Command3"), QStringLiteral("stop"), QStringLiteral("Stop"), [this] {
        trial_.Stop();
        ShowTest();
    });
    add(QStringLiteral("cmdLoeschen"), QStringLiteral("trash"), QStringLiteral("Löschen"),
        &frmSampleEinstellungen::SampleLoeschen);
    row->addStretch(1);
    auto* close = Named(new QPushButton(QStringLiteral("Schließen"), this), QStringLiteral("cmdSchliessen"),
                        QStringLiteral("Schließen"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    row->addWidget(close);
    return row;
}

void frmSampleEinstellungen::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    const int margin = units.Gap(4);
    layout()->setContentsMargins(margin, margin, margin, margin);
    layout()->setSpacing(units.Gap(3));
    list_->setColumnWidth(0, units.Of(3));
    list_->setColumnWidth(kTitle, units.Of(14));
    list_->header()->setStretchLastSection(true);
    for (int pad = 0; pad < list_->topLevelItemCount(); ++pad)
        list_->topLevelItem(pad)->setSizeHint(0, QSize(0, units.TableRow()));
    list_->setMinimumHeight(units.TableRow() * kSamplePads + units.ColumnHead() + units.G());
    setMinimumWidth(units.Of(42));
    resize(units.Of(48), sizeHint().height());
}

void frmSampleEinstellungen::ShowSelected() {
    const QTreeWidgetItem* row = list_->currentItem();
    title_->setText(row->text(kTitle));
    path_->setText(row->text(kPath));
    ShowTest();
}

void frmSampleEinstellungen::TakeTitle(const QString& title) {
    list_->currentItem()->setText(kTitle, title);
}

void frmSampleEinstellungen::TakePath(const QString& path) {
    if (SampleSlot::Fits(path))
        list_->currentItem()->setText(kPath, path.trimmed());
    ShowTest();
}

void frmSampleEinstellungen::EndPath() {
    if (Refuse(path_->text()))
        ShowSelected();
}

bool frmSampleEinstellungen::Refuse(const QString& path) {
    if (SampleSlot::Fits(path))
        return false;
    xMessageBox::Ask(this, windowTitle(), FileName::Refusal(path, SampleSlot::kPathWidth), {QStringLiteral("ok")},
                     xMessageBox::Sign::Warning);
    return true;
}

void frmSampleEinstellungen::AskForFile() {
    const QString path = QFileDialog::getOpenFileName(
        this, QStringLiteral("Titel zu Sample hinzufügen"), parts_.folder,
        QStringLiteral("Audio-Dateien  (MP3/OGG/WAV) (*.mp3 *.ogg *.wav *.MP3 *.OGG *.WAV)"));
    if (!path.isEmpty())
        Choose(path);
}

void frmSampleEinstellungen::Choose(const QString& path) {
    if (Refuse(path))
        return;
    list_->currentItem()->setText(kPath, path);
    list_->currentItem()->setText(kTitle, FileName::Last(path));
    ShowSelected();
}

void frmSampleEinstellungen::SampleLoeschen() {
    list_->currentItem()->setText(kPath, {});
    list_->currentItem()->setText(kTitle, {});
    ShowSelected();
}

void frmSampleEinstellungen::TestPlay() {
    trial_.Play(list_->currentItem()->text(kPath));
    Tick();
}

void frmSampleEinstellungen::Tick() {
    const bool played = trial_.Tick();
    ShowTest();
    if (!played)
        xMessageBox::Ask(this, windowTitle(), QStringLiteral("Kann diese Datei nicht wiedergeben!"),
                         {QStringLiteral("ok")}, xMessageBox::Sign::Warning);
}

void frmSampleEinstellungen::ShowTest() {
    test_->setEnabled(!list_->currentItem()->text(kPath).isEmpty());
    stop_->setEnabled(trial_.IsBusy());
    trial_.IsBusy() ? ticks_->start() : ticks_->stop();
}

SampleSlots frmSampleEinstellungen::Slots() const {
    SampleSlots slots;
    for (std::size_t pad = 0; pad < slots.size(); ++pad) {
        const QTreeWidgetItem* row = list_->topLevelItem(static_cast<int>(pad));
        slots.at(pad) = {row->text(kTitle), row->text(kPath)};
    }
    return slots;
}

void frmSampleEinstellungen::done(int result) {
    const bool saved = parts_.save(Slots());
    if (!saved && xMessageBox::Ask(this, windowTitle(),
                                   QStringLiteral("Die Samples konnten nicht gespeichert werden.\nTrotzdem schließen?"),
                                   {QStringLiteral("Ja"), QStringLiteral("Nein")},
                                   xMessageBox::Sign::Error) != QStringLiteral("Ja"))
        return;
    trial_.Stop();
    QDialog::done(result);
}

void frmSampleEinstellungen::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && test_ != nullptr)
        TakeUnits();
}

} // namespace kalvo
