#include "archive/DuplicateReport.h"

#include <QFileInfo>

#include <algorithm>

namespace kalvo {

using namespace Qt::StringLiterals;

int DuplicateReport::Titles() const {
    return static_cast<int>(std::count_if(rows.begin(), rows.end(), [](qint64 nr) { return nr != 0; }));
}

namespace DuplicateTexts {

QString Preparing(int percent) {
    return u"Suche wird vorbereitet  %1%"_s.arg(percent);
}

QString Searching(int percent) {
    return u"Suche läuft  %1%"_s.arg(percent);
}

QString StaleMessage(qsizetype titles) {
    return u"Es wurde(n) %1\nTitel mit falschem Pfad im Musikarchiv gefunden!\n"
           "Bitte löschen Sie diese Titel aus dem Musikarchiv.\n"
           "Wiederholen Sie anschliessend bitte die Suche nach Doubletten."_s.arg(titles);
}

QString Hint(DuplicateMode mode, const DuplicateReport& report) {
    if (report.outcome == DuplicateReport::Outcome::StalePaths)
        return u"Löschen Sie bitte die oben aufgelisteten Titel aus dem Musikarchiv und wiederholen Sie "
               "anschliessend die Suche."_s;
    if (report.outcome != DuplicateReport::Outcome::Found)
        return {};
    if (mode == DuplicateMode::FileNames)
        return u"Es wurden %1 Doubletten im Dateinamen gefunden."_s.arg(report.Titles());
    return u"Es wurden %1 Doubletten im Titel des ID3Tag gefunden. "
           "Es ist möglich, das doppelte Titel einen unterschiedlichen Interpreten haben! "
           "Entscheiden Sie also bitte sorgfälltig, welche Titel Sie aus dem Musikarchiv oder der Festplatte "
           "löschen möchten."_s.arg(report.Titles());
}

QString Size(qint64 bytes) {
    return QString::number(static_cast<double>(bytes) / 1024, 'f', 1) + u" KB"_s;
}

QString SizeOf(const QString& path) {
    return Size(QFileInfo(path).size());
}

} // namespace DuplicateTexts

} // namespace kalvo
