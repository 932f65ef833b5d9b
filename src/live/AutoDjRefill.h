#pragma once

#include "live/AutoDjRunner.h"
#include "live/AutoDjStore.h"

#include <QTimer>

#include <array>

namespace kalvo {

class Clock;
class Playlist;

/**
 * Keeps the lists from running dry: one with fewer titles to come than wanted gets as many as are missing, drawn by the
 * automatic DJ, at its end; a standing sort ends. Titles that the list has behind it may come again when there are no
 * others. What it adds is no step of undo. UI thread; draws between the window's events, and never while the archive
 * has no titles to give.
 */
class AutoDjRefill : public QObject {
    Q_OBJECT

public:
    /** All outlive this. */
    AutoDjRefill(std::array<Playlist*, 2> lists, const TitleSource& source, RandomSource& random, const Clock& clock,
                 QObject* parent = nullptr);

    const AutoDjRefillOptions& Options() const { return options_; }
    void SetOptions(const AutoDjRefillOptions& options);
    /** "aus", "an", or why it cannot fill. */
    const QString& StateText() const { return state_; }
    /** The last try found nothing. */
    bool IsStuck() const { return stuck_[0] || stuck_[1]; }
    /** Looks at the lists: done when they change and, after a fruitless try, half a minute later. */
    void Check();

Q_SIGNALS:
    /** Options or state text are other ones. */
    void Changed();
    /** German, for the status line. */
    void Told(const QString& text);

private:
    int Missing(int list) const;
    void Draw(int list, bool repeats);
    void Take(const AutoDj& run);
    void ShowState();
    Playlist& List(int list) const { return *lists_.at(static_cast<std::size_t>(list - 1)); }

    std::array<Playlist*, 2> lists_;
    const Clock& clock_;
    AutoDjRunner runner_;
    AutoDjRefillOptions options_;
    QString state_ = QStringLiteral("aus");
    std::array<bool, 2> stuck_{}; ///< by list: the last try found nothing
    int list_ = 0;                ///< drawn for at present
    bool repeats_ = false;        ///< what the list has behind it may come again
    QTimer look_;
    QTimer again_;
};

} // namespace kalvo
