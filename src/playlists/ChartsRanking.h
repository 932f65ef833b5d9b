#pragma once

#include "playlists/ChartsFile.h"

#include <QStringList>

namespace kalvo {

/** The charts as they are shown: ranked and cut to the limit. */
struct ChartsRanking {
    QList<ChartEntry> entries; ///< from place 1 on
    int titleCount = 0;        ///< titles in the charts file

    /** By total, then by the last play, the latest first, then by title. limit: titles at most; 0 = all. */
    static ChartsRanking Of(QList<ChartEntry> all, int limit);

    /** "Kalvo - Charts  << Titelanzahl: 12 >>  << Titelbegrenzung: 200 >>". */
    static QString Caption(int titleCount, int limit);
    /** "Platz" to "Zuletzt Gespielt". */
    static QStringList Headers();
    /** The texts of a row, in the order of the headers. */
    QStringList Row(qsizetype place) const;
    /** Headers, then all rows, for a spreadsheet. */
    QByteArray Csv() const;
};

/** The charts' title limit from the value file "\optionen.dll"; 200 when it is missing or holds no number. */
int ReadChartsLimit(const QString& path);

} // namespace kalvo
