#include "app/DesktopOptions.h"

#include "base/Settings.h"

namespace kalvo {

namespace {

const QString kSection = QStringLiteral("Desktop");
const QString kRemote = QStringLiteral("Fernbedienung");
const QString kWarnings = QStringLiteral("Warnungen");
const QString kTitles = QStringLiteral("Titelwechsel");
const QString kStaysAwake = QStringLiteral("Wachbleiben");

} // namespace

DesktopOptions DesktopOptions::Read(const Settings& settings) {
    const DesktopOptions defaults;
    return {settings.GetSwitch(kSection, kRemote, defaults.remote),
            settings.GetSwitch(kSection, kWarnings, defaults.warnings),
            settings.GetSwitch(kSection, kTitles, defaults.titles),
            settings.GetSwitch(kSection, kStaysAwake, defaults.staysAwake)};
}

void DesktopOptions::Write(Settings& settings) const {
    settings.PutSwitch(kSection, kRemote, remote);
    settings.PutSwitch(kSection, kWarnings, warnings);
    settings.PutSwitch(kSection, kTitles, titles);
    settings.PutSwitch(kSection, kStaysAwake, staysAwake);
}

} // namespace kalvo
