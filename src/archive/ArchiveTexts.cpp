#include "archive/ArchiveTexts.h"

#include <algorithm>

namespace kalvo::ArchiveTexts {

using namespace Qt::StringLiterals;

QString Count(qint64 records) {
    return QString::number(std::max<qint64>(0, records)) + u" Titel"_s;
}

QString CountAfterDeleteAll() {
    return Count(0);
}

QString Found(qint64 records) {
    return Count(records) + u" gefunden"_s;
}

QString Properties(qint64 records) {
    return records > 0 ? u"Anzahl Titel im Musikarchiv: "_s + QString::number(records)
                       : u"Keine Titel im Musikarchiv vorhanden"_s;
}

} // namespace kalvo::ArchiveTexts
