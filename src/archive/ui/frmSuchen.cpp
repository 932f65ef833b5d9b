#include "archive/ui/frmSuchen.h"

#include "archive/Archive.h"
#include "archive/ArchiveStatements.h"
#include "archive/ArchiveTexts.h"
#include "archive/ui/ArchivePanel.h"
#include "widgets/ElidedLabel.h"
#include "widgets/MainButton.h"
#include "widgets/Named.h"
#include "widgets/SkinStyle.h"
#include "widgets/xMessageBox.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

namespace kalvo {

namespace {

QString Line(const TitleRecord& record) {
    return record.Interpret + QStringLiteral(" - ") + record.Titel;
}

} // namespace

frmSuchen::frmSuchen(Archive& archive, ArchivePanel& panel, QWidget* parent)
    : QDialog(parent),
      archive_(archive),
      panel_(panel),
      text_(Named(new QLineEdit(this), QStringLiteral("Text1"), tr("Suchtext"))),
      steps_(new QCheckBox(tr("Angezeigte Titel der Reihe nach durchgehen"), this)),
      search_(new QPushButton(tr("Suchen"), this)),
      onward_(new QPushButton(tr("Weitersuchen"), this)),
      previous_(new QPushButton(tr("Voriger"), this)),
      next_(new QPushButton(tr("Nächster"), this)),
      count_(new QLabel(this)),
      current_(new ElidedLabel(this)) {
    setObjectName(QStringLiteral("frmSuchen"));
    setWindowTitle(tr("Musikarchiv durchsuchen"));
    const FontUnits& units = SkinStyle::Units();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    text_->setPlaceholderText(tr("Suchtext"));
    column->addWidget(text_);
    column->addLayout(BuildFields());
    column->addWidget(steps_);
    column->addLayout(BuildResult());
    column->addStretch();
    column->addLayout(BuildButtons());
    resize(units.Of(34), sizeHint().height());
    connect(&archive_, &Archive::RecordsChanged, this, &frmSuchen::ShowFound);
    connect(&panel_, &ArchivePanel::CurrentTitleChanged, this, &frmSuchen::ShowCurrent);
    ShowMode();
    ShowCurrent();
}

QBoxLayout* frmSuchen::BuildFields() {
    const auto box = [this](int number, ArchiveField field) {
        auto* check = new QCheckBox(FieldCaption(field), this);
        check->setObjectName(QStringLiteral("Check%1").arg(number));
        check->setAccessibleName(tr("Suchen in: ") + FieldCaption(field));
        connect(check, &QCheckBox::toggled, this, [this, check](bool on) {
            if (on)
                KeepExclusive(check);
        });
        return FieldBox{check, field};
    };
    fields_ = {box(2, ArchiveField::Interpret), box(1, ArchiveField::Titel), box(4, ArchiveField::Album),
               box(5, ArchiveField::Bewertung), box(6, ArchiveField::Stil),  box(7, ArchiveField::Extra1)};
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(SkinStyle::Units().Gap(6));
    for (const int place : {1, 0, 2, 3, 4, 5}) // the title first, as in the grid
        grid->addWidget(fields_.at(static_cast<std::size_t>(place)).box, grid->count() / 3, grid->count() % 3);
    fields_[1].box->setChecked(true);
    Named(steps_, QStringLiteral("Check3"), steps_->text());
    connect(steps_, &QCheckBox::toggled, this, &frmSuchen::ShowMode);
    auto* row = new QHBoxLayout;
    row->addLayout(grid);
    row->addStretch();
    return row;
}

QBoxLayout* frmSuchen::BuildResult() {
    Named(count_, QStringLiteral("lblTitelAnzahl"), tr("Anzahl gefundener Titel"));
    count_->setFont(SkinStyle::Units().Font(1, true));
    Named(current_, QStringLiteral("lblTitel"), tr("Gewählter Titel"));
    current_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    Named(previous_, QStringLiteral("Command4"), tr("Voriger gefundener Titel"));
    Named(next_, QStringLiteral("Command5"), tr("Nächster gefundener Titel"));
    for (QPushButton* button : {previous_, next_})
        button->setAutoDefault(false);
    connect(previous_, &QPushButton::clicked, this, [this] { GoTo(panel_.CurrentRow() - 1); });
    connect(next_, &QPushButton::clicked, this, [this] { GoTo(panel_.CurrentRow() + 1); });
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    row->addWidget(current_, 1);
    row->addWidget(previous_);
    row->addWidget(next_);
    auto* column = new QVBoxLayout;
    column->setSpacing(SkinStyle::Units().Gap(1));
    column->addWidget(count_);
    column->addLayout(row);
    return column;
}

QBoxLayout* frmSuchen::BuildButtons() {
    auto* close = Named(new QPushButton(tr("Schließen"), this), QStringLiteral("cmdSchliessen"), tr("Schließen"));
    Named(search_, QStringLiteral("Command2"), tr("Suche starten"));
    Named(onward_, QStringLiteral("Command3"), tr("Ab der gewählten Zeile weitersuchen"));
    MakeMain(*search_);
    connect(search_, &QPushButton::clicked, this, [this] { Search(false); });
    connect(onward_, &QPushButton::clicked, this, [this] { Search(true); });
    connect(close, &QPushButton::clicked, this, &frmSuchen::reject);
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    row->addStretch();
    for (QPushButton* button : {close, onward_, search_}) {
        button->setAutoDefault(button == search_);
        button->setMinimumWidth(SkinStyle::Units().Of(7.2));
        row->addWidget(button);
    }
    return row;
}

void frmSuchen::KeepExclusive(const QCheckBox* ticked) {
    for (const FieldBox& field : fields_) {
        if (field.box && field.box != ticked)
            field.box->setChecked(false);
    }
}

void frmSuchen::ShowMode() {
    for (const FieldBox& field : fields_)
        field.box->setEnabled(!steps_->isChecked());
    onward_->setVisible(steps_->isChecked());
}

void frmSuchen::SetRunning(bool running) {
    searching_ = running;
    search_->setEnabled(!running);
    onward_->setEnabled(!running);
}

void frmSuchen::Search(bool onward) {
    if (searching_ || text_->text().isEmpty())
        return;
    const QPointer<frmSuchen> alive(this);
    SetRunning(true);
    if (steps_->isChecked())
        SearchRows(onward);
    else
        SearchDatabase();
    if (alive)
        SetRunning(false);
}

void frmSuchen::SearchDatabase() {
    for (const FieldBox& field : fields_) {
        if (!field.box->isChecked())
            continue;
        const QString statement = ArchiveStatements::SearchField(text_->text(), field.field);
        if (panel_.ShowSource(statement, text_->text())) {
            shownSource_ = statement;
            ShowFound();
        }
        return;
    }
}

/** The count of this dialog's own search; the rows come later while the archive is loading. */
void frmSuchen::ShowFound() {
    if (shownSource_.isEmpty() || archive_.CurrentRecordSource() != shownSource_ || !archive_.IsIndexReady())
        return;
    count_->setText(ArchiveTexts::Found(archive_.RowCount()));
    ShowCurrent();
}

void frmSuchen::SearchRows(bool onward) {
    count_->clear();
    const int found = archive_.NextRowHolding(text_->text(), onward ? panel_.CurrentRow() + 1 : 0);
    if (found >= 0)
        return GoTo(found);
    const QPointer<frmSuchen> alive(this);
    xMessageBox::Ask(this, windowTitle(), tr("Nicht's gefunden"), {});
    if (alive)
        GoTo(0);
}

void frmSuchen::GoTo(int row) {
    if (archive_.RowCount() > 0)
        panel_.GoToRow(qBound(0, row, archive_.RowCount() - 1));
}

void frmSuchen::ShowCurrent() {
    const bool any = panel_.CurrentRow() >= 0;
    current_->SetText(any ? Line(panel_.CurrentRecord()) : QString());
    previous_->setEnabled(panel_.CurrentRow() > 0);
    next_->setEnabled(panel_.CurrentRow() + 1 < archive_.RowCount());
}

} // namespace kalvo
