#pragma once

#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistFile.h"

#include <functional>

namespace kalvo::test {

using namespace Qt::StringLiterals;

/** Gives the chosen numbers one after the other, then 0. */
class ChosenRandom final : public RandomSource {
public:
    void Choose(std::initializer_list<double> numbers) { numbers_.insert(numbers_.end(), numbers); }
    double Uniform() override { return next_ < numbers_.size() ? numbers_[next_++] : 0; }

private:
    std::vector<double> numbers_;
    std::size_t next_ = 0;
};

/** Answers in turn, "Nein" when there are no more; keeps what was said and asked. */
class AnsweredQuestions final : public PlaylistQuestions {
public:
    void Tell(const QString& text) override { said.append(text); }
    QString Ask(const QString& caption, const QString& text) override {
        said.append(caption + u'|' + text);
        if (meanwhile)
            meanwhile();
        return answers.isEmpty() ? u"Nein"_s : answers.takeFirst();
    }
    QStringList answers, said;
    std::function<void()> meanwhile; ///< what happens while a question is open
};

/** An entry named by one letter or word, its path "/music/<name>". */
inline PlaylistEntry Entry(const QString& name, const QString& key = u"1"_s) {
    return {name, u"A-"_s + name, u"01:00"_s, key, {}, u"/music/"_s + name};
}

/** One entry for each character. */
inline QList<PlaylistEntry> EntriesOf(const char* names) {
    QList<PlaylistEntry> entries;
    for (; *names; ++names)
        entries.append(Entry(QString(QLatin1Char(*names))));
    return entries;
}

/** The same as titles of the archive. */
inline QList<TitleRecord> TitlesOf(const char* names) {
    QList<TitleRecord> titles;
    for (const PlaylistEntry& entry : EntriesOf(names)) {
        TitleRecord& title = titles.emplaceBack();
        title.Titel = entry.title;
        title.Interpret = entry.artist;
        title.Zeit = entry.duration;
        title.Pfad = entry.path;
        title.Extra1 = u"Kommentar"_s;
    }
    return titles;
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
    QString text = PlaylistFile(path, clock).Load(lists).message;
    for (const QList<PlaylistEntry>& list : lists) {
        for (const PlaylistEntry& entry : list)
            text += entry.title;
        text += u'|';
    }
    return text.chopped(1).toStdString();
}

struct TwoLists {
    std::string Both() const { return Shown(first) + "|" + Shown(second); }

    SystemRandom random;
    Playlist first{1, random}, second{2, random};
};

/** Both lists and what the user does with them. */
struct ListDesk : TwoLists {
    AnsweredQuestions questions;
    PlaylistActions actions{first, second, questions};
    QUndoStack& stack = actions.Undo().Stack();
};

} // namespace kalvo::test
