#pragma once

#include "live/AutoDjSelection.h"

#include <QList>

namespace kalvo {

class Clock;

/** A selection that the user has given a name. */
struct NamedSelection {
    QString name;
    AutoDjSelection selection;

    bool operator==(const NamedSelection&) const = default;
};

/** "Nachfüllen": which titles go into a list that is running dry. */
struct AutoDjRefillOptions {
    bool isOn = false;
    int below = 3; ///< titles left, from which on the list is filled up to as many
    AutoDjSelection selection;

    bool operator==(const AutoDjRefillOptions&) const = default;
};

/** What the automatic DJ remembers, in "\AutoDJ.json" of the data folder. UI thread. */
class AutoDjStore {
public:
    explicit AutoDjStore(QString path) : path_(std::move(path)) {}

    /**
     * Reads the file; a missing one gives what stands below. A damaged one is renamed to "name.defekt-…".
     * Returns what has to be told, German; empty when all is well.
     */
    QString Load(const Clock& clock);
    /** Replaces the file atomically. False when it cannot be written, or could not be read. */
    bool Save() const;

    /** In the order of their names. */
    const QList<NamedSelection>& Saved() const { return saved_; }
    /** Null when there is none of this name, compared without case. */
    const AutoDjSelection* Find(const QString& name) const;
    /** Adds one or replaces the one of this name. The name is not empty. */
    void Put(const NamedSelection& named);
    void Remove(const QString& name);

    AutoDjSelection last; ///< as the window was left
    AutoDjRefillOptions refill;

private:
    QString path_;
    QList<NamedSelection> saved_;
    bool mayWrite_ = true;
};

} // namespace kalvo
