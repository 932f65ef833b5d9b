#pragma once

#include "live/WishFile.h"

#include <QHash>

namespace kalvo {

class Playlist;

/** What has become of the wishes, by what both lists hold now. */
class WishState {
public:
    WishState(const Playlist& first, const Playlist& second);

    /** "auf Player 1", "in Liste 1", "gespielt"; empty when no list holds the title. */
    QString Of(const Wish& wish) const;

private:
    enum class Stage : unsigned char { Played, Coming, OnPlayer };

    void Take(const Playlist& list, Stage stage);

    QHash<QString, QString> states_;    ///< by path
    QHash<QString, QString> cutStates_; ///< by what fits into the wish file, of the paths that do not
};

} // namespace kalvo
