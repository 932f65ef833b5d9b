#pragma once

#include "archive/Archive.h"
#include "archive/KnownSounds.h"
#include "base/BackgroundWorker.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

namespace kalvo {

class Settings;

/**
 * Folders that are looked at again at the start and whenever something in them changes. Files that the archive does not
 * hold are offered, except those that it held once, which the user has taken out, and those that were declined; an
 * empty archive is offered everything. A title whose file has vanished and turns up in a new place, told by its sound,
 * keeps its record with rating and last play under the new path.
 *
 * A look: a thread of its own walks the folders; the UI thread sorts out, in short turns, what the archive holds; the
 * thread reads the sound of what is new and of what was not known yet; the UI thread moves records. Changes while a
 * look runs bring another one. Everything here is called on the UI thread.
 */
class WatchedFolders : public QObject {
    Q_OBJECT

public:
    /** archive and settings outlive it. storePath: where the sounds of the titles are kept from run to run. */
    WatchedFolders(Archive& archive, Settings& settings, QString storePath, QObject* parent = nullptr);
    ~WatchedFolders() override;

    const QStringList& Folders() const { return folders_; }
    /** False for a folder that cannot be scanned, has a path of over 255 characters or is watched already. */
    bool Add(const QString& folder);
    void Remove(const QString& folder);
    /** Looks as soon as the archive's index is there. */
    void Look();

    /** These are not offered any more. */
    void Decline(const QStringList& files);
    /** Found in the watched folders, on offer and not in the archive by now. */
    QStringList NewFiles() const;

Q_SIGNALS:
    void FoldersChanged();
    /** A look has ended and NewFiles() has changed. */
    void NewFilesFound();
    /** A title's file was found in a new place; its record has followed. */
    void TitleMoved(const QString& from, const QString& to);

private:
    struct Found {
        QStringList files;
        QStringList folders;
    };
    void ReadFolders();
    void KeepFolders();
    void Start();
    void TakeFound(const Found& found);
    void Watch(const QStringList& folders);
    void SortOut();
    void ReadSounds();
    bool Follow(const MovedFile& file);
    void TakeSounds(const KnownSounds& sounds, const QStringList& fresh, const QList<MovedFile>& moved);

    Archive& archive_;
    Settings& settings_;
    QString storePath_;
    QStringList folders_;
    QFileSystemWatcher watcher_;
    QTimer settle_; ///< waits until a copying into a folder has come to rest
    bool looking_ = false;
    bool again_ = false;
    QStringList toSort_;  ///< of the look that runs: files not yet sorted out, the next one last
    QStringList unknown_; ///< held by the archive, sound not read yet
    QStringList notHeld_;
    QSet<QString> declined_; ///< not known by their sounds yet
    QStringList newFiles_;
    KnownSounds sounds_;
    BackgroundWorker worker_; ///< last: its jobs end before the rest goes
};

} // namespace kalvo
