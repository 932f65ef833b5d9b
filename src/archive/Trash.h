#pragma once

#include <QString>

#include <optional>

/** The desktop's bin for files. */
namespace kalvo::Trash {

struct Item {
    QString path;    ///< where the file was
    QString inTrash; ///< where it lies now
};

/** Moves a file into the bin, without asking. None when it cannot be done; then the file is where it was. */
std::optional<Item> Move(const QString& path);
/** Brings a file back. False when something else has its place by now or it is not in the bin any more. */
bool Restore(const Item& item);

} // namespace kalvo::Trash
