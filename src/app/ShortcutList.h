#pragma once

#include <QList>
#include <QString>

class QMenuBar;

namespace kalvo {

/** A key and what it does. */
struct ShortcutEntry {
    QString place; ///< menu, or what has to have the focus
    QString command;
    QString keys; ///< in the user's language, several ones separated by commas

    bool operator==(const ShortcutEntry&) const = default;
};

/** Of all entries of the menus that have a shortcut or name one behind a tab, in the menus' order. */
QList<ShortcutEntry> ShortcutsOfMenus(const QMenuBar& bar);
/** Keys that belong to single controls and therefore stand in no menu. */
QList<ShortcutEntry> ShortcutsOfControls();
/** Those that hold each of the needle's words anywhere, without case; all for an empty needle. */
QList<ShortcutEntry> MatchingShortcuts(const QList<ShortcutEntry>& entries, const QString& needle);

} // namespace kalvo
