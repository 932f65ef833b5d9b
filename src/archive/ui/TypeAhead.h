#pragma once

#include <QElapsedTimer>
#include <QString>

namespace kalvo {

class Archive;

/**
 * Letters typed into the grid: the first row whose sorted column begins with them. The rows are in the order of that
 * column, so a few of them are looked at, however many there are.
 */
class TypeAhead {
public:
    /** The archive outlives this. */
    explicit TypeAhead(const Archive& archive) : archive_(archive) {}

    /** Row for the letters typed so far and these; -1 when none begins so. After a pause a new word begins. */
    int Type(const QString& letters);
    /** Whether a letter typed now would go on with the word. */
    bool IsTyping() const;

private:
    const Archive& archive_;
    QString word_;
    QElapsedTimer last_;
};

} // namespace kalvo
