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
/** A value of the settings file holds no more characters. */
constexpr qsizetype kLongestPath = 255;
/** The system's notifications are limited; what lies beyond is looked at with every look all the same. */
constexpr qsizetype kMostWatched = 4000;

QString FolderKey(qsizetype number) {
    return u"Ordner%1"_s.arg(number);
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
    if (!IsScanRoot(folder) || folder.size() > kLongestPath || folders_.contains(folder))
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
        for (const QString& root : roots)
            found.files += ScanFolder(root, ScanMethod::Standard, remember).files;
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
        if (!archive_.HoldsPath(file))
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
        if (!moved.isEmpty() || !unknown.isEmpty())
            sounds.Write(store);
        return [this, sounds, fresh, moved] { TakeSounds(sounds, fresh, moved); };
    });
}

void WatchedFolders::TakeSounds(const KnownSounds& sounds, const QStringList& fresh, const QList<MovedFile>& moved) {
    sounds_ = sounds;
    QStringList offered = fresh;
    bool refresh = false;
    for (const MovedFile& file : moved) {
        std::optional<TitleRecord> record = archive_.FindByPath(file.from);
        if (!record || archive_.HoldsPath(file.to))
            continue;
        record->Pfad = file.to;
        if (!archive_.UpdateRecord(*record))
            continue;
        offered.removeOne(file.to);
        refresh = true;
        Q_EMIT TitleMoved(file.from, file.to);
    }
    if (refresh)
        archive_.Refresh();
    looking_ = false;
    if (std::exchange(newFiles_, offered) != offered)
        Q_EMIT NewFilesFound();
    if (again_)
        settle_.start();
}

QStringList WatchedFolders::NewFiles() const {
    QStringList files;
    for (const QString& file : newFiles_) {
        if (!archive_.HoldsPath(file))
            files.append(file);
    }
    return files;
}

} // namespace kalvo
