// The session as it stands in its file.

#include "app/SessionState.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kFormat = 1;
constexpr int kPlaces = 7; ///< of an entry

QJsonObject JsonOf(const SessionPlayer& player) {
    return {{u"titel"_s, player.title.title}, {u"interpret"_s, player.title.artist},
            {u"pfad"_s, player.title.path},   {u"cue"_s, player.title.cue},
            {u"spielt"_s, player.playing},    {u"pause"_s, player.paused},
            {u"sekunde"_s, player.second},    {u"stumm"_s, player.muted},
            {u"pitch"_s, player.pitch}};
}

SessionPlayer PlayerOf(const QJsonObject& json) {
    SessionPlayer player;
    player.title.title = json[u"titel"].toString();
    player.title.artist = json[u"interpret"].toString();
    player.title.path = json[u"pfad"].toString();
    player.title.cue = json[u"cue"].toDouble(-1);
    player.playing = json[u"spielt"].toBool() && !player.title.path.isEmpty();
    player.paused = json[u"pause"].toBool() && !player.playing && !player.title.path.isEmpty();
    player.second = std::max(0.0, json[u"sekunde"].toDouble());
    player.muted = json[u"stumm"].toBool();
    player.pitch = json[u"pitch"].toInt();
    return player;
}

QJsonArray JsonOf(const PlaylistEntry& entry) {
    return {entry.title,
            entry.artist,
            entry.duration,
            entry.shuffleKey,
            entry.info,
            entry.path,
            static_cast<int>(entry.icon)};
}

PlaylistEntry EntryOf(const QJsonArray& json) {
    return {json[0].toString(),
            json[1].toString(),
            json[2].toString(),
            json[3].toString(),
            json[4].toString(),
            json[5].toString(),
            static_cast<EntryIcon>(std::clamp(json[6].toInt(), 0, 3))};
}

QJsonObject JsonOf(const SessionList& list) {
    QJsonObject json{{u"symbole"_s, list.icons},
                     {u"rot"_s, list.red},
                     {u"rotPfad"_s, list.redPath},
                     {u"uebergangen"_s, list.passedOver}};
    if (list.unsaved) {
        QJsonArray entries;
        for (const PlaylistEntry& entry : *list.unsaved) {
            entries.append(JsonOf(entry));
        }
        json.insert(u"eintraege"_s, entries);
    }
    return json;
}

SessionList ListOf(const QJsonObject& json) {
    SessionList list;
    list.icons = json[u"symbole"].toString();
    list.red = json[u"rot"].toInt(-1);
    list.redPath = json[u"rotPfad"].toString();
    list.passedOver = json[u"uebergangen"].toBool();
    if (!json[u"eintraege"].isArray()) {
        return list;
    }
    QList<PlaylistEntry> entries;
    const QJsonArray stored = json[u"eintraege"].toArray();
    for (const auto value : stored) {
        if (value.toArray().size() == kPlaces) {
            entries.append(EntryOf(value.toArray()));
        }
    }
    list.unsaved = entries;
    return list;
}

QJsonObject JsonOf(const MixerOptions& options) {
    return {{u"modus"_s, FadeModeText(options.mode)},
            {u"geschwindigkeit"_s, options.fadeInterval},
            {u"umschaltzeitpunkt"_s, options.switchOver},
            {u"loeschen"_s, options.removePlayed},
            {u"nachladen"_s, options.preload},
            {u"kontinuierlich"_s, options.continuous},
            {u"automatik"_s, options.automatic}};
}

MixerOptions OptionsOf(const QJsonObject& json) {
    MixerOptions options;
    options.mode = FadeModeFromText(json[u"modus"].toString());
    options.fadeInterval =
        kFadeSpeeds.at(static_cast<std::size_t>(FadeSpeedIndex(json[u"geschwindigkeit"].toInt()))).interval;
    options.switchOver = std::max(0, json[u"umschaltzeitpunkt"].toInt(options.switchOver));
    options.removePlayed = json[u"loeschen"].toBool(options.removePlayed);
    options.preload = json[u"nachladen"].toBool(options.preload);
    options.continuous = json[u"kontinuierlich"].toBool(options.continuous);
    options.automatic = json[u"automatik"].toBool(options.automatic);
    return options;
}

} // namespace

QByteArray SessionState::ToJson() const {
    const QJsonObject json{{u"format"_s, kFormat},
                           {u"player"_s, QJsonArray{JsonOf(players[0]), JsonOf(players[1])}},
                           {u"listen"_s, QJsonArray{JsonOf(lists[0]), JsonOf(lists[1])}},
                           {u"fader"_s, fader},
                           {u"blendetZu"_s, fadeTarget},
                           {u"lautstaerke"_s, volume},
                           {u"mixer"_s, JsonOf(options)}};
    return QJsonDocument(json).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray SessionState::Dated(QByteArray json, const QDateTime& moment) {
    const QByteArray date = moment.toString(Qt::ISODate).toUtf8();
    return json.insert(json.lastIndexOf('}'), ",\"geschrieben\":\"" + date + '"');
}

std::optional<SessionState> SessionState::FromJson(const QByteArray& bytes) {
    const QJsonObject json = QJsonDocument::fromJson(bytes).object();
    if (json[u"format"].toInt() != kFormat || json[u"player"].toArray().size() != 2 ||
        json[u"listen"].toArray().size() != 2) {
        return std::nullopt;
    }
    SessionState state;
    for (int index = 0; index < 2; ++index) {
        const auto place = static_cast<std::size_t>(index);
        state.players.at(place) = PlayerOf(json[u"player"].toArray().at(index).toObject());
        state.lists.at(place) = ListOf(json[u"listen"].toArray().at(index).toObject());
    }
    state.written = QDateTime::fromString(json[u"geschrieben"].toString(), Qt::ISODate);
    state.fader = json[u"fader"].toInt();
    state.fadeTarget = std::clamp(json[u"blendetZu"].toInt(), 0, 2);
    state.volume = std::clamp(json[u"lautstaerke"].toInt(100), 0, 100);
    state.options = OptionsOf(json[u"mixer"].toObject());
    return state;
}

} // namespace kalvo
