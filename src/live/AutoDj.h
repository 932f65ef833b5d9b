#pragma once

#include "live/AutoDjSelection.h"
#include "playlists/PlaylistEntry.h"
#include "tags/TitleRecord.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QSet>

#include <array>
#include <vector>

namespace kalvo {

class RandomSource;

/** Where the automatic DJ's titles come from. */
class TitleSource {
public:
    TitleSource() = default;
    TitleSource(const TitleSource&) = delete;
    TitleSource& operator=(const TitleSource&) = delete;
    virtual ~TitleSource() = default;

    /** Numbers of the titles that a record source statement selects, in its order. */
    virtual std::vector<qint64> Select(const QString& statement) const = 0;
    /** The titles of these numbers; those that are gone are left out. */
    virtual QList<TitleRecord> Read(const QList<qint64>& numbers) const = 0;
};

/** What one run is to draw. */
struct AutoDjTask {
    AutoDjSelection selection;
    QList<int> lists{1};                      ///< 1 or 2: the targets in turn
    qint64 seconds = -1;                      ///< done when the sum exceeds this; -1: no such goal
    int titles = -1;                          ///< done with so many titles; -1: no such goal
    std::array<QList<PlaylistEntry>, 2> held; ///< what the lists hold already, in their order
    QDateTime now;                            ///< tells what "today" is
};

/**
 * One run of the automatic DJ: draws titles at random until its goal is reached. First one of the values is drawn, then
 * one of its titles; a title that its target holds already, or that a rule leaves out, is passed over, and the same
 * target is drawn for again. Lists are only read, when the task is made. UI thread.
 *
 * It ends surely: after a hundred fruitless draws on end every matching title is looked at once, in random order, and
 * again as long as that has found some; then nothing is left. Each Step() takes about a millisecond.
 */
class AutoDj {
public:
    enum class State { Running, Reached, NothingLeft };

    /** Both outlive the run. */
    AutoDj(AutoDjTask task, const TitleSource& source, RandomSource& random);

    /** One draw, or a part of the search through all. */
    State Step();

    /** What has been drawn for list 1 or 2, in order, without shuffle keys. */
    const QList<PlaylistEntry>& Drawn(int list) const { return drawn_.at(static_cast<std::size_t>(list - 1)); }
    int Titles() const { return static_cast<int>(drawn_[0].size() + drawn_[1].size()); }
    /** Playing time of what has been drawn; unknown times count nothing. */
    qint64 Seconds() const { return seconds_; }
    /** Of the goal, 0 to 100. */
    int Percent() const;

    /** "Titel mit einer Gesamtspielzeit von: 00:31:05 der Wiedergabeliste hinzugefügt". */
    static QString Message(qint64 seconds);

private:
    enum class Verdict { Taken, Never, NotNow };

    bool IsReached() const;
    State Draw();
    State Collect();
    State LookThrough();
    const std::vector<qint64>& Matching(const QString& value);
    Verdict Judge(const TitleRecord& title);
    bool IsArtistNear(const QString& artist) const;
    bool WasPlayedToday(const QString& stamp) const;
    void Take(const TitleRecord& title);
    int Target() const { return task_.lists.at(turn_ % task_.lists.size()); }
    std::size_t Below(std::size_t count);

    AutoDjTask task_;
    const TitleSource& source_;
    RandomSource& random_;
    std::array<QSet<QString>, 2> paths_; ///< held and drawn
    QSet<QString> versions_;             ///< of both lists; only kept where the rule asks for them
    QStringList artists_;                ///< of the lists in turn, the latest last
    QHash<QString, std::vector<qint64>> matching_;
    std::size_t remembered_ = 0; ///< numbers in matching_
    std::array<QList<PlaylistEntry>, 2> drawn_;
    qint64 seconds_ = 0;
    qsizetype turn_ = 0;
    int misses_ = 0;
    qsizetype collected_ = 0;   ///< values whose titles are in left_
    std::vector<qint64> left_;  ///< still to be looked at
    std::vector<qint64> later_; ///< may come when others have
    int titlesAtPass_ = 0;      ///< drawn when the present pass began
};

} // namespace kalvo
