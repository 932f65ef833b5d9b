#pragma once

#include "base/Clock.h"
#include "playlists/M3uWriter.h"
#include "playlists/PlaylistIntake.h"
#include "playlists/RecentFiles.h"

namespace kalvo {

/**
 * Opening and saving playlist files and what is asked about it; the paths are chosen already. Everything that changes
 * the lists is one step of undo. Failures are told and leave the lists as they are. UI thread.
 */
class PlaylistFileActions {
public:
    /** All outlive this. */
    PlaylistFileActions(PlaylistActions& lists, PlaylistIntake& intake, RecentFiles& recent, const Clock& clock);

    /** Both lists from a ".wil" file; asks whether to append when one of them has entries. */
    void Open(const QString& path);
    /** Both lists into a ".wil" file; asks whether to append when it exists. */
    void Save(const QString& path);
    /** A chosen M3U or PLS file to the end of the list. */
    void Import(int number, const QString& path);
    /**
     * What was dropped, chosen or given at the start: ".wil" files are opened, then the titles of M3U and PLS files,
     * music files and folders go into the list in the given order, before `row`, -1: at its end. A playlist without a
     * usable title is told.
     */
    void Take(int number, const QStringList& paths, int row = -1);
    /** The active list as extended M3U; nothing is written when a length had no value. */
    void Export(const QString& path, const TitleLength& length);

private:
    PlaylistActions& lists_;
    PlaylistIntake& intake_;
    RecentFiles& recent_;
    const Clock& clock_;
};

} // namespace kalvo
