#include "archive/WatchedFolders.h"

#include "archive/FolderScan.h"
#include "base/Settings.h"

#include <QElapsedTimer>
#include <QSet>

#include <utility>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

const QString kSection = u"Beobachten"_s;
const QString kCount = u"Anzahl"_s;

constexpr int kSettle = 2000; // ms
/** What one turn on the UI thread may take. */
constexpr int kTurn = 5; // ms
/** The system's notifications are limited; what lies beyond is looked at with every look all the same. */
constexpr qsizetype kMostWatched = 4000;

QString FolderKey(qsizetype number) {
    return u"Ordner%1"_s.arg(number);
}

/** Where a folder that is not there will turn up: a drive that is plugged in later. */
QString NearestFolder(const QString& missing) {
    QString folder = missing;
    while (folder.contains(u'/') && !IsScanRoot(folder))
        folder = folder.section(u'/', 0, -2);
    return folder.isEmpty() ? u"/"_s : folder;
}

} // namespace

WatchedFolders::WatchedFolders(Archive& archive, Settings& settings, QString storePath, QObject* parent)
    : QObject(parent), archive_(archive), settings_(settings), storePath_(std::move(storePath)) {
    ReadFolders();
    settle_.setSingleShot(true);
    settle_.setInterval(kSettle);
    connect(&settle_, &QTimer::timeout, this, &WatchedFolders::Look);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settle_, qOverload<>(&QTimer::start));
    connect(&archive_, &Archive::IndexReady, this, &WatchedFolders::Look);
    connect(&archive_, &Archive::CountChanged, this, [this] {
        if (!folders_.isEmpty() && archive_.IsIndexReady())
            settle_.start(); // the sounds of imported titles are to be learned
    });
}

WatchedFolders::~WatchedFolders() = default;

void WatchedFolders::ReadFolders() {
    const int count = settings_.GetNumber(kSection, kCount, 0);
    for (int number = 1; number <= count; ++number) {
        const QString folder = settings_.GetSetting(kSection, FolderKey(number), {});
        if (!folder.isEmpty())
            folders_.append(folder);
    }
}

void WatchedFolders::KeepFolders() {
    const Settings::Pass pass(settings_);
    settings_.PutNumber(kSection, kCount, static_cast<int>(folders_.size()));
    for (qsizetype number = 1; number <= folders_.size(); ++number)
        settings_.PutSetting(kSection, FolderKey(number), folders_.at(number - 1));
}

bool WatchedFolders::Add(const QString& folder) {
    if (!IsScanRoot(folder) || folder.size() > Settings::kLongestValue || folders_.contains(folder))
        return false;
    folders_.append(folder);
    KeepFolders();
    Q_EMIT FoldersChanged();
    Look();
    return true;
}

void WatchedFolders::Remove(const QString& folder) {
    if (folders_.removeAll(folder) == 0)
        return;
    KeepFolders();
    Q_EMIT FoldersChanged();
    Look();
}

void WatchedFolders::Look() {
    if (looking_ || !archive_.IsIndexReady()) {
        again_ = looking_;
        return;
    }
    looking_ = true;
    again_ = false;
    Start();
}

void WatchedFolders::Start() {
    worker_.Do([this, roots = folders_, store = storePath_, known = sounds_.Count() > 0]() -> BackgroundWorker::Answer {
        Found found;
        const auto remember = [&found](const ScanProgress& progress) {
            if (found.folders.isEmpty() || found.folders.last() != progress.folder)
                found.folders.append(progress.folder);
            return true;
        };
        for (const QString& root : roots) {
            found.files += ScanFolder(root, ScanMethod::Standard, remember).files;
            if (!IsScanRoot(root))
                found.folders.append(NearestFolder(root));
        }
        found.files.removeDuplicates();
        const KnownSounds kept = known || roots.isEmpty() ? KnownSounds() : KnownSounds::Read(store);
        return [this, found, kept, known] {
            if (!known)
                sounds_ = kept;
            TakeFound(found);
        };
    });
}

void WatchedFolders::TakeFound(const Found& found) {
    Watch(found.folders);
    toSort_ = found.files;
    unknown_.clear();
    notHeld_.clear();
    if (archive_.Count() == 0)
        sounds_ = {};
    SortOut();
}

void WatchedFolders::Watch(const QStringList& folders) {
    const QStringList watched = watcher_.directories();
    const QStringList wanted = folders.mid(0, kMostWatched);
    const QSet<QString> old(watched.begin(), watched.end());
    const QSet<QString> next(wanted.begin(), wanted.end());
    const QStringList gone = (QSet<QString>(old) - next).values();
    const QStringList added = (QSet<QString>(next) - old).values();
    if (!gone.isEmpty())
        watcher_.removePaths(gone);
    if (!added.isEmpty())
        watcher_.addPaths(added);
    again_ = again_ || !added.isEmpty(); // what came into them before they were watched
}

void WatchedFolders::SortOut() {
    QElapsedTimer turn;
    turn.start();
    while (!toSort_.isEmpty()) {
        if (turn.hasExpired(kTurn)) {
            QTimer::singleShot(0, this, &WatchedFolders::SortOut);
            return;
        }
        const QString file = toSort_.takeLast();
        const bool out = !archive_.HoldsPath(file);
        if (out && !sounds_.Holds(file) && !declined_.contains(file))
            notHeld_.prepend(file);
        else if (!sounds_.Holds(file))
            unknown_.append(file);
    }
    ReadSounds();
}

void WatchedFolders::ReadSounds() {
    worker_.Do([this, sounds = sounds_, unknown = unknown_, fresh = notHeld_,
                store = storePath_]() mutable -> BackgroundWorker::Answer {
        const QList<MovedFile> moved = sounds.FindMoved(fresh);
        sounds.Learn(unknown);
        if (!unknown.isEmpty())
            sounds.Write(store);
        return [this, sounds, fresh, moved] { TakeSounds(sounds, fresh, moved); };
    });
}

void WatchedFolders::TakeSounds(const KnownSounds& sounds, const QStringList& fresh, const QList<MovedFile>& moved) {
    sounds_ = sounds;
    QStringList offered = fresh;
    for (const MovedFile& file : moved) {
        if (Follow(file))
            offered.removeOne(file.to);
    }
    if (offered.size() != fresh.size()) {
        archive_.Refresh();
        worker_.Do([known = sounds_, store = storePath_] {
            known.Write(store);
            return BackgroundWorker::Answer();
        });
    }
    looking_ = false;
    if (std::exchange(newFiles_, offered) != offered)
        Q_EMIT NewFilesFound();
    if (again_)
        settle_.start();
}

/** False when no title of the archive has moved there. */
bool WatchedFolders::Follow(const MovedFile& file) {
    for (const QString& from : file.from) {
        std::optional<TitleRecord> record = archive_.FindByPath(from);
        if (!record || archive_.HoldsPath(file.to))
            continue;
        record->Pfad = file.to;
        if (!archive_.UpdateRecord(*record))
            continue;
        sounds_.Follow(from, file.to);
        Q_EMIT TitleMoved(from, file.to);
        return true;
    }
    return false;
}

void WatchedFolders::Decline(const QStringList& files) {
    declined_.unite({files.begin(), files.end()});
    Look();
}

QStringList WatchedFolders::NewFiles() const {
    QStringList files;
    for (const QString& file : newFiles_) {
        if (!archive_.HoldsPath(file) && !declined_.contains(file))
            files.append(file);
    }
    return files;
}

} // namespace kalvo
