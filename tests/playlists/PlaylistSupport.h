#pragma once

#include "playlists/Playlist.h"
#include "playlists/PlaylistFile.h"

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

/** What stands before a title: "!" when it is red, then for its icon "." played, ">" play-next, "<" mark removed. */
inline std::string Sign(bool isRed, int icon) {
    const char* const signs[] = {"", ".", ">", "<"};
    std::string sign = isRed ? "!" : "";
    return sign.append(signs[icon]);
}

/** The list as a text, its titles in order behind their signs. withKeys: the shuffle keys behind them. */
inline std::string Shown(const Playlist& list, bool withKeys = false) {
    std::string text;
    for (int row = 0; row < list.Count(); ++row) {
        const PlaylistEntry& entry = list.At(row);
        text += Sign(row == list.CurrentRow(), static_cast<int>(entry.icon)) + entry.title.toStdString();
        text += withKeys ? entry.shuffleKey.toStdString() : std::string();
    }
    return text;
}

/** Titles of both lists of a playlist file as "abc|de", or what went wrong. */
inline std::string Stored(const QString& path) {
    const SystemClock clock;
    PlaylistFile::Lists lists;
    const PlaylistFile::Result result = PlaylistFile(path, clock).Load(lists);
    QString text = result.message;
    for (const QList<PlaylistEntry>& list : lists) {
        for (const PlaylistEntry& entry : list)
            text += entry.title;
        text += u'|';
    }
    return text.chopped(1).toStdString();
}

} // namespace kalvo::test
