#include "tags/FileReplacement.h"

#include "base/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <atomic>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

const QString kEnding = u".kalvo-neu"_s;

qint64 ProcessNumber() {
#ifdef Q_OS_UNIX
    return ::getpid();
#else
    return 0;
#endif
}

bool Runs(qint64 process) {
#ifdef Q_OS_UNIX
    return ::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
#else
    return true;
#endif
}

void KeepOwner(const QString& from, const QString& to) {
#ifdef Q_OS_UNIX
    struct stat status {};
    if (::stat(QFile::encodeName(from).constData(), &status) == 0 &&
        ::chown(QFile::encodeName(to).constData(), status.st_uid, status.st_gid) != 0)
        return; // only the administrator may give files away; the copy then belongs to the user
#endif
}

} // namespace

FileReplacement::FileReplacement(const QString& path) : path_(QFileInfo(path).canonicalFilePath()) {}

FileReplacement::~FileReplacement() {
    if (!copy_.isEmpty())
        QFile::remove(copy_);
}

bool FileReplacement::Fail(const QString& reason) {
    reason_ = reason;
    return false;
}

bool FileReplacement::Prepare() {
    static std::atomic<int> counter{0};
    const QFileInfo info(path_);
    if (path_.isEmpty() || !info.isFile())
        return Fail(u"Die Datei ist nicht mehr vorhanden."_s);
    constexpr auto anyWrite = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    if (!info.isWritable() || !(info.permissions() & anyWrite))
        return Fail(u"Die Datei ist schreibgeschützt."_s);
    RemoveLeftovers();
    // The ending is none of music: no import takes the copy.
    const QString name = u".%1-%2%3"_s.arg(ProcessNumber()).arg(++counter).arg(kEnding);
    const QString copy = info.dir().filePath(name);
    if (!QFile::copy(path_, copy)) {
        QFile::remove(copy);
        const bool full = QStorageInfo(info.path()).bytesAvailable() < info.size();
        return Fail(full ? u"Auf dem Datenträger ist kein Platz."_s : u"Im Ordner kann nicht geschrieben werden."_s);
    }
    copy_ = copy;
    KeepOwner(path_, copy_);
    QFile::setPermissions(copy_, info.permissions());
    return true;
}

bool FileReplacement::Commit() {
    if (!ReplaceFile(copy_, path_))
        return Fail(u"Die Datei konnte nicht ersetzt werden."_s);
    copy_.clear();
    return true;
}

void FileReplacement::RemoveLeftovers() const {
    const QDir folder = QFileInfo(path_).dir();
    const QStringList names = folder.entryList({u".*"_s + kEnding}, QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        const qint64 process = name.mid(1).section(u'-', 0, 0).toLongLong();
        if (process > 0 && !Runs(process))
            QFile::remove(folder.filePath(name));
    }
}

} // namespace kalvo
