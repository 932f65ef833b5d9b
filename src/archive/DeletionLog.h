#pragma once

#include "archive/Trash.h"

#include <QList>

namespace kalvo {

/** What the database itself does not keep of an archive's deletions. */
struct DeletionLog {
    struct Undone {
        QList<qint64> numbers;
        bool hadFiles = false; ///< in the bin
    };

    QList<QList<Trash::Item>> binned; ///< files of each deletion that can be undone
    QList<Undone> undone;             ///< deletions that can be done again, the latest last
};

} // namespace kalvo
