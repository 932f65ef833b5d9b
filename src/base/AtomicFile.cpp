#include "base/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kalvo {

namespace {

/** Makes a rename in the folder survive a power cut. */
void SyncFolder(const QString& folder) {
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
#else
    Q_UNUSED(folder)
#endif
}

} // namespace

bool WriteAtomically(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path); // syncs before it renames, follows links, keeps the permissions
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // Flushed here: what fails in the flush of commit() is not looked at there, and a full disk would leave an empty
    // file.
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit())
        return false;
    SyncFolder(QFileInfo(QFileInfo(path).canonicalFilePath()).path());
    return true;
}

bool ReplaceFile(const QString& replacement, const QString& path) {
#ifdef Q_OS_UNIX
    const QByteArray from = QFile::encodeName(replacement);
    const int handle = ::open(from.constData(), O_RDONLY | O_CLOEXEC);
    const bool synced = handle >= 0 && ::fsync(handle) == 0;
    if (handle >= 0)
        ::close(handle);
    if (!synced || std::rename(from.constData(), QFile::encodeName(path).constData()) != 0)
        return false;
    SyncFolder(QFileInfo(path).path());
    return true;
#else
    return QFile::remove(path) && QFile::rename(replacement, path);
#endif
}

} // namespace kalvo
