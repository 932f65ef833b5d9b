#include "playback/OutputChoice.h"

#include "base/Settings.h"

namespace kalvo {

namespace {

const QString kSection = QStringLiteral("Soundkarte");
const QString kDevice = QStringLiteral("DeviceW");
const QString kName = QStringLiteral("DeviceWName");

} // namespace

OutputChoice OutputChoice::Read(const Settings& settings) {
    return {settings.GetNumber(kSection, kDevice, 1), settings.GetSetting(kSection, kName, {})};
}

void OutputChoice::Write(Settings& settings) const {
    const Settings::Pass pass(settings);
    settings.PutNumber(kSection, kDevice, device);
    settings.PutSetting(kSection, kName, name);
}

int OutputChoice::Resolve(const QStringList& names) const {
    const auto named = static_cast<int>(names.indexOf(name));
    return !name.isEmpty() && named >= 0 ? named : device;
}

} // namespace kalvo
