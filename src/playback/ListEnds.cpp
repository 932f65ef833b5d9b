#include "playback/ListEnds.h"

#include <algorithm>
#include <numeric>

namespace kalvo {

namespace {

QList<int> WithTitleOnDeck(const DeckState& deck, QList<int> coming) {
    if (deck.playing || deck.paused)
        coming.prepend(std::max(0, deck.length - deck.position));
    return coming;
}

} // namespace

ListEnds EndsOfLists(const MixState& state, const std::array<QList<int>, 2>& coming) {
    ListEnds ends;
    std::array<QList<int>, 2> titles;
    for (const std::size_t player : {0U, 1U}) {
        titles.at(player) = WithTitleOnDeck(state.decks.at(player), coming.at(player));
        ends.rest.at(player) = std::accumulate(titles.at(player).cbegin(), titles.at(player).cend(), qint64{0});
    }
    ends.end = ends.rest;
    if (!state.continuous)
        return ends;
    const int overlap = state.automatic && state.mode == FadeMode::FadeCrossOver ? state.switchOver : 0;
    std::array<qsizetype, 2> next{};
    const auto hasNext = [&](std::size_t player) { return next.at(player) < titles.at(player).size(); };
    std::size_t player = OnAir(state) == 2 ? 1 : 0;
    qint64 start = 0;
    while (hasNext(0) || hasNext(1)) {
        player = hasNext(player) ? player : 1 - player;
        const int seconds = titles.at(player).at(next.at(player)++);
        ends.end.at(player) = start + seconds;
        const bool isTurn = hasNext(1 - player);
        start += isTurn ? std::max(0, seconds - overlap) : seconds;
        player = isTurn ? 1 - player : player;
    }
    return ends;
}

} // namespace kalvo
