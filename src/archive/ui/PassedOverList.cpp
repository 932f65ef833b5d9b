#include "archive/ui/PassedOverList.h"

#include "base/FileName.h"
#include "widgets/SkinStyle.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int passedOverRows = 3;

} // namespace

PassedOverList::PassedOverList(QWidget* parent)
    : QWidget(parent), heading_(new QLabel(this)), list_(new QListWidget(this)) {
    list_->setObjectName(QStringLiteral("lstAusgelassen"));
    list_->setAccessibleName(tr("Nicht eingelesene Dateien und Gründe"));
    list_->setUniformItemSizes(true);
    list_->setTextElideMode(Qt::ElideMiddle); // the reason stands at the end
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setAlternatingRowColors(true);
    list_->setFixedHeight(passedOverRows * SkinStyle::Units().TableRow());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(SkinStyle::Units().Gap(1));
    column->addWidget(heading_);
    column->addWidget(list_);
    hide();
}

void PassedOverList::Show(const QList<PassedOver>& files) {
    list_->clear();
    for (const PassedOver& file : files) {
        auto* item = new QListWidgetItem(FileName::Last(file.path) + QStringLiteral(": ") + file.reason, list_);
        item->setToolTip(file.path + QStringLiteral("\n") + file.reason);
    }
    const auto count = files.size();
    heading_->setText(count == 1 ? tr("Nicht eingelesen: 1 Datei") : tr("Nicht eingelesen: %1 Dateien").arg(count));
    setVisible(count > 0);
}

} // namespace kalvo
