#pragma once

#include <QList>
#include <QString>

namespace kalvo {

/** Worst first. */
enum class PreshowSeverity : unsigned char { Error, Hint, Good };

/** Where a finding is put right; None: there is no such place. */
struct PreshowTarget {
    enum class Place : unsigned char { None, Entry, Options, Schedule, Sampler, Recording, AutoDj };

    Place place = Place::None;
    int list = 0;      ///< of an entry, 1 or 2
    quint64 entry = 0; ///< its id
    QString page;      ///< of the options, its caption

    bool operator==(const PreshowTarget&) const = default;
};

/** One line of the pre-show check. */
struct PreshowFinding {
    PreshowSeverity severity = PreshowSeverity::Good;
    QString where; ///< "Liste 1, 4. Anna Bergström - Wach", "Soundkarte", …
    QString text;
    PreshowTarget target;

    bool operator==(const PreshowFinding&) const = default;
};

namespace Preshow {

/** "2 Fehler, 3 Hinweise", "1 Hinweis" or "Alles bereit". */
QString Verdict(const QList<PreshowFinding>& findings);
/** "Fehler", "Hinweise", "In Ordnung". */
QString GroupName(PreshowSeverity severity);
/** The whole page as plain text, for the clipboard. head: its first line. */
QString Report(const QList<PreshowFinding>& findings, const QString& head);

} // namespace Preshow

} // namespace kalvo
