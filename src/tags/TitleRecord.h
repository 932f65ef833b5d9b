#pragma once

#include <QString>

namespace kalvo {

/** One row of table "Daten": all text but `nr`; members carry the given field names. `Pfad` is a title's identity. */
struct TitleRecord {
    qint64 Nr = 0; ///< record number, given by the database; 0 = not stored yet
    QString Titel;
    QString Interpret;
    QString Album;
    QString Bewertung;
    QString Stil;
    QString Zeit; ///< "mm:ss", minutes not limited to two digits
    QString Jahr;
    QString Pfad;
    QString Extra1; ///< comment, at most 50 characters
    QString Extra2; ///< last played
    QString Extra3; ///< track
    QString Extra4; ///< beats per minute
};

} // namespace kalvo
