#include "app/MprisValues.h"

#include <QDBusObjectPath>
#include <QFileInfo>
#include <QStringList>
#include <QUrl>

#include <cmath>

namespace kalvo::mpris {

namespace {

constexpr double kPitchUnits = 1000; ///< of DeskFacts::pitch, for the title's own rate

QString StatusText(DeskFacts::Activity activity) {
    switch (activity) {
    case DeskFacts::Activity::Playing:
        return QStringLiteral("Playing");
    case DeskFacts::Activity::Paused:
        return QStringLiteral("Paused");
    case DeskFacts::Activity::Stopped:
        break;
    }
    return QStringLiteral("Stopped");
}

double Rate(const DeskFacts& facts) {
    return 1 + facts.pitch / kPitchUnits;
}

/** What is not known is left out. */
QVariantMap Metadata(const DeskFacts& facts) {
    QVariantMap data{{QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(TrackPath(facts.track)))}};
    if (facts.track == 0)
        return data;
    const DeckTitle& title = facts.title;
    data[QStringLiteral("xesam:title")] =
        title.title.isEmpty() ? QFileInfo(title.path).completeBaseName() : title.title;
    data[QStringLiteral("xesam:url")] = QUrl::fromLocalFile(title.path).toString(QUrl::FullyEncoded);
    if (!title.artist.isEmpty())
        data[QStringLiteral("xesam:artist")] = QStringList{title.artist};
    if (!facts.album.isEmpty())
        data[QStringLiteral("xesam:album")] = facts.album;
    if (title.length > 0)
        data[QStringLiteral("mpris:length")] = qlonglong(std::llround(title.length * kMicroseconds));
    if (!facts.artUrl.isEmpty())
        data[QStringLiteral("mpris:artUrl")] = facts.artUrl;
    return data;
}

} // namespace

QString TrackPath(int track) {
    return track == 0 ? QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack")
                      : QStringLiteral("/org/kalvo/Titel/%1").arg(track);
}

QVariantMap Properties(const DeskFacts& facts) {
    const bool runs = facts.activity == DeskFacts::Activity::Playing;
    return {{QStringLiteral("PlaybackStatus"), StatusText(facts.activity)},
            {QStringLiteral("Metadata"), Metadata(facts)},
            {QStringLiteral("Volume"), facts.masterVolume / 100.0},
            {QStringLiteral("Rate"), Rate(facts)},
            {QStringLiteral("CanPlay"), facts.canPlay},
            {QStringLiteral("CanPause"), facts.track != 0},
            {QStringLiteral("CanGoNext"), runs && facts.hasNext},
            {QStringLiteral("CanSeek"), facts.track != 0 && facts.title.length > 0}};
}

QVariantMap Changes(const QVariantMap& before, const QVariantMap& after) {
    QVariantMap changes;
    for (auto property = after.begin(); property != after.end(); ++property) {
        if (before.value(property.key()) != property.value())
            changes.insert(property.key(), property.value());
    }
    return changes;
}

double Expected(double position, double seconds, const DeskFacts& facts) {
    return facts.activity == DeskFacts::Activity::Playing ? position + seconds * Rate(facts) : position;
}

QStringList MimeTypes() {
    return {QStringLiteral("audio/mpeg"),
            QStringLiteral("audio/ogg"),
            QStringLiteral("audio/x-vorbis+ogg"),
            QStringLiteral("audio/x-opus+ogg"),
            QStringLiteral("audio/x-mpegurl"),
            QStringLiteral("audio/x-scpls"),
            QStringLiteral("application/x-kalvo-wiedergabeliste")};
}

} // namespace kalvo::mpris
