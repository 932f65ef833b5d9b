#include "playlists/PlaylistMerge.h"

#include <QHash>

#include <algorithm>

namespace kalvo {

namespace {

using ById = QHash<quint64, const PlaylistEntry*>;

ById IndexOf(const PlaylistState& state) {
    ById index;
    index.reserve(state.entries.size());
    for (const PlaylistEntry& entry : state.entries)
        index.insert(entry.id, &entry);
    return index;
}

/** The one of the two that differs from `known`; `wanted` when the present value is the known one. */
template<typename Value>
Value Chosen(const Value& wanted, const Value& known, const Value& now) {
    return now == known ? wanted : now;
}

/** Entries that only `now` holds, each under the id of its last neighbour in front that is kept; 0 for the front. */
QHash<quint64, QList<PlaylistEntry>> Added(const PlaylistState& now, const ById& known, const ById& wanted) {
    QHash<quint64, QList<PlaylistEntry>> added;
    quint64 neighbour = 0;
    for (const PlaylistEntry& entry : now.entries) {
        if (wanted.contains(entry.id))
            neighbour = entry.id;
        else if (!known.contains(entry.id))
            added[neighbour].append(entry);
    }
    return added;
}

bool Holds(const QList<PlaylistEntry>& entries, quint64 id) {
    return std::any_of(entries.begin(), entries.end(), [id](const PlaylistEntry& entry) { return entry.id == id; });
}

} // namespace

PlaylistState MergedState(const PlaylistState& wanted, const PlaylistState& known, const PlaylistState& now) {
    if (now == known)
        return wanted;
    const ById knownById = IndexOf(known);
    const ById nowById = IndexOf(now);
    const auto added = Added(now, knownById, IndexOf(wanted));
    PlaylistState merged;
    merged.entries = added.value(0);
    for (PlaylistEntry entry : wanted.entries) {
        const PlaylistEntry* before = knownById.value(entry.id);
        const PlaylistEntry* present = nowById.value(entry.id);
        if (before == nullptr || present != nullptr) {
            if (before != nullptr) {
                entry.icon = Chosen(entry.icon, before->icon, present->icon);
                entry.info = Chosen(entry.info, before->info, present->info);
                entry.title = Chosen(entry.title, before->title, present->title);
                entry.artist = Chosen(entry.artist, before->artist, present->artist);
                entry.duration = Chosen(entry.duration, before->duration, present->duration);
                entry.path = Chosen(entry.path, before->path, present->path);
            }
            merged.entries.append(entry);
        }
        merged.entries.append(added.value(entry.id));
    }
    const quint64 red = Chosen(wanted.current, known.current, now.current);
    merged.current = Holds(merged.entries, red) ? red : wanted.current;
    merged.passedOver = merged.current == now.current ? now.passedOver : wanted.passedOver;
    merged.sorting = Chosen(wanted.sorting, known.sorting, now.sorting);
    return merged;
}

} // namespace kalvo
