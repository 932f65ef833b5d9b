#include "playlists/ChartsRanking.h"

#include "base/CsvText.h"
#include "base/ValueFile.h"

#include <algorithm>
#include <tuple>

namespace kalvo {

namespace {

constexpr int defaultLimit = 200;

} // namespace

ChartsRanking ChartsRanking::Of(QList<ChartEntry> all, int limit) {
    std::stable_sort(all.begin(), all.end(), [](const ChartEntry& left, const ChartEntry& right) {
        if (left.total != right.total)
            return left.total > right.total;
        if (left.sortable != right.sortable)
            return left.sortable > right.sortable;
        return left.title.compare(right.title, Qt::CaseInsensitive) < 0;
    });
    const int count = static_cast<int>(all.size());
    return {limit > 0 ? all.mid(0, limit) : all, count};
}

QString ChartsRanking::Caption(int titleCount, int limit) {
    return QStringLiteral("Kalvo - Charts  << Titelanzahl: ") + QString::number(titleCount) +
           QStringLiteral(" >>  << Titelbegrenzung: ") + QString::number(limit) + QStringLiteral(" >>");
}

QStringList ChartsRanking::Headers() {
    return {QStringLiteral("Platz"),   QStringLiteral("Interpret"),       QStringLiteral("Titel"),
            QStringLiteral("Player1"), QStringLiteral("Player2"),         QStringLiteral("Archiv"),
            QStringLiteral("Gesamt"),  QStringLiteral("Zuletzt Gespielt")};
}

QStringList ChartsRanking::Row(qsizetype place) const {
    const ChartEntry& entry = entries.at(place);
    return {QString::number(place + 1),
            entry.artist,
            entry.title,
            QString::number(entry.player1),
            QString::number(entry.player2),
            QString::number(entry.archive),
            QString::number(entry.total),
            entry.lastPlayed};
}

QByteArray ChartsRanking::Csv() const {
    QList<QStringList> rows{Headers()};
    for (qsizetype place = 0; place < entries.size(); ++place)
        rows.append(Row(place));
    return CsvText::Document(rows);
}

int ReadChartsLimit(const QString& path) {
    bool isNumber = false;
    const int limit = ValueFile::Read(path).value(0).trimmed().toInt(&isNumber);
    return isNumber && limit >= 0 ? limit : defaultLimit;
}

} // namespace kalvo
