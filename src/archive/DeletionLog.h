#pragma once

#include "archive/Trash.h"

#include <QList>
#include <QStringList>

namespace kalvo {

/** What the database itself does not keep of an archive's deletions. */
struct DeletionLog {
    struct Undone {
        QList<qint64> numbers;
        QStringList files; ///< those that had been moved to the bin
    };

    QList<QList<Trash::Item>> binned; ///< files of each deletion that can be undone
    QList<Undone> undone;             ///< deletions that can be done again, the latest last
};

} // namespace kalvo
