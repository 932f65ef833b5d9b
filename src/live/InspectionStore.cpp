#include "live/InspectionStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kFormat = 1;
constexpr int kPlaces = 13;

QJsonArray Places(const InspectedTitle& title) {
    const audio::TitleInspection& found = title.found;
    return {title.stamp.size,        title.stamp.time,    found.decoded,       found.told,  int(found.broken),
            found.silenceAtStart,    found.silenceAtEnd,  found.longestGap,    found.gapAt, found.clippedRuns,
            found.measures.loudness, found.measures.peak, found.measures.tempo};
}

InspectedTitle Title(const QJsonArray& places) {
    const auto number = [&places](int place) { return places[place].toDouble(); };
    InspectedTitle title;
    title.stamp = {places[0].toInteger(), places[1].toInteger()};
    audio::TitleInspection& found = title.found;
    found.decoded = number(2);
    found.told = number(3);
    found.broken = number(4) != 0;
    found.silenceAtStart = number(5);
    found.silenceAtEnd = number(6);
    found.longestGap = number(7);
    found.gapAt = number(8);
    found.clippedRuns = places[9].toInt();
    found.measures = {number(10), number(11), number(12)};
    return title;
}

} // namespace

std::optional<InspectionStore> InspectionStore::FromJson(const QByteArray& bytes) {
    const QJsonObject json = QJsonDocument::fromJson(bytes).object();
    if (json[u"format"].toInt() != kFormat || !json[u"titel"].isObject())
        return std::nullopt;
    InspectionStore store;
    const QJsonObject titles = json[u"titel"].toObject();
    for (auto title = titles.begin(); title != titles.end(); ++title) {
        const QJsonArray places = title.value().toArray();
        const bool areNumbers =
            std::all_of(places.begin(), places.end(), [](const QJsonValue& place) { return place.isDouble(); });
        if (places.size() == kPlaces && areNumbers)
            store.Put(title.key(), Title(places));
    }
    return store;
}

QByteArray InspectionStore::ToJson() const {
    QJsonObject titles;
    for (auto title = titles_.begin(); title != titles_.end(); ++title)
        titles.insert(title.key(), Places(title.value()));
    return QJsonDocument(QJsonObject{{u"format"_s, kFormat}, {u"titel"_s, titles}}).toJson(QJsonDocument::Compact);
}

const InspectedTitle* InspectionStore::Find(const QString& path) const {
    const auto found = titles_.constFind(path);
    return found == titles_.constEnd() ? nullptr : &found.value();
}

void InspectionStore::Put(const QString& path, const InspectedTitle& title) {
    titles_.insert(path, title);
}

} // namespace kalvo
