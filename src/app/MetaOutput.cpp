#include "app/MetaOutput.h"

#include "base/BackgroundWriter.h"
#include "base/Settings.h"
#include "playback/Mixer.h"

namespace kalvo {

namespace {

const QString kSection = QStringLiteral("Metadata");

/** artist " - " title, or the one that is there. */
QString Named(const DeckTitle& title) {
    const QString artist = title.artist.simplified();
    const QString name = title.title.simplified();
    return artist.isEmpty() || name.isEmpty() ? artist + name : artist + QStringLiteral(" - ") + name;
}

} // namespace

MetaOutput::MetaOutput(const Mixer& mixer, const Settings& settings, BackgroundWriter& writer, QString path,
                       QObject* parent)
    : QObject(parent), mixer_(mixer), settings_(settings), writer_(writer), path_(std::move(path)) {
    connect(&mixer, &Mixer::PlayerChanged, this, &MetaOutput::Refresh);
    connect(&mixer, &Mixer::FaderMoved, this, &MetaOutput::Refresh);
    Refresh();
}

QString MetaOutput::Line(const Mixer& mixer, const Settings& settings) {
    const int onAir = mixer.OnAirPlayer();
    if (onAir == 0 || mixer.Activity(onAir) != audio::Activity::Playing) {
        return settings.GetSetting(kSection, QStringLiteral("Stop"), {}).simplified();
    }
    const QString named = Named(mixer.Title(onAir));
    return named.isEmpty() ? settings.GetSetting(kSection, QStringLiteral("Alternativ"), {}).simplified() : named;
}

void MetaOutput::Refresh() {
    const QByteArray line = Line(mixer_, settings_).toUtf8() + '\n';
    if (line != written_) {
        written_ = line;
        writer_.Write(path_, line);
    }
}

} // namespace kalvo
