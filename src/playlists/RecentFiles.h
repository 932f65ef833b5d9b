#pragma once

#include <QString>
#include <QStringList>

namespace kalvo {

/** The playlist files opened or saved last, the latest first, kept in a small value file. UI thread. */
class RecentFiles {
public:
    static constexpr int maximumCount = 9;

    /** path: of the value file; missing or unreadable counts as empty. */
    explicit RecentFiles(QString path);

    const QStringList& Paths() const { return paths_; }
    /** Puts the path first. */
    void Add(const QString& path);
    void Remove(const QString& path);

private:
    void Write() const;

    QString path_;
    QStringList paths_;
};

} // namespace kalvo
