#pragma once

#include "app/Handbook.h"

#include <QObject>

#include <functional>

class QAction;
class QUrl;
class QWidget;

namespace kalvo {

class DeskActions;

/**
 * The handbook in the help menu and on F12, which every other window answers with its own page. The pages open in the
 * browser.
 */
class HandbookCommands : public QObject {
    Q_OBJECT

public:
    /** False: there is nothing that could open it. */
    using Opener = std::function<bool(const QUrl& page)>;

    /** actions and window outlive the commands. opener: empty for the desktop's own. */
    HandbookCommands(DeskActions& actions, QWidget& window, Handbook handbook, Opener opener = {});

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /** For the status line. */
    void Told(const QString& text);

private:
    void Open(const QString& page);
    QString PageFor(const QWidget& focus) const;

    QWidget& window_;
    Handbook handbook_;
    Opener opener_;
    QAction* open_; ///< `Handbuch`
};

} // namespace kalvo
