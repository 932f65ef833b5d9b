#pragma once

#include "archive/ArchiveField.h"

#include <QStringList>

namespace kalvo {

/** Which titles the automatic DJ leaves out beyond those that are in the list already. By default none. */
struct AutoDjRules {
    int artistDistance = 0; ///< an artist comes once within so many titles; 0: as it comes
    bool skipPlayedToday = false;
    bool skipOtherVersions = false; ///< of songs that are in one of both lists

    bool operator==(const AutoDjRules&) const = default;
};

/** What the automatic DJ is to draw from, and where to. */
struct AutoDjSelection {
    ArchiveField field = ArchiveField::Interpret; ///< the criterion
    QStringList values;                           ///< of the field; a title matches that holds one of them
    double hours = 1;                             ///< wanted playing time
    bool bothLists = false;                       ///< in turn, from list 1 on; else list 1 alone
    AutoDjRules rules;

    bool operator==(const AutoDjSelection&) const = default;
};

} // namespace kalvo
