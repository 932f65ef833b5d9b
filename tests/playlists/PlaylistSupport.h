#pragma once

#include "playlists/Playlist.h"

#include <deque>

namespace kalvo::test {

/** Gives the chosen numbers one after the other, then 0. */
class ChosenRandom final : public RandomSource {
public:
    void Choose(std::initializer_list<double> numbers) { numbers_.insert(numbers_.end(), numbers); }
    double Uniform() override {
        if (numbers_.empty())
            return 0;
        const double number = numbers_.front();
        numbers_.pop_front();
        return number;
    }

private:
    std::deque<double> numbers_;
};

/** An entry named by one letter or word, its path "/music/<name>". */
inline PlaylistEntry Entry(const QString& name, const QString& key = QStringLiteral("1")) {
    return {name, QStringLiteral("A-") + name, QStringLiteral("01:00"), key, {}, QStringLiteral("/music/") + name};
}

/** One entry for each character. */
inline QList<PlaylistEntry> EntriesOf(const char* names) {
    QList<PlaylistEntry> entries;
    for (; *names; ++names)
        entries.append(Entry(QString(QLatin1Char(*names))));
    return entries;
}

/** What stands before a title for its icon: "." played, ">" play-next, "<" the mark removed. */
inline std::string Sign(int icon) {
    return icon == 0 ? "" : std::string(1, " .><"[icon]);
}

/** The list as a text, its titles in order; "!" before the red one, then its sign. withKeys: the keys behind them. */
inline std::string Shown(const Playlist& list, bool withKeys = false) {
    std::string text;
    for (int row = 0; row < list.Count(); ++row) {
        const PlaylistEntry& entry = list.At(row);
        text += (row == list.CurrentRow() ? "!" : "") + Sign(static_cast<int>(entry.icon)) + entry.title.toStdString();
        text += withKeys ? entry.shuffleKey.toStdString() : "";
    }
    return text;
}

} // namespace kalvo::test
