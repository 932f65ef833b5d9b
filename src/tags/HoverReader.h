#pragma once

#include "base/BackgroundWorker.h"
#include "tags/HoverInfo.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QStringList>

namespace kalvo {

/**
 * Hover information without waiting: what is known is given at once, what is not is read by a thread of its own. UI
 * thread.
 */
class HoverReader : public QObject {
    Q_OBJECT

public:
    explicit HoverReader(QObject* parent = nullptr);
    ~HoverReader() override;

    /** Null when it is not known, or was read more than half a minute ago: then Ready() follows. */
    const HoverInfo* Find(const QString& path);
    /** The file has changed. */
    void Forget(const QString& path);

Q_SIGNALS:
    void Ready(const QString& path);

private:
    struct Known {
        HoverInfo info;
        QElapsedTimer age;
    };
    void Take(const QString& path, const HoverInfo& info);

    QHash<QString, Known> known_;
    QStringList order_; ///< of known_, the oldest first
    QString reading_;   ///< only the last wish counts: the pointer has left the others
    BackgroundWorker worker_;
};

} // namespace kalvo
