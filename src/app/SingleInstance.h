#pragma once

#include "base/DataFolder.h"

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QStringList>

namespace kalvo {

/**
 * One program per data folder. The first holds the lock "\kalvo.sperre" and listens; a later one hands its files over
 * and ends. Where the folder cannot be written the listening alone tells the first. A
 * lock that a killed program left behind, even half written, keeps nobody out. UI thread.
 */
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /** Creates the data folder itself for its lock. */
    explicit SingleInstance(const DataFolder& folder, QObject* parent = nullptr);
    ~SingleInstance() override;

    bool IsFirst() const { return first_; }
    /** By a later program: waits until the first has the files, a few seconds at most. False when it did not take them.
     */
    bool HandOver(const QStringList& files) const;
    /** Files that came while nobody was connected to Received(); they are given once. */
    QStringList TakeFiles();

Q_SIGNALS:
    /** Another start happened; files: absolute paths, maybe none. */
    void Received(const QStringList& files);

private:
    void Listen();
    void Answer();

    QString name_;
    QLockFile lock_;
    QLocalServer server_;
    QStringList files_;
    bool first_ = false;
};

} // namespace kalvo
