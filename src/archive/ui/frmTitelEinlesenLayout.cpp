// What the import dialog is made of; what it does is in frmTitelEinlesen.cpp.
#include "archive/ui/frmTitelEinlesen.h"

#include "archive/WatchedFolders.h"
#include "archive/ui/FolderTree.h"
#include "archive/ui/ImportFileModel.h"
#include "archive/ui/MarkedFileDelegate.h"
#include "archive/ui/MenuButton.h"
#include "archive/ui/PassedOverList.h"
#include "archive/ui/TagValues.h"
#include "archive/ui/WatchedList.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/Named.h"
#include "widgets/ScreenFit.h"
#include "widgets/SilenceParts.h"
#include "widgets/SkinStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QStringListModel>

namespace kalvo {

namespace {

QLabel* DimLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace

frmTitelEinlesen::frmTitelEinlesen(Archive& archive, const QString& startFolder, QWidget* parent)
    : QDialog(parent),
      import_(new TitleImport(archive, this)),
      tree_(new FolderTree(this)),
      folder_(new QLineEdit(this)),
      scan_(new MenuButton(QStringLiteral("search"), tr("Durchsuchen"), this)),
      files_(new QListView(this)),
      found_(new ImportFileModel(this)),
      folders_(new QStringListModel(this)),
      scanText_(new ElidedLabel(this)),
      foundCount_(new QLabel(this)),
      markedCount_(new QLabel(this)),
      markAll_(new QPushButton(tr("Alle markieren"), this)),
      file_(new ElidedLabel(this)),
      progressText_(new ElidedLabel(this)),
      progress_(new QProgressBar(this)),
      values_(new TagValues(this)),
      passedOver_(new PassedOverList(this)),
      start_(new IconButton(QStringLiteral("import"), IconButton::Size::Normal, this)),
      cancel_(new QPushButton(this)) {
    setObjectName(QStringLiteral("frmTitelEinlesen"));
    setWindowTitle(tr("Titel zum Musikarchiv hinzufügen"));
    const FontUnits& units = SkinStyle::Units();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addLayout(BuildFolderRow(startFolder));
    column->addLayout(BuildLists(), 1);
    column->addLayout(BuildMarkRow());
    column->addWidget(values_);
    column->addLayout(BuildProgressRow());
    column->addWidget(passedOver_);
    column->addLayout(BuildButtons());
    ResizeOnScreen(*this, {units.Of(57), units.Of(48)});

    connect(import_, &TitleImport::Progress, this, &frmTitelEinlesen::ShowProgress);
    connect(import_, &TitleImport::Finished, this, &frmTitelEinlesen::EndImport);
    tree_->SetFolder(startFolder);
    foundCount_->setText(QString::number(0));
    scanText_->setText(tr("Wählen Sie einen Ordner und durchsuchen Sie ihn."));
    ShowMarked();
    SetWork(Work::None);
    tree_->setFocus();
}

frmTitelEinlesen::~frmTitelEinlesen() {
    if (scanning_)
        scanning_->Stop();
    SilenceParts(*this);
}

QBoxLayout* frmTitelEinlesen::BuildFolderRow(const QString& startFolder) {
    Named(folder_, QStringLiteral("Label5"), tr("Ordner"));
    folder_->setText(startFolder);
    connect(tree_, &FolderTree::FolderChosen, this, &frmTitelEinlesen::ChooseFolder);
    connect(folder_, &QLineEdit::editingFinished, this, [this] { tree_->SetFolder(Folder()); });
    BuildScanMenu();
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Of(0.6));
    auto* caption = DimLabel(tr("Ordner"), this);
    caption->setBuddy(folder_);
    row->addWidget(caption);
    row->addWidget(folder_, 1);
    row->addWidget(scan_);
    return row;
}

void frmTitelEinlesen::BuildScanMenu() {
    Named(scan_, QStringLiteral("MyButton1"), tr("Ordner durchsuchen"));
    auto* menu = new QMenu(scan_);
    const auto add = [&](const QString& name, const QString& text, ScanMethod method) {
        QAction* action = menu->addAction(text);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, [this, method] { Scan(method); });
    };
    add(QStringLiteral("UStandard"), tr("Standard"), ScanMethod::Standard);
    add(QStringLiteral("UAlternativ"), tr("Alternativ"), ScanMethod::Alternative);
    scan_->setMenu(menu);
    connect(scan_, &MenuButton::clicked, this, [this] { Scan(ScanMethod::Standard); });
}

QBoxLayout* frmTitelEinlesen::BuildLists() {
    Named(tree_, QStringLiteral("ExplorerTreeView1"), tr("Ordner auf diesem Rechner"));
    Named(files_, QStringLiteral("ListView1"), tr("Gefundene Dateien"));
    files_->setModel(found_);
    files_->setItemDelegate(new MarkedFileDelegate(files_));
    files_->setSelectionMode(QAbstractItemView::MultiSelection);
    files_->setUniformItemSizes(true);
    files_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(files_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmTitelEinlesen::ShowMarked);

    auto* workList = Named(new QListView(this), QStringLiteral("List1"), tr("Gefundene Ordner"));
    workList->setModel(folders_);
    workList->setUniformItemSizes(true);
    workList->hide();
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(3));
    folderColumn_ = new QVBoxLayout;
    folderColumn_->addWidget(tree_, 1);
    row->addLayout(folderColumn_, 2);
    row->addWidget(files_, 3);
    return row;
}

void frmTitelEinlesen::ShowWatched(WatchedFolders& watched) {
    auto* list = new WatchedList(watched, this);
    folderColumn_->setSpacing(SkinStyle::Units().Gap(2));
    folderColumn_->addWidget(list);
    connect(list, &WatchedList::AddRequested, this, [this, &watched] { WatchChosen(watched); });
    connect(this, &frmTitelEinlesen::Declined, &watched, &WatchedFolders::Decline);
}

QBoxLayout* frmTitelEinlesen::BuildMarkRow() {
    Named(scanText_, QStringLiteral("Label7"), tr("Stand der Suche"));
    scanText_->setFont(SkinStyle::Units().Font(1, true));
    scanText_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    Named(foundCount_, QStringLiteral("lblCount"), tr("Anzahl gefundener Dateien"));
    Named(markedCount_, QStringLiteral("Label1"), tr("Anzahl markierter Titel"));
    Named(markAll_, QStringLiteral("Command3"), tr("Alle Dateien markieren"));
    markAll_->setAutoDefault(false);
    connect(markAll_, &QPushButton::clicked, this, &frmTitelEinlesen::MarkAll);
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Of(0.6));
    row->addWidget(DimLabel(tr("Gefunden"), this));
    row->addWidget(foundCount_);
    row->addSpacing(SkinStyle::Units().Gap(3));
    row->addWidget(DimLabel(tr("Markiert"), this));
    row->addWidget(markedCount_);
    row->addStretch();
    row->addWidget(markAll_);
    auto* column = new QVBoxLayout;
    column->setSpacing(SkinStyle::Units().Gap(2));
    column->addWidget(scanText_);
    column->addLayout(row);
    return column;
}

QBoxLayout* frmTitelEinlesen::BuildProgressRow() {
    Named(file_, QStringLiteral("Label2"), tr("Datei, die eingelesen wird"));
    file_->SetTone(Tone::Dim);
    Named(progressText_, QStringLiteral("Label3"), tr("Fortschritt"));
    Named(progress_, QStringLiteral("ProgressBar1"), tr("Fortschritt"));
    progress_->setTextVisible(false);
    progress_->setFixedHeight(SkinStyle::Units().Of(1.35));
    file_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    progressText_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    auto* texts = new QHBoxLayout;
    texts->addWidget(file_, 1);
    texts->addWidget(progressText_);
    auto* column = new QVBoxLayout;
    column->setSpacing(SkinStyle::Units().Gap(1));
    column->addLayout(texts);
    column->addWidget(progress_);
    return column;
}

QBoxLayout* frmTitelEinlesen::BuildButtons() {
    const int width = SkinStyle::Units().Of(7.2);
    Named(cancel_, QStringLiteral("cmdAbbrechen"), tr("Abbrechen oder schließen"));
    cancel_->setAutoDefault(false);
    cancel_->setMinimumWidth(width);
    // While something runs the button ends that and keeps the window; closing the window ends both.
    connect(cancel_, &QPushButton::clicked, this, [this] { work_ == Work::None ? reject() : Abandon(); });
    Named(start_, QStringLiteral("Command1"), tr("Markierte Dateien importieren"));
    start_->setText(tr("Importieren"));
    start_->SetOn(true);
    start_->setMinimumWidth(qMax(width, start_->sizeHint().width() + SkinStyle::Units().F()));
    start_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(start_, &QPushButton::clicked, this, &frmTitelEinlesen::StartImport);
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    row->addStretch();
    row->addWidget(cancel_);
    row->addWidget(start_);
    return row;
}

} // namespace kalvo
