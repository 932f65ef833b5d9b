#include "playback/OutputChoice.h"

#include "base/Settings.h"

namespace kalvo {

namespace {

const QString kSoundCardSection = QStringLiteral("Soundkarte");
const QString kBuffer = QStringLiteral("Puffer");
const QString kNormal = QStringLiteral("normal");

/** The key of the number; that of the name is the same with "Name" behind it. */
QString DeviceKey(audio::Output output) {
    return output == audio::Output::Main ? QStringLiteral("DeviceW") : QStringLiteral("Device");
}

QString NameKey(audio::Output output) {
    return DeviceKey(output) + QStringLiteral("Name");
}

} // namespace

OutputChoice OutputChoice::Read(const Settings& settings, audio::Output output) {
    const int standard = output == audio::Output::Main ? audio::kDefaultDevice : audio::kNoSound;
    return {settings.GetNumber(kSoundCardSection, DeviceKey(output), standard),
            settings.GetSetting(kSoundCardSection, NameKey(output), {})};
}

void OutputChoice::Write(Settings& settings, audio::Output output) const {
    const Settings::Pass pass(settings);
    settings.PutNumber(kSoundCardSection, DeviceKey(output), device);
    settings.PutSetting(kSoundCardSection, NameKey(output), name);
}

int OutputChoice::Resolve(const QStringList& names) const {
    const auto named = static_cast<int>(names.indexOf(name));
    return !name.isEmpty() && named >= 0 ? named : device;
}

QStringList OutputBuffer::Names() {
    return {QStringLiteral("schnell"), kNormal, QStringLiteral("sicher")};
}

int OutputBuffer::Frames(const QString& name) {
    constexpr int normal = 1024;
    if (name == Names().constFirst())
        return normal / 2;
    return name == Names().constLast() ? normal * 2 : normal;
}

QString OutputBuffer::Read(const Settings& settings) {
    const QString name = settings.GetSetting(kSoundCardSection, kBuffer, kNormal);
    return Names().contains(name) ? name : kNormal;
}

void OutputBuffer::Write(Settings& settings, const QString& name) {
    settings.PutSetting(kSoundCardSection, kBuffer, name);
}

} // namespace kalvo
