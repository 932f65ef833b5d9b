#include "playlists/ui/frmVerlauf.h"

#include "base/AtomicFile.h"
#include "base/FileName.h"
#include "base/PlayTime.h"
#include "playlists/ListCaption.h"
#include "widgets/SavePath.h"
#include "widgets/ScreenFit.h"
#include "widgets/SkinStyle.h"
#include "widgets/TextTable.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

namespace kalvo {

namespace {

QStringList Headers() {
    return {QStringLiteral("Uhrzeit"), QStringLiteral("Art"),   QStringLiteral("Player"),  QStringLiteral("Interpret"),
            QStringLiteral("Titel"),   QStringLiteral("Länge"), QStringLiteral("Gespielt")};
}

QString TimeText(int seconds, int none) {
    return seconds == none ? QString() : PlayTime::Format(seconds);
}

QStringList RowOf(const PlayedTitle& title) {
    return {title.start.toString(QStringLiteral("HH:mm:ss")),
            OriginText(title.origin),
            title.player == 0 ? QString() : QString::number(title.player),
            title.artist,
            title.title,
            TimeText(title.length, 0),
            TimeText(title.played, -1)};
}

QString EveningText(const QDate& evening) {
    return QLocale(QLocale::German).toString(evening, QStringLiteral("dddd, d. MMMM yyyy"));
}

} // namespace

frmVerlauf::frmVerlauf(const EveningLog& log, PlaylistQuestions& questions, QWidget* parent)
    : QDialog(parent),
      log_(log),
      questions_(questions),
      evenings_(new QComboBox(this)),
      sum_(new QLabel(this)),
      model_(new TextTableModel(Headers(), {2, 5, 6}, this)),
      table_(new TextTable(*model_, {5.6, 7.4, 4.2, 0, 0, 4.6, 5.2}, this)) {
    setObjectName(QStringLiteral("frmVerlauf"));
    setWindowTitle(QStringLiteral("Verlauf des Abends"));
    evenings_->setObjectName(QStringLiteral("Combo1"));
    evenings_->setAccessibleName(QStringLiteral("Abend"));
    evenings_->setMinimumWidth(SkinStyle::Units().Of(18));
    sum_->setObjectName(QStringLiteral("Label1"));
    table_->setObjectName(QStringLiteral("ListView1"));
    table_->setAccessibleName(QStringLiteral("Gespielte Titel"));
    auto* exporting = new QPushButton(QStringLiteral("E&xportieren..."), this);
    exporting->setObjectName(QStringLiteral("Command1"));
    exporting->setAutoDefault(false);
    const FontUnits& units = SkinStyle::Units();
    auto* head = new QHBoxLayout;
    head->setSpacing(units.Gap(3));
    head->addWidget(evenings_);
    head->addWidget(sum_, 1);
    head->addWidget(exporting);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addLayout(head);
    column->addWidget(table_, 1);
    connect(evenings_, &QComboBox::currentIndexChanged, this, &frmVerlauf::ShowEvening);
    connect(exporting, &QPushButton::clicked, this, &frmVerlauf::Export);
    ResizeOnScreen(*this, {units.Of(62), units.Of(36)});
    Reload();
}

void frmVerlauf::Reload() {
    const QDate chosen = Evening();
    const QSignalBlocker blocker(evenings_);
    evenings_->clear();
    const QList<QDate> evenings = log_.Evenings();
    for (const QDate& evening : evenings)
        evenings_->addItem(EveningText(evening), evening);
    const bool wasLatest = chosen.isNull() || !evenings.contains(chosen);
    evenings_->setCurrentIndex(wasLatest ? 0 : static_cast<int>(evenings.indexOf(chosen)));
    ShowEvening();
}

void frmVerlauf::ShowEvening() {
    titles_ = log_.Read(Evening());
    QList<QStringList> rows;
    for (const PlayedTitle& title : titles_)
        rows.append(RowOf(title));
    QScrollBar& bar = *table_->verticalScrollBar();
    const int place = bar.value();
    const bool followsEnd = place == bar.maximum();
    const QList<int> selected = table_->SelectedRows();
    model_->SetRows(rows);
    for (const int row : selected)
        table_->selectionModel()->select(model_->index(row, 0),
                                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
    followsEnd ? table_->scrollToBottom() : bar.setValue(place);
    const qint64 seconds =
        std::accumulate(titles_.begin(), titles_.end(), qint64{0},
                        [](qint64 sum, const PlayedTitle& title) { return sum + std::max(0, title.played); });
    sum_->setText(QStringLiteral("%1 Titel, %2 gespielt").arg(titles_.size()).arg(HoursText(seconds)));
}

bool frmVerlauf::ExportTo(const QString& path) const {
    const bool isText = path.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive);
    return WriteAtomically(path, isText ? EveningLog::Text(Evening(), titles_) : EveningLog::Csv(titles_));
}

void frmVerlauf::Export() {
    QFileDialog dialog(this, QStringLiteral("Verlauf exportieren"), {},
                       QStringLiteral("Tabelle (*.csv);;Text (*.txt)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.contains(QLatin1String("txt")) ? QStringLiteral("txt") : QStringLiteral("csv"));
    });
    dialog.selectFile(QStringLiteral("Gespielt ") + Evening().toString(Qt::ISODate));
    const QString path = AskSavePath(dialog, {QStringLiteral(".csv"), QStringLiteral(".txt")});
    if (!path.isEmpty() && !ExportTo(path))
        questions_.Tell(QStringLiteral("Die Datei „%1“ konnte nicht geschrieben werden.").arg(FileName::Last(path)));
}

QDate frmVerlauf::Evening() const {
    return evenings_->currentData().toDate();
}

} // namespace kalvo
