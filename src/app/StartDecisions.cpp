#include "app/StartDecisions.h"

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kPlayerScreenWidth = 1280;
const QString kRequiredVersion = u"2.0"_s;
const QString kWebAddress = QStringLiteral(KALVO_WEB_ADDRESS);

ComponentFault LibraryMissing() {
    return {u"bass.dll"_s, u"bass.dll not exists"_s, {}, {}, {}};
}

ComponentFault LibraryOutdated() {
    return {u"bass.dll"_s, u"Version der bass.dll ist veraltet!"_s, u"wenzo"_s,
            u"Kalvo konnte nicht gestartet werden, es fehlt die aktuelle DLL, soll diese jetzt aus dem Internet "
            "heruntergeladen werden?"_s,
            u"Kalvo konnte nicht gestartet werden!, Führen Sie Kalvo erneut aus und downloaden Sie die aktuelle "
            "wenzo.dll aus dem Internet, oder Downloaden Sie das komplette Setup unter "_s +
                kWebAddress + u" herunter!"_s};
}

ComponentFault DiscDatabaseMissing() {
    return {u"Kalvo"_s,
            {},
            u"CDDB"_s,
            u"Kalvo konnte nicht gestartet werden, für die Funktion CDDB fehlt eine Komponente, soll diese jetzt aus "
            "dem Internet heruntergeladen werden?"_s,
            u"Kalvo konnte nicht gestartet werden!, Führen Sie Kalvo erneut aus und downloaden Sie die fehlende "
            "Komponente aus dem Internet, oder Downloaden Sie das komplette Setup unter"_s +
                kWebAddress + u" herunter!"_s};
}

} // namespace

std::optional<ComponentFault> FindComponentFault(const ComponentFacts& facts) {
    if (!facts.moduleExists) {
        return LibraryMissing();
    }
    if (facts.moduleVersion != kRequiredVersion || !facts.encoderExists) {
        return LibraryOutdated();
    }
    if (!facts.discDatabaseExists) {
        return DiscDatabaseMissing();
    }
    return std::nullopt;
}

PlayerOffer OfferPlayer(int screenWidth, bool playerInstalled, bool archiveExists) {
    if (screenWidth < kPlayerScreenWidth) {
        return {false, u"Für diese Funktion muss die Bildschirmbreite mindestens 1280 Pixel betragen"_s};
    }
    if (!playerInstalled) {
        return {false, u"Die Datei für den Player ist leider nicht installiert. Bitte installieren Sie Kalvo neu."_s};
    }
    if (!archiveExists) {
        return {false, u"Diese Funktion ist erst beim nächsten Start von Kalvo möglich."_s};
    }
    return {true, {}};
}

} // namespace kalvo
