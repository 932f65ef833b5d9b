#include "playlists/ui/frmZuletztCount.h"

#include "widgets/SkinStyle.h"
#include "widgets/TextTable.h"

#include <QLocale>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int rowCount = 6;

/** "12,5 %". */
QString Share(qint64 part, qint64 whole) {
    const double percent = whole > 0 ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0;
    return QLocale(QLocale::German).toString(percent, 'f', 1) + QStringLiteral(" %");
}

} // namespace

frmZuletztCount::frmZuletztCount(QWidget* parent)
    : QDialog(parent),
      model_(new TextTableModel({QStringLiteral("Zuletzt Gespielt"), QStringLiteral("Titel"), QStringLiteral("Anteil")},
                                {1, 2}, this)) {
    const FontUnits& units = SkinStyle::Units();
    setObjectName(QStringLiteral("frmZuletztCount"));
    setWindowTitle(QStringLiteral("Zuletzt gespielte Titel"));
    auto* table = new TextTable(*model_, {0, 7, 6}, this);
    table->setObjectName(QStringLiteral("ListView1"));
    table->setAccessibleName(QStringLiteral("Zuletzt gespielte Titel"));
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setMinimumSize(units.Of(30), units.ColumnHead() + rowCount * units.TableRow() + 2 * table->frameWidth());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->addWidget(table);
    resize(column->minimumSize());
}

void frmZuletztCount::Show(const LastPlayedCounts& counts) {
    const auto row = [&counts](const QString& caption, qint64 titles) {
        return QStringList{caption, QLocale(QLocale::German).toString(titles), Share(titles, counts.Total())};
    };
    model_->SetRows(
        {row(QStringLiteral("heute"), counts.today), row(QStringLiteral("in den letzten 7 Tagen"), counts.week),
         row(QStringLiteral("in den letzten 30 Tagen"), counts.month), row(QStringLiteral("davor"), counts.earlier),
         row(QStringLiteral("noch nie"), counts.never), row(QStringLiteral("im Musikarchiv"), counts.Total())});
}

} // namespace kalvo
