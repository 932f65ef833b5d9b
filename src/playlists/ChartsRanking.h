#pragma once

#include "playlists/ChartsFile.h"

#include <QStringList>

namespace kalvo {

/** The charts as they are shown: ranked by total, then by the last play, the latest first, then by title. */
class ChartsRanking {
public:
    /** limit: titles that are shown at most; 0 = all. */
    explicit ChartsRanking(QList<ChartEntry> all = {}, int limit = 0);

    /** Titles in the charts file. */
    qsizetype Titles() const { return entries_.size(); }
    /** Titles that are shown, from place 1 on. */
    qsizetype Shown() const { return limit_ > 0 ? qMin<qsizetype>(limit_, Titles()) : Titles(); }
    /** place: from 0. */
    const ChartEntry& At(qsizetype place) const { return entries_.at(place); }

    struct Move {
        qsizetype from = -1; ///< -1: a new title
        qsizetype to = 0;
    };
    /** Puts the new state of a title, known by its record number, at its place. */
    Move Take(const ChartEntry& entry);

    /** "Kalvo - Charts  << Titelanzahl: 12 >>  << Titelbegrenzung: 200 >>". */
    QString Caption() const;
    /** "Platz" to "Zuletzt Gespielt". */
    static QStringList Headers();
    /** The texts of a row, in the order of the headers. */
    QStringList Row(qsizetype place) const;
    /** Headers, then all rows that are shown, for a spreadsheet. */
    QByteArray Csv() const;

private:
    QList<ChartEntry> entries_;
    int limit_;
};

/** The charts' title limit from the value file "\optionen.dll"; 200 when it is missing or holds no number. */
int ReadChartsLimit(const QString& path);

} // namespace kalvo
