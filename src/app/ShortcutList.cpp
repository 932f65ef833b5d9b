#include "app/ShortcutList.h"

#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <array>

namespace kalvo {

namespace {

struct ControlKeys {
    const char16_t* place;
    const char16_t* command;
    const char16_t* keys;
};

constexpr std::array<ControlKeys, 27> kControlKeys{{
    {u"Alle Fenster", u"Zum nächsten Bedienteil, zum vorigen", u"Tab, Umschalt+Tab"},
    {u"Alle Fenster", u"Kontextmenü öffnen", u"Menütaste, Umschalt+F10"},
    {u"Alle Fenster", u"Menüzeile", u"F10, Alt"},
    {u"Fenster der Werkzeuge", u"Fenster schließen", u"Esc"},
    {u"Fenster der Werkzeuge", u"Zum Bedienteil mit dem unterstrichenen Buchstaben", u"Alt+Buchstabe"},
    {u"Teiler der Bereiche", u"Verschieben, fünfmal so weit", u"Pfeiltasten, Bild auf, Bild ab"},
    {u"Teiler der Bereiche", u"An den Anfang, ans Ende", u"Pos1, Ende"},
    {u"Teiler der Bereiche", u"Fertig, wieder zurück", u"Eingabe, Esc"},
    {u"Wiedergabelisten", u"Gewählten Titel abspielen", u"Eingabe"},
    {u"Wiedergabelisten", u"Markierte Titel verschieben", u"Strg+↑, Strg+↓"},
    {u"Wiedergabelisten", u"Markierte Titel an den Anfang, ans Ende", u"Strg+Umschalt+↑, Strg+Umschalt+↓"},
    {u"Wiedergabelisten, Musikarchiv", u"Alle Titel markieren", u"Strg+A"},
    {u"Wiedergabelisten, Musikarchiv", u"Titel zur Markierung nehmen", u"Umschalt+Pfeiltasten, Strg+Leertaste"},
    {u"Musikarchiv", u"Gewählten Titel probehören", u"Eingabe"},
    {u"Musikarchiv", u"Werte der Spalte auswählen", u"Alt+↓"},
    {u"Musikarchiv", u"Zum Titel, der so beginnt", u"Buchstaben"},
    {u"Suche im Musikarchiv", u"Zum ersten gefundenen Titel", u"Eingabe, ↓"},
    {u"Suche im Musikarchiv", u"Suche löschen", u"Esc"},
    {u"Regler", u"Kleine Schritte, große Schritte", u"Pfeiltasten, Bild auf, Bild ab"},
    {u"Überblendregler, Pitch, Equalizer", u"Mitte", u"0"},
    {u"Position im Titel", u"5 Sekunden zurück, vor", u"←, →"},
    {u"Position im Titel", u"30 Sekunden zurück, vor", u"Bild ab, Bild auf"},
    {u"Hauptfenster und Sampler", u"Sample 1 bis 9, solange gehalten", u"Ziffernblock 1 bis 9"},
    {u"Sampler", u"Gewähltes Sample, solange gehalten", u"Leertaste"},
    {u"Kopfhörer", u"Wiedergabe und Pause", u"Leertaste"},
    {u"Überblendknöpfe", u"Überblendgeschwindigkeit wählen", u"Menütaste"},
    {u"Fragen", u"Antwort „Nein“", u"Esc"},
}};

/** Without "&" before a letter and dots at the end. */
QString PlainCommand(const QString& text) {
    QString plain;
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (text.at(place) == u'&' && place + 1 < text.size())
            ++place;
        plain += text.at(place);
    }
    while (plain.endsWith(u'.'))
        plain.chop(1);
    return plain;
}

void AddMenu(const QMenu& menu, const QString& place, QList<ShortcutEntry>& entries) {
    const QList<QAction*> actions = menu.actions();
    for (const QAction* action : actions) {
        if (action->menu() != nullptr) {
            AddMenu(*action->menu(), place + QStringLiteral(" › ") + PlainCommand(action->text()), entries);
            continue;
        }
        QStringList keys;
        const QList<QKeySequence> shortcuts = action->shortcuts();
        for (const QKeySequence& shortcut : shortcuts)
            keys.append(shortcut.toString(QKeySequence::NativeText));
        if (action->text().contains(u'\t'))
            keys.append(action->text().section(u'\t', 1));
        if (!keys.isEmpty())
            entries.append({place, PlainCommand(action->text().section(u'\t', 0, 0)), keys.join(QStringLiteral(", "))});
    }
}

} // namespace

QList<ShortcutEntry> ShortcutsOfMenus(const QMenuBar& bar) {
    QList<ShortcutEntry> entries;
    const QList<QAction*> menus = bar.actions();
    for (const QAction* menu : menus)
        if (menu->menu() != nullptr)
            AddMenu(*menu->menu(), PlainCommand(menu->text()), entries);
    return entries;
}

QList<ShortcutEntry> ShortcutsOfControls() {
    QList<ShortcutEntry> entries;
    for (const ControlKeys& keys : kControlKeys)
        entries.append(
            {QString::fromUtf16(keys.place), QString::fromUtf16(keys.command), QString::fromUtf16(keys.keys)});
    return entries;
}

QList<ShortcutEntry> MatchingShortcuts(const QList<ShortcutEntry>& entries, const QString& needle) {
    const QStringList words = needle.split(u' ', Qt::SkipEmptyParts);
    QList<ShortcutEntry> matching;
    for (const ShortcutEntry& entry : entries) {
        const QString all = entry.place + u' ' + entry.command + u' ' + entry.keys;
        if (std::all_of(words.begin(), words.end(),
                        [&all](const QString& word) { return all.contains(word, Qt::CaseInsensitive); }))
            matching.append(entry);
    }
    return matching;
}

} // namespace kalvo
