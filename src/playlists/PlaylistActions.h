#pragma once

#include "playlists/ListUndo.h"
#include "playlists/PlaylistQuestions.h"
#include "tags/TitleRecord.h"

#include <QSet>

namespace kalvo {

/** An entry on its way by drag and drop, with the row it had when the drag began. */
struct DraggedEntry {
    PlaylistEntry entry;
    int row = -1;
};

/** A playlist entry of an archive title, without a shuffle key. */
PlaylistEntry EntryOf(const TitleRecord& title);

/**
 * What the commands do with the two lists; each is one step of undo. Asks no disk: see PlaylistIntake. Lists are named
 * by their number, 1 or 2; rows count from 0 and may have become invalid, since a list goes on while a question is
 * open. UI thread.
 */
class PlaylistActions {
public:
    /** Lists and questions outlive this. */
    PlaylistActions(Playlist& first, Playlist& second, PlaylistQuestions& questions);

    ListUndo& Undo() { return undo_; }
    PlaylistQuestions& Questions() { return questions_; }
    Playlist& List(int number) { return number == 2 ? second_ : first_; }
    /** The list on which shuffle, removing and marking act. */
    int ActiveList() const { return active_; }
    void SetActiveList(int number) { active_ = number; }

    /**
     * Titles of the archive, each with its questions: a missing file is told and skipped; one that is in the list
     * already is asked about, and only "Nein" skips it. missing: paths without a file. row: before which to put them,
     * -1 appends.
     */
    void AddTitles(int number, const QList<TitleRecord>& titles, const QSet<QString>& missing, int row = -1,
                   EntryOrigin origin = EntryOrigin::Player);
    /** One after the other over both lists, the first to list 1; missing files are skipped silently. */
    void Distribute(const QList<TitleRecord>& titles, const QSet<QString>& missing);
    /** Moves rows of the other list to the end of list `target`. */
    void MoveToList(int target, QList<int> rows);
    /** The title that is on a player. Nothing without a path. */
    void AddFromPlayer(int number, const QString& title, const QString& artist, const QString& duration,
                       const QString& path);

    /** `TitelAlsNaechstes`, on rows of the active list. */
    void MarkPlayNext(const QList<int>& rows);
    void UnmarkPlayNext(const QList<int>& rows);
    /** The fifth place of the entry with this id: a cue point in the form of CueText, or empty. False when it is gone.
     */
    bool SetCue(int number, quint64 entry, const QString& cue);
    /** Shuffles the active list. */
    void Shuffle();
    void RemoveRows(int number, const QList<int>& rows);
    /** Within one list, before the entry that is at `target` now. */
    void MoveRows(int number, const QList<int>& rows, int target);
    /** Asks first; only "Ja" clears the active list. Whether it did. */
    bool RemoveAll();
    /** Entries of a playlist file, without a question. row: before which to put them, -1 appends. */
    void AddEntries(int number, const QList<PlaylistEntry>& entries, int row = -1);

    /**
     * Entries dropped before `row` of list `target`. source: the list they come from and leave, 0 for a copy. Those
     * that have left it meanwhile are not dropped either.
     */
    void DropEntries(int target, int row, const QList<DraggedEntry>& dragged, int source);

private:
    struct Target;
    void TellMissing(const QString& path);
    bool WantsDuplicate(Target& target, const TitleRecord& title);

    Playlist& first_;
    Playlist& second_;
    PlaylistQuestions& questions_;
    ListUndo undo_;
    int active_ = 1;
};

} // namespace kalvo
