#pragma once

#include "playlists/FileGathering.h"
#include "playlists/PlaylistActions.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace kalvo {

class Settings;

/**
 * Puts titles and files into the lists without making the desk wait for a disk: whether files are there, what folders
 * and playlists hold and what tags say is found out by a thread for each job. What takes no longer than a moment goes
 * in within the call; the rest goes in when its thread has come back, before the entry that stood at the row when it
 * was asked for. Rows count from 0, -1 appends.
 *
 * Threads: everything here belongs to the UI thread; a job shares with its thread only what `Job` says. The end waits a
 * second for running jobs, but not for a file system that hangs: such a thread is left to itself.
 */
class PlaylistIntake : public QObject {
    Q_OBJECT

public:
    using Gathered = std::function<void(const GatheredFiles& files)>;

    /** Both outlive this. */
    PlaylistIntake(PlaylistActions& lists, const Settings& settings, QObject* parent = nullptr);
    ~PlaylistIntake() override;

    /** As PlaylistActions::AddTitles and Distribute. */
    void AddTitles(int number, const QList<TitleRecord>& titles, int row = -1,
                   EntryOrigin origin = EntryOrigin::Player);
    void Distribute(const QList<TitleRecord>& titles);
    /**
     * Files, folders and M3U or PLS files, in this order; with the setting `ID3WL` their titles take their texts from
     * the tags. done is told what was found, before it goes into the list.
     */
    void AddFiles(int number, const QStringList& paths, int row, const Gathered& done);

    /** Drops what has not gone into a list yet. */
    void Cancel();
    /** How long a call may wait for its files; 40 ms unless set. */
    void SetPatience(std::chrono::milliseconds patience) { patience_ = patience; }

Q_SIGNALS:
    /** While jobs run on after their call: files done, and how many there are as far as that is known. */
    void Progress(int done, int total);
    /** No job is running on any more. */
    void Finished();

private:
    struct Job;
    using Answer = std::function<void()>;
    /** Done by the thread; what it gives is called on the UI thread. */
    using Work = std::function<Answer(FileProgress& progress)>;

    void Run(Work work);
    void Look();
    /** Says where a row of a list is later. */
    std::function<int()> Keep(int number, int row);

    PlaylistActions& lists_;
    const Settings& settings_;
    std::chrono::milliseconds patience_{40};
    std::vector<std::unique_ptr<Job>> jobs_;
    QTimer looking_;
};

} // namespace kalvo
