#pragma once

#include <QObject>
#include <QStringList>

class QWidget;

namespace kalvo {

/** Takes files and folders that are dropped anywhere on a window where nothing in it takes them itself. */
class FileDrop : public QObject {
    Q_OBJECT

public:
    /** The window owns this. */
    explicit FileDrop(QWidget& window);

Q_SIGNALS:
    void Dropped(const QStringList& paths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace kalvo
