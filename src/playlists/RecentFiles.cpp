#include "playlists/RecentFiles.h"

#include "base/ValueFile.h"

namespace kalvo {

RecentFiles::RecentFiles(QString path) : path_(std::move(path)), paths_(ValueFile::Read(path_).mid(0, maximumCount)) {
    paths_.removeAll(QString());
}

void RecentFiles::Add(const QString& path) {
    paths_.removeAll(path);
    paths_.prepend(path);
    paths_ = paths_.mid(0, maximumCount);
    Write();
}

void RecentFiles::Remove(const QString& path) {
    if (paths_.removeAll(path) > 0)
        Write();
}

void RecentFiles::Write() const {
    ValueFile::Write(path_, QList<ValueFile::Value>(paths_.begin(), paths_.end()));
}

} // namespace kalvo
