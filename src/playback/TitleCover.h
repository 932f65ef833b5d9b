#pragma once

#include "base/BackgroundWorker.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QTimer>

namespace kalvo {

/**
 * The cover of a title that is looked at, read by a background thread once the choice rests: who runs through a list
 * causes no work. UI thread.
 */
class TitleCover : public QObject {
    Q_OBJECT

public:
    explicit TitleCover(QObject* parent = nullptr);

    /** Another title, an empty path for none; the same one is read anew, since its file may have changed. */
    void Show(const QString& path);

Q_SIGNALS:
    /** Null when there is none, and while that of another title is not known yet. */
    void Changed(const QImage& cover);

private:
    void Read();

    QString path_;
    QTimer rest_;
    BackgroundWorker worker_;
};

} // namespace kalvo
