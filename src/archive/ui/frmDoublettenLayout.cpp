// What the duplicate window is made of; what it does is in frmDoubletten.cpp.
#include "archive/ui/frmDoubletten.h"

#include "archive/ui/DuplicateModel.h"
#include "archive/ui/FoundTextDelegate.h"
#include "archive/ui/SearchButton.h"
#include "archive/ui/ShownNumbers.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Named.h"
#include "widgets/ScreenFit.h"
#include "widgets/SkinStyle.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>

namespace kalvo {

frmDoubletten::frmDoubletten(Archive& archive, QWidget* parent)
    : QDialog(parent),
      archive_(archive),
      finder_(new DuplicateFinder(archive, this)),
      found_(new DuplicateModel(archive, this)),
      shownNumbers_(new ShownNumbers(this)),
      mode_(Named(new QComboBox(this), QStringLiteral("Combo1"), tr("Vergleichen nach"))),
      start_(Named(new SearchButton(this), QStringLiteral("Command1"), tr("Suche starten oder abbrechen"))),
      list_(Named(new QTableView(this), QStringLiteral("List1"), tr("Gefundene Doubletten"))),
      progressText_(Named(new ElidedLabel(this), QStringLiteral("Label2"), tr("Fortschritt"))),
      progress_(Named(new QProgressBar(this), QStringLiteral("ProgressBar"), tr("Fortschritt"))),
      hint_(Named(new QLabel(this), QStringLiteral("lblHinweis"), tr("Ergebnis"))) {
    setObjectName(QStringLiteral("frmDoubletten"));
    setWindowTitle(tr("Doubletten suchen"));
    const FontUnits& units = SkinStyle::Units();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addLayout(BuildStart());
    BuildList();
    column->addWidget(list_, 1);
    hint_->setWordWrap(true);
    hint_->setTextFormat(Qt::PlainText);
    // Room for the longest hint, so that the list does not jump when it comes.
    hint_->setMinimumHeight(2 * fontMetrics().lineSpacing());
    hint_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    column->addWidget(hint_);
    column->addLayout(BuildButtons());
    ResizeOnScreen(*this, {units.Of(56), units.Of(36)});
    connect(finder_, &DuplicateFinder::Progress, this, &frmDoubletten::ShowProgress);
    connect(finder_, &DuplicateFinder::Finished, this, &frmDoubletten::End);
    connect(&archive_.Bin(), &BinMove::Ended, this, &frmDoubletten::ShowBinned);
    connect(&archive_.Bin(), &BinMove::Progress, this, [this](qsizetype done, qsizetype files) {
        ShowProgress(tr("In den Papierkorb: %1 von %2").arg(done).arg(files), static_cast<int>(100 * done / files));
    });
    ShowIdle({});
    ShowSelection();
}

QBoxLayout* frmDoubletten::BuildStart() {
    mode_->addItems({tr("Datei-Namen"), tr("Titel des ID3Tag")});
    connect(start_, &QPushButton::clicked, this, &frmDoubletten::StartOrCancel);
    progress_->setTextVisible(false);
    progress_->setFixedHeight(SkinStyle::Units().Of(1.35));
    progressText_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* caption = new QLabel(tr("Vergleichen nach"), this);
    caption->setForegroundRole(QPalette::PlaceholderText);
    caption->setBuddy(mode_);
    auto* choice = new QHBoxLayout;
    choice->setSpacing(SkinStyle::Units().Gap(2));
    choice->addWidget(caption);
    choice->addWidget(mode_);
    choice->addStretch();
    choice->addWidget(start_);
    auto* column = new QVBoxLayout;
    column->setSpacing(SkinStyle::Units().Gap(2));
    column->addLayout(choice);
    column->addWidget(progressText_);
    column->addWidget(progress_);
    return column;
}

void frmDoubletten::BuildList() {
    const FontUnits& units = SkinStyle::Units();
    list_->setModel(found_);
    list_->setItemDelegate(new FoundTextDelegate(list_));
    list_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setShowGrid(false);
    list_->setWordWrap(false);
    list_->setTabKeyNavigation(false);
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);
    list_->verticalHeader()->hide();
    list_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list_->verticalHeader()->setDefaultSectionSize(units.TableRow());
    QHeaderView* head = list_->horizontalHeader();
    head->setFixedHeight(units.ColumnHead());
    head->setHighlightSections(false);
    head->setStretchLastSection(true);
    head->setResizeContentsPrecision(0); // the rows on show decide
    head->resizeSection(DuplicateModel::Path, units.Of(24));
    head->resizeSection(DuplicateModel::Artist, units.Of(11));
    head->resizeSection(DuplicateModel::Title, units.Of(12));
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmDoubletten::ShowSelection);
    connect(found_, &QAbstractItemModel::modelReset, this, &frmDoubletten::ShowSelection);

    auto* numbers = Named(new QListView(this), QStringLiteral("List2"), tr("Nummern der gezeigten Titel"));
    numbers->setModel(shownNumbers_);
    numbers->setUniformItemSizes(true);
    numbers->hide();
}

QPushButton* frmDoubletten::AddCommand(QBoxLayout& row, const QString& name, const QString& text,
                                       void (frmDoubletten::*run)()) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, run);
    list_->addAction(action);
    commands_.append(action);

    auto* button = Named(new QPushButton(text, this), QStringLiteral("cmd") + name, text);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button, [action, button] { button->setEnabled(action->isEnabled()); });
    row.addWidget(button);
    return button;
}

QBoxLayout* frmDoubletten::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    AddCommand(*row, QStringLiteral("AusMAlöschen"), tr("Aus Musikarchiv löschen"), &frmDoubletten::DeleteFromArchive);
    AddCommand(*row, QStringLiteral("InPapierkorb"), tr("In den Papierkorb"), &frmDoubletten::MoveToBin);
    AddCommand(*row, QStringLiteral("Dateiinformation"), tr("Dateiinformation"), &frmDoubletten::ShowFileInformation);
    row->addStretch();
    auto* close = Named(new QPushButton(tr("Schließen"), this), QStringLiteral("cmdSchliessen"), tr("Schließen"));
    close->setAutoDefault(false);
    close->setMinimumWidth(SkinStyle::Units().Of(7.2));
    connect(close, &QPushButton::clicked, this, &frmDoubletten::reject);
    row->addWidget(close);
    return row;
}

} // namespace kalvo
