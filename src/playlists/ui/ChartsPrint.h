#pragma once

#include "playlists/ChartsRanking.h"

#include <QDate>

class QPrinter;

namespace kalvo {

/** The ranking on paper: a page header with the date, the table, a footer with the page number. */
class ChartsPrint {
public:
    ChartsPrint(const ChartsRanking& ranking, const QDate& date) : ranking_(ranking), date_(date) {}

    /** Pages that the printer's paper needs; 1 for an empty ranking. */
    int PageCount(const QPrinter& printer) const;
    /** False when the printer cannot be painted on. */
    bool Print(QPrinter& printer) const;

private:
    ChartsRanking ranking_;
    QDate date_;
};

} // namespace kalvo
