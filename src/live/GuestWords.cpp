#include "live/GuestWords.h"

#include <QList>

#include <algorithm>
#include <array>

namespace kalvo::GuestWords {

namespace {

struct Word {
    std::string_view key;
    const char* german;
    const char* english;
};

constexpr std::array kWords{
    Word{"anfang", "Gib einen Interpreten oder einen Titel ein.", "Type an artist or a title."},
    Word{"anzahl", "%1 Titel gefunden", "%1 titles found"},
    Word{"anzahl1", "1 Titel gefunden", "1 title found"},
    Word{"fehlt", "Bitte wähle einen Titel aus.", "Please choose a title."},
    Word{"gast", "Dein Name (wenn du magst)", "Your name (if you like)"},
    Word{"gewuenscht", "Gewünscht", "Wished"},
    Word{"gruss", "Musik wünschen", "Wish for music"},
    Word{"kein", "Nichts gefunden. Vielleicht ist es anders geschrieben?", "Nothing found. Maybe another spelling?"},
    Word{"laden", "Die Titel werden gerade geladen.", "The titles are being loaded."},
    Word{"laeuft", "Jetzt läuft", "Now playing"},
    Word{"meine", "Deine Wünsche", "Your wishes"},
    Word{"neu", "Bitte lade die Seite neu und versuche es noch einmal. Dein Browser muss Cookies erlauben.",
         "Please reload the page and try again. Your browser has to allow cookies."},
    Word{"noted", "wird notiert", "being noted"},
    Word{"notiert", "Dein Wunsch ist notiert.", "Your wish has been noted."},
    Word{"onair", "läuft jetzt", "playing now"},
    Word{"gone", "nicht mehr auf dem Wunschzettel", "no longer on the wish list"},
    Word{"played", "wurde gespielt", "has been played"},
    Word{"queued", "kommt bald", "coming soon"},
    Word{"schon", "Diesen Titel hast du dir schon gewünscht.", "You have already wished for this title."},
    Word{"springen", "Zur Suche", "Skip to the search"},
    Word{"sprache", "English", "Deutsch"},
    Word{"still", "Gerade läuft keine Musik.", "No music is playing right now."},
    Word{"suche", "Interpret oder Titel", "Artist or title"},
    Word{"suchen", "Suchen", "Search"},
    Word{"titelwunsch", "%1 wünschen", "Wish for %1"},
    Word{"unbenannt", "Ohne Namen", "Untitled"},
    Word{"unbekannt", "Diesen Titel gibt es hier nicht mehr.", "This title is no longer available here."},
    Word{"unterbrochen", "Keine Verbindung. Bist du noch im selben WLAN?",
         "No connection. Are you still in the same Wi-Fi?"},
    Word{"viele", "Die ersten %1 von %2 Titeln. Noch ein Wort macht es genauer.",
         "The first %1 of %2 titles. One more word narrows it down."},
    Word{"voll", "Der Wunschzettel ist gerade voll. Versuch es später noch einmal.",
         "The wish list is full right now. Please try again later."},
    Word{"waits", "Platz %1", "No. %1"},
    Word{"wuenschen", "Wünschen", "Wish"},
    Word{"zuviele", "Das waren viele Wünsche auf einmal. Warte bitte ein paar Minuten.",
         "Those were many wishes at once. Please wait a few minutes."},
};

} // namespace

QByteArray Of(GuestLanguage language, std::string_view key) {
    const auto* word = std::find_if(kWords.begin(), kWords.end(), [key](const Word& one) { return one.key == key; });
    if (word == kWords.end())
        return {};
    return language == GuestLanguage::English ? word->english : word->german;
}

QByteArray Code(GuestLanguage language) {
    return language == GuestLanguage::English ? "en" : "de";
}

GuestLanguage Choose(const QByteArray& chosen, const QByteArray& accepted) {
    if (chosen == "de" || chosen == "en")
        return chosen == "de" ? GuestLanguage::German : GuestLanguage::English;
    const QList<QByteArray> languages = accepted.split(',');
    for (const QByteArray& language : languages) {
        const QByteArray name = language.trimmed().left(2).toLower();
        if (name == "de")
            return GuestLanguage::German;
        if (name == "en")
            return GuestLanguage::English;
    }
    return accepted.trimmed().isEmpty() ? GuestLanguage::German : GuestLanguage::English;
}

} // namespace kalvo::GuestWords
