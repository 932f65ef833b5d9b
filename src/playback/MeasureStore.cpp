#include "playback/MeasureStore.h"

#include "audio/Limiter.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kFormat = 1;
constexpr int kPlaces = 5; ///< of a title: size, time, loudness, peak, tempo
constexpr double kWanted = -16;
constexpr double kMostDown = -12;
constexpr double kMostUp = 6;
constexpr double kSilence = -60; // LUFS

} // namespace

FileStamp FileStamp::Of(const QString& path) {
    const QFileInfo file(path);
    return file.exists() ? FileStamp{file.size(), file.lastModified().toMSecsSinceEpoch()} : FileStamp();
}

std::optional<MeasureStore> MeasureStore::FromJson(const QByteArray& bytes) {
    const QJsonObject json = QJsonDocument::fromJson(bytes).object();
    if (json[u"format"].toInt() != kFormat || !json[u"titel"].isObject())
        return std::nullopt;
    MeasureStore store;
    const QJsonObject titles = json[u"titel"].toObject();
    for (auto title = titles.begin(); title != titles.end(); ++title) {
        const QJsonArray places = title.value().toArray();
        const bool areNumbers =
            std::all_of(places.begin(), places.end(), [](const QJsonValue& place) { return place.isDouble(); });
        if (places.size() == kPlaces && areNumbers)
            store.Put(title.key(), {{places[0].toInteger(), places[1].toInteger()},
                                    {places[2].toDouble(), places[3].toDouble(), places[4].toDouble()}});
    }
    return store;
}

QByteArray MeasureStore::ToJson() const {
    QJsonObject titles;
    for (auto title = titles_.begin(); title != titles_.end(); ++title) {
        const auto& [stamp, measures] = title.value();
        titles.insert(title.key(),
                      QJsonArray{stamp.size, stamp.time, measures.loudness, measures.peak, measures.tempo});
    }
    return QJsonDocument(QJsonObject{{u"format"_s, kFormat}, {u"titel"_s, titles}}).toJson(QJsonDocument::Compact);
}

const MeasuredTitle* MeasureStore::Find(const QString& path) const {
    const auto found = titles_.constFind(path);
    return found == titles_.constEnd() ? nullptr : &found.value();
}

void MeasureStore::Put(const QString& path, const MeasuredTitle& title) {
    titles_.insert(path, title);
}

double LevellingGain(const audio::TitleMeasures& measures) {
    if (measures.loudness < kSilence || measures.peak <= 0)
        return 0;
    const double headroom = 20 * std::log10(static_cast<double>(audio::Limiter::kCeiling) / measures.peak);
    const double gain = std::clamp(kWanted - measures.loudness, kMostDown, kMostUp);
    return std::min(gain, std::max(0.0, headroom));
}

} // namespace kalvo
