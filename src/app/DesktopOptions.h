#pragma once

namespace kalvo {

class Settings;

/** What the program does on the user's desktop: section "Desktop" of "\kalvo.ini". */
struct DesktopOptions {
    bool remote = true;     ///< `Fernbedienung`: media keys and the desktop's player controls work the desk
    bool warnings = true;   ///< `Warnungen`: notifications of them while the program is not in front
    bool titles = false;    ///< `Titelwechsel`: notifications of them likewise
    bool staysAwake = true; ///< `Wachbleiben`: no screen saver and no sleep while music plays

    static DesktopOptions Read(const Settings& settings);
    void Write(Settings& settings) const;

    bool operator==(const DesktopOptions&) const = default;
};

} // namespace kalvo
