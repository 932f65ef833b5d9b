#include "playlists/ChartsRanking.h"

#include "base/CsvText.h"
#include "base/FileName.h"
#include "base/ValueFile.h"

#include <algorithm>
#include <utility>

namespace kalvo {

namespace {

constexpr int defaultLimit = 200;

bool IsAhead(const ChartEntry& left, const ChartEntry& right) {
    if (left.total != right.total)
        return left.total > right.total;
    if (left.sortable != right.sortable)
        return left.sortable > right.sortable;
    if (const int order = left.title.compare(right.title, Qt::CaseInsensitive); order != 0)
        return order < 0;
    return left.number < right.number;
}

} // namespace

ChartsRanking::ChartsRanking(QList<ChartEntry> all, int limit) : entries_(std::move(all)), limit_(limit) {
    std::sort(entries_.begin(), entries_.end(), IsAhead);
}

ChartsRanking::Move ChartsRanking::Take(const ChartEntry& entry) {
    Move move;
    const auto old = std::find_if(entries_.cbegin(), entries_.cend(),
                                  [&entry](const ChartEntry& one) { return one.number == entry.number; });
    if (old != entries_.cend()) {
        move.from = old - entries_.cbegin();
        entries_.erase(old);
    }
    const auto place = std::lower_bound(entries_.cbegin(), entries_.cend(), entry, IsAhead);
    move.to = place - entries_.cbegin();
    entries_.insert(place, entry);
    return move;
}

QString ChartsRanking::Caption() const {
    return QStringLiteral("Kalvo - Charts  << Titelanzahl: ") + QString::number(Titles()) +
           QStringLiteral(" >>  << Titelbegrenzung: ") + QString::number(limit_) + QStringLiteral(" >>");
}

QStringList ChartsRanking::Headers() {
    return {QStringLiteral("Platz"),   QStringLiteral("Interpret"),       QStringLiteral("Titel"),
            QStringLiteral("Player1"), QStringLiteral("Player2"),         QStringLiteral("Archiv"),
            QStringLiteral("Gesamt"),  QStringLiteral("Zuletzt Gespielt")};
}

QStringList ChartsRanking::Row(qsizetype place) const {
    const ChartEntry& entry = entries_.at(place);
    return {QString::number(place + 1),
            entry.artist,
            FileName::ShownTitle(entry.title, entry.artist, entry.path),
            QString::number(entry.player1),
            QString::number(entry.player2),
            QString::number(entry.archive),
            QString::number(entry.total),
            entry.lastPlayed};
}

QByteArray ChartsRanking::Csv() const {
    QList<QStringList> rows{Headers()};
    for (qsizetype place = 0; place < Shown(); ++place)
        rows.append(Row(place));
    return CsvText::Document(rows);
}

int ReadChartsLimit(const QString& path) {
    bool isNumber = false;
    const int limit = ValueFile::Read(path).value(0).trimmed().toInt(&isNumber);
    return isNumber && limit >= 0 ? limit : defaultLimit;
}

} // namespace kalvo
