#include "playback/RecordingOptions.h"

#include "base/Settings.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace kalvo {

namespace {

const QString kRecordingSection = QStringLiteral("Mitschnitt");
constexpr int kMostFolder = 255; // characters; a value is cut behind them

audio::EncodeSettings Encoder(audio::EncodeFormat format, int bitrate = 0, double quality = 0.6) {
    audio::EncodeSettings settings;
    settings.format = format;
    settings.bitrate = bitrate;
    settings.quality = quality;
    return settings;
}

/** A dangling link is something, too. */
bool IsTaken(const QString& path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace

const std::vector<RecordingFormat>& RecordingFormats() {
    using audio::EncodeFormat;
    static const std::vector<RecordingFormat> formats{
        {"mp3-320", u"MP3, 320 kbit/s", ".mp3", Encoder(EncodeFormat::Mp3, 320), 40000},
        {"mp3-192", u"MP3, 192 kbit/s", ".mp3", Encoder(EncodeFormat::Mp3, 192), 24000},
        {"mp3-128", u"MP3, 128 kbit/s", ".mp3", Encoder(EncodeFormat::Mp3, 128), 16000},
        {"ogg", u"OGG, hohe Qualität", ".ogg", Encoder(EncodeFormat::Ogg, 0, 0.8), 32000},
        {"ogg-mittel", u"OGG, mittlere Qualität", ".ogg", Encoder(EncodeFormat::Ogg, 0, 0.5), 20000},
        {"wav", u"WAV, unkomprimiert", ".wav", Encoder(EncodeFormat::Wav), 176400},
        {"flac", u"FLAC, verlustfrei", ".flac", Encoder(EncodeFormat::Flac), 125000}};
    return formats;
}

const RecordingFormat& RecordingFormatOf(const QString& key) {
    const std::vector<RecordingFormat>& formats = RecordingFormats();
    const auto found = std::find_if(formats.begin(), formats.end(),
                                    [&key](const RecordingFormat& format) { return key == QLatin1String(format.key); });
    return found != formats.end() ? *found : formats.front();
}

RecordingOptions RecordingOptions::Read(const Settings& settings, const QString& fallbackFolder) {
    RecordingOptions options;
    const QString format = settings.GetSetting(kRecordingSection, QStringLiteral("Format"), {});
    options.format = QLatin1String(RecordingFormatOf(format).key);
    options.folder = settings.GetSetting(kRecordingSection, QStringLiteral("Ordner"), fallbackFolder);
    if (!QDir::isAbsolutePath(options.folder))
        options.folder = fallbackFolder;
    return options;
}

void RecordingOptions::Write(Settings& settings) const {
    const Settings::Pass pass(settings);
    settings.PutSetting(kRecordingSection, QStringLiteral("Format"), format);
    if (folder.size() <= kMostFolder)
        settings.PutSetting(kRecordingSection, QStringLiteral("Ordner"), folder);
}

QString DefaultRecordingName(const QDateTime& now) {
    return QStringLiteral("Mitschnitt ") + now.toString(QStringLiteral("yyyy-MM-dd HH.mm"));
}

QString CleanRecordingName(const QString& text) {
    QString name = text.simplified();
    for (const RecordingFormat& format : RecordingFormats()) {
        if (name.endsWith(QLatin1String(format.ending), Qt::CaseInsensitive))
            name.chop(QLatin1String(format.ending).size());
    }
    const auto isForbidden = [](QChar c) { return QStringLiteral("/\\:*?\"<>|").contains(c) || !c.isPrint(); };
    name.removeIf(isForbidden);
    name = name.trimmed();
    while (name.startsWith(u'.'))
        name.remove(0, 1);
    return name.left(100).trimmed();
}

QString FreeRecordingName(const QString& folder, const QString& name, const QString& ending) {
    const QDir target(folder);
    QString free = name;
    for (int number = 2;
         IsTaken(target.filePath(free + ending)) || IsTaken(target.filePath(free + QStringLiteral(".cue"))); ++number)
        free = name + u'-' + QString::number(number);
    return free;
}

} // namespace kalvo
