#include "archive/ui/WatchedList.h"

#include "archive/WatchedFolders.h"
#include "widgets/ButtonPainting.h"
#include "widgets/PlainTip.h"
#include "widgets/SkinStyle.h"

#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int watchedRows = 3;

} // namespace

WatchedList::WatchedList(WatchedFolders& folders, QWidget* parent)
    : RingRoom(parent),
      folders_(folders),
      list_(new QListWidget(this)),
      remove_(new QPushButton(tr("Entfernen"), this)) {
    const FontUnits& units = SkinStyle::Units();
    auto* caption = new QLabel(tr("Beobachtete Ordner"), this);
    caption->setForegroundRole(QPalette::PlaceholderText);
    caption->setBuddy(list_);
    list_->setObjectName(QStringLiteral("lstBeobachtet"));
    list_->setAccessibleName(tr("Beobachtete Ordner"));
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setFixedHeight(watchedRows * units.TableRow());
    auto* add = new QPushButton(tr("Beobachten"), this);
    add->setObjectName(QStringLiteral("cmdBeobachten"));
    add->setAccessibleName(tr("Den gewählten Ordner beobachten"));
    add->setToolTip(tr("Neue Dateien im gewählten Ordner werden angeboten, verschobene wiedergefunden."));
    remove_->setObjectName(QStringLiteral("cmdNichtBeobachten"));
    remove_->setAccessibleName(tr("Den markierten Ordner nicht mehr beobachten"));
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(units.Gap(2));
    for (QPushButton* button : {add, remove_}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(focusRingMargin, focusRingMargin, focusRingMargin, focusRingMargin);
    column->setSpacing(units.Gap(1));
    column->addWidget(caption);
    column->addWidget(list_);
    column->addLayout(buttons);
    connect(add, &QPushButton::clicked, this, &WatchedList::AddRequested);
    connect(remove_, &QPushButton::clicked, this,
            [this] { folders_.Remove(list_->currentItem()->data(Qt::UserRole).toString()); });
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) { remove_->setEnabled(row >= 0); });
    connect(&folders_, &WatchedFolders::FoldersChanged, this, &WatchedList::ShowFolders);
    ShowFolders();
}

void WatchedList::ShowFolders() {
    list_->clear();
    for (const QString& folder : folders_.Folders()) {
        auto* item = new QListWidgetItem(QDir::toNativeSeparators(folder), list_);
        item->setData(Qt::UserRole, folder);
        item->setToolTip(PlainTip(folder));
    }
    remove_->setEnabled(list_->currentRow() >= 0);
}

} // namespace kalvo
