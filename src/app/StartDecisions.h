#pragma once

#include <QString>

#include <optional>

// What the start routine decides, without a window: free functions over what it has found.
namespace kalvo {

/** The components beside the executable. */
struct ComponentFacts {
    bool moduleExists = false;
    QString moduleVersion; ///< "2.0"; empty when the file is no audio library
    bool encoderExists = false;
    bool discDatabaseExists = false;
};

/** Why the program cannot start, as it is told. Empty texts are left out. */
struct ComponentFault {
    QString caption;   ///< of all its messages
    QString message;   ///< first, as an error
    QString component; ///< to download, "wenzo" or "CDDB"; empty: nothing is asked, the program ends
    QString question;
    QString farewell; ///< after "Nein"
};

/** The first fault in the order of the checks; none when the program can start. */
std::optional<ComponentFault> FindComponentFault(const ComponentFacts& facts);

/** What the start option dialog offers beside the main program. */
struct PlayerOffer {
    bool enabled = false;
    QString reason; ///< why not; empty when enabled
};

/** screenWidth in logical pixels. */
PlayerOffer OfferPlayer(int screenWidth, bool playerInstalled, bool archiveExists);

} // namespace kalvo
