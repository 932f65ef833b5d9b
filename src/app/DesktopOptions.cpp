#include "app/DesktopOptions.h"

#include "base/Settings.h"

namespace kalvo {

namespace {

const QString kDesktopSection = QStringLiteral("Desktop");
const QString kRemote = QStringLiteral("Fernbedienung");
const QString kWarnings = QStringLiteral("Warnungen");
const QString kTitleNotices = QStringLiteral("Titelwechsel");
const QString kStaysAwake = QStringLiteral("Wachbleiben");

} // namespace

DesktopOptions DesktopOptions::Read(const Settings& settings) {
    const DesktopOptions defaults;
    return {settings.GetSwitch(kDesktopSection, kRemote, defaults.remote),
            settings.GetSwitch(kDesktopSection, kWarnings, defaults.warnings),
            settings.GetSwitch(kDesktopSection, kTitleNotices, defaults.titles),
            settings.GetSwitch(kDesktopSection, kStaysAwake, defaults.staysAwake)};
}

void DesktopOptions::Write(Settings& settings) const {
    settings.PutSwitch(kDesktopSection, kRemote, remote);
    settings.PutSwitch(kDesktopSection, kWarnings, warnings);
    settings.PutSwitch(kDesktopSection, kTitleNotices, titles);
    settings.PutSwitch(kDesktopSection, kStaysAwake, staysAwake);
}

} // namespace kalvo
