#include "app/StartDecisions.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(StartDecisions, FarewellsNameTheAddressEachInItsOwnWay) {
    const QString outdated = FindComponentFault({true, {}, true, true})->farewell;
    EXPECT_TRUE(outdated.startsWith(u"Kalvo konnte nicht gestartet werden!, Führen Sie Kalvo erneut aus "
                                    "und downloaden Sie die aktuelle wenzo.dll aus dem Internet, oder "
                                    "Downloaden Sie das komplette Setup unter "_s));
    const QString address = outdated.section(u" unter "_s, 1).section(u' ', 0, 0);
    EXPECT_FALSE(address.isEmpty());
    EXPECT_TRUE(outdated.endsWith(address + u" herunter!"_s));
    // The other one has always had no blank in front of the address.
    EXPECT_TRUE(
        FindComponentFault({true, u"2.0"_s, true, false})->farewell.endsWith(u"unter"_s + address + u" herunter!"_s));
}

TEST(StartDecisions, OfferThePlayerOnlyOnAWideScreenWithAllItNeeds) {
    struct Case {
        int width;
        bool installed;
        bool archive;
        const char* reason;
    };
    const Case cases[] = {
        {1280, true, true, ""},
        {1279, true, true, "Für diese Funktion muss die Bildschirmbreite mindestens 1280 Pixel betragen"},
        {800, false, false, "Für diese Funktion muss die Bildschirmbreite mindestens 1280 Pixel betragen"},
        {1920, false, true, "Die Datei für den Player ist leider nicht installiert. Bitte installieren Sie Kalvo neu."},
        {1920, true, false, "Diese Funktion ist erst beim nächsten Start von Kalvo möglich."},
    };
    for (const Case& c : cases) {
        const PlayerOffer offer = OfferPlayer(c.width, c.installed, c.archive);
        EXPECT_EQ(offer.reason, QString::fromUtf8(c.reason));
        EXPECT_EQ(offer.enabled, *c.reason == '\0');
    }
}

} // namespace
} // namespace kalvo
