#pragma once

#include "base/BackgroundWorker.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>

namespace kalvo {

/**
 * A title's cover as a picture file for other programs, in a temporary folder that goes with this. Each title's has a
 * name of its own, since what shows it keeps pictures by name. UI thread; tags, pictures and files are a background
 * thread's.
 */
class CoverFile : public QObject {
    Q_OBJECT

public:
    explicit CoverFile(QObject* parent = nullptr);

    /** Another title, an empty path for none; Changed() follows when the picture is there, or there is none. */
    void Show(const QString& titlePath);

Q_SIGNALS:
    /** url: "file:///…", empty for a title without a cover. */
    void Changed(const QString& url);

private:
    QTemporaryDir folder_;
    int number_ = 0; ///< of the title
    BackgroundWorker worker_;
};

} // namespace kalvo
