#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace kalvo {

/** A file whose sound is known from others that have vanished; mostly it is one of these in a new place. */
struct MovedFile {
    QStringList from;
    QString to;
};

/**
 * The sounds of titles by their paths, so that a file that was moved or renamed is found again. A value: copies are
 * cheap and may go to other threads.
 */
class KnownSounds {
public:
    /** A line per title; lines that are none are passed over. Empty without a file. */
    static KnownSounds Read(const QString& path);
    /** False, with the old file in place, when it cannot be written. */
    bool Write(const QString& path) const;

    bool Holds(const QString& file) const { return byFile_.contains(file); }
    qsizetype Count() const { return byFile_.size(); }
    /** Reads the sounds of files that exist; may take long. */
    void Learn(const QStringList& files);
    /** Which of the files are known sounds whose own files have vanished. May take long. */
    QList<MovedFile> FindMoved(const QStringList& files) const;
    /** The sound is known under the new path from now on. */
    void Follow(const QString& from, const QString& to);

private:
    QHash<QString, QByteArray> byFile_;
};

} // namespace kalvo
