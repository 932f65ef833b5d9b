#pragma once

#include "playlists/ListUndo.h"
#include "playlists/PlaylistQuestions.h"
#include "tags/TitleRecord.h"

#include <QStringList>

#include <functional>

namespace kalvo {

/** An entry on its way by drag and drop, with the row it had when the drag began. */
struct DraggedEntry {
    PlaylistEntry entry;
    int row = -1;
};

/**
 * What the commands do with the two lists; each is one step of undo. Lists are named by their number, 1 or 2; rows
 * count from 0 and may have become invalid, since a list goes on while a question is open. UI thread.
 */
class PlaylistActions {
public:
    using Exists = std::function<bool(const QString& path)>;
    /** Gives a file's entry better texts, those of its tags; an empty duration is wanted in any case. */
    using Refine = std::function<void(PlaylistEntry& entry)>;

    /** Lists and questions outlive this. */
    PlaylistActions(Playlist& first, Playlist& second, PlaylistQuestions& questions, Exists exists = FileExists);

    /** Absent by default: entries of files keep what their names say. */
    void SetRefine(Refine refine) { refine_ = std::move(refine); }

    ListUndo& Undo() { return undo_; }
    PlaylistQuestions& Questions() { return questions_; }
    Playlist& List(int number) { return number == 2 ? second_ : first_; }
    /** The list on which shuffle, removing and marking act. */
    int ActiveList() const { return active_; }
    void SetActiveList(int number) { active_ = number; }

    /**
     * Titles of the archive, each with its questions: a missing file is told and skipped; one that is in the list
     * already is asked about, and only "Nein" skips it. row: before which to put them, -1 appends.
     */
    void AddTitles(int number, const QList<TitleRecord>& titles, int row = -1);
    /** One after the other over both lists, the first to list 1; missing files are skipped silently. */
    void Distribute(const QList<TitleRecord>& titles);
    /** Moves rows of the other list to the end of list `target`. */
    void MoveToList(int target, QList<int> rows);
    /** The title that is on a player. Nothing without a path. */
    void AddFromPlayer(int number, const QString& title, const QString& artist, const QString& duration,
                       const QString& path);

    /** `TitelAlsNaechstes`, on rows of the active list. */
    void MarkPlayNext(const QList<int>& rows);
    void UnmarkPlayNext(const QList<int>& rows);
    /** Shuffles the active list. */
    void Shuffle();
    void RemoveRows(int number, const QList<int>& rows);
    /** Within one list, before the entry that is at `target` now. */
    void MoveRows(int number, const QList<int>& rows, int target);
    /** Asks first; only "Ja" clears the active list. Whether it did. */
    bool RemoveAll();
    /** Entries of a playlist file, without a question. row: before which to put them, -1 appends. */
    void AddEntries(int number, QList<PlaylistEntry> entries, int row = -1);

    /**
     * Entries dropped before `row` of list `target`. source: the list they come from and leave, 0 for a copy. Those
     * that have left it meanwhile are not dropped either.
     */
    void DropEntries(int target, int row, const QList<DraggedEntry>& dragged, int source);
    /** Files and folders, these with all below them; only ".mp3" and ".ogg" are taken; row -1 appends. Gives how many.
     */
    int DropFiles(int target, int row, const QStringList& paths);

private:
    struct Target;
    static bool FileExists(const QString& path);
    void TellMissing(const QString& path);
    bool WantsDuplicate(Target& target, const TitleRecord& title);

    Playlist& first_;
    Playlist& second_;
    PlaylistQuestions& questions_;
    ListUndo undo_;
    Exists exists_;
    Refine refine_;
    int active_ = 1;
};

} // namespace kalvo
