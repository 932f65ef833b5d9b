#include "live/ui/frmJingle.h"

#include "base/FileName.h"
#include "live/ui/frmTerminPlay.h"
#include "widgets/IconButton.h"
#include "widgets/PlainTip.h"
#include "widgets/SkinStyle.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPointer>
#include <QScreen>
#include <QTreeWidget>

namespace kalvo {

namespace {

enum Column { Number, Active, File, Times, AfterTitle };

QString YesNo(bool yes) {
    return yes ? QStringLiteral("Ja") : QStringLiteral("Nein");
}

JingleRecord EmptyRecord(int row) {
    JingleRecord record;
    record.number = static_cast<qint16>(row + 1);
    return record;
}

} // namespace

frmJingle::frmJingle(JingleFile& file, const QString& folder, QWidget* parent)
    : QDialog(parent),
      file_(file),
      folder_(folder),
      records_(file.Read()),
      stored_(records_),
      list_(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("frmJingle"));
    setWindowTitle(QStringLiteral("Termin-Play (Jingle)"));
    list_->setObjectName(QStringLiteral("ListView1"));
    list_->setAccessibleName(QStringLiteral("Termin-Plays"));
    list_->setHeaderLabels({QStringLiteral("Nr."), QStringLiteral("Aktiv"), QStringLiteral("Datei"),
                            QStringLiteral("Termine"), QStringLiteral("Nach Titelende")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAlternatingRowColors(true);
    list_->setAllColumnsShowFocus(true);
    for (int row = 0; row < kJingleRecords; ++row)
        list_->addTopLevelItem(new QTreeWidgetItem);
    connect(list_, &QTreeWidget::itemActivated, this, &frmJingle::Edit);
    auto* clear = new QAction(QStringLiteral("Termin-Play löschen"), this);
    clear->setObjectName(QStringLiteral("TerminPlayLoeschen"));
    clear->setShortcut(QKeySequence::Delete);
    clear->setShortcutContext(Qt::WidgetShortcut);
    connect(clear, &QAction::triggered, this, &frmJingle::Clear);
    list_->addAction(clear);
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* column = new QVBoxLayout(this);
    column->addWidget(list_, 1);
    column->addLayout(BuildButtons());
    TakeUnits();
    ShowAll();
    list_->setCurrentItem(list_->topLevelItem(0));
}

QHBoxLayout* frmJingle::BuildButtons() {
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
    add(QStringLiteral("Command1"), QStringLiteral("settings"), QStringLiteral("Bearbeiten..."), &frmJingle::Edit);
    add(QStringLiteral("Command2"), QStringLiteral("trash"), QStringLiteral("Alle Termin-Play's löschen"),
        &frmJingle::ClearAll);
    row->addStretch(1);
    auto* save =
        add(QStringLiteral("Command3"), QStringLiteral("check"), QStringLiteral("Speichern und beenden"), [this] {
            if (Save())
                close();
        });
    save->SetOn(true);
    save_ = save;
    return row;
}

void frmJingle::ShowRow(int row) {
    const JingleRecord& record = records_.at(static_cast<std::size_t>(row));
    QTreeWidgetItem& item = *list_->topLevelItem(row);
    item.setText(Number, QString::number(row + 1));
    item.setText(Active, YesNo(record.active));
    item.setText(File, FileName::Last(record.path));
    item.setToolTip(File, PlainTip(record.path));
    item.setText(Times, record.TimesText());
    item.setToolTip(Times, record.TimesText());
    item.setText(AfterTitle, record.afterTitle ? YesNo(true) : QString());
}

void frmJingle::ShowAll() {
    for (int row = 0; row < kJingleRecords; ++row)
        ShowRow(row);
}

void frmJingle::Edit() {
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    JingleRecord shown = records_.at(static_cast<std::size_t>(row));
    shown.number = static_cast<qint16>(row + 1);
    const QPointer<frmTerminPlay> editor = new frmTerminPlay(shown, folder_, this);
    const bool accepted = editor->exec() == QDialog::Accepted;
    if (!editor) // went with this window
        return;
    if (accepted) {
        JingleRecord& edited = records_.at(static_cast<std::size_t>(row));
        const qint16 number = edited.number;
        edited = editor->Edited();
        edited.number = number;
        ShowRow(row);
    }
    delete editor;
}

void frmJingle::Clear() {
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    records_.at(static_cast<std::size_t>(row)) = EmptyRecord(row);
    ShowRow(row);
}

void frmJingle::ClearAll() {
    if (Ask(QStringLiteral("Wollen Sie wirklich alle Termin-Play's löschen?"),
            {QStringLiteral("Ja"), QStringLiteral("Nein")}) != QStringLiteral("Ja"))
        return;
    for (int row = 0; row < kJingleRecords; ++row)
        records_.at(static_cast<std::size_t>(row)) = EmptyRecord(row);
    ShowAll();
}

bool frmJingle::Save() {
    if (!file_.Write(records_)) {
        Ask(QStringLiteral("Die Termin-Play's konnten nicht gespeichert werden."), {QStringLiteral("ok")});
        return false;
    }
    stored_ = records_;
    Q_EMIT Saved();
    return true;
}

QString frmJingle::Ask(const QString& text, const QStringList& answers) {
    return xMessageBox::Ask(this, windowTitle(), text, answers, xMessageBox::Sign::Warning);
}

void frmJingle::done(int result) {
    if (records_ != stored_) {
        const QString answer = Ask(QStringLiteral("Sollen die Änderungen gespeichert werden?"),
                                   {QStringLiteral("Ja"), QStringLiteral("Nein"), QStringLiteral("Abbrechen")});
        if (answer == QStringLiteral("Abbrechen") || (answer == QStringLiteral("Ja") && !Save()))
            return;
    }
    QDialog::done(result);
}

void frmJingle::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && save_ != nullptr)
        TakeUnits();
}

void frmJingle::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    const int margin = units.Gap(4);
    layout()->setContentsMargins(margin, margin, margin, margin);
    layout()->setSpacing(units.Gap(3));
    list_->setColumnWidth(Number, units.Of(3));
    list_->setColumnWidth(Active, units.Of(4));
    list_->setColumnWidth(File, units.Of(18));
    list_->setColumnWidth(Times, units.Of(24));
    for (int row = 0; row < kJingleRecords; ++row)
        list_->topLevelItem(row)->setSizeHint(0, QSize(0, units.TableRow()));
    setMinimumSize(units.Of(42), units.Of(22));
    const QSize room = screen()->availableGeometry().size() - QSize(units.Gap(4), units.Of(3));
    resize(QSize(units.Of(62), units.TableRow() * kJingleRecords + units.Of(7)).boundedTo(room));
}

} // namespace kalvo
