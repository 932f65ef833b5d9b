#pragma once

#include "live/GuestPage.h"

namespace kalvo {

struct Desk;
class frmWunschzettel;

/** The page for the guests' telephones in the main window. It goes on again if it was on at the end of the last run. */
class GuestCommands : public QObject {
    Q_OBJECT

public:
    /** The desk outlives this. */
    explicit GuestCommands(Desk& desk, QObject* parent = nullptr);

    /** Puts the page's switch into the window of the wishes. */
    void AddPanel(frmWunschzettel& window);

Q_SIGNALS:
    /** For the status line. */
    void Told(const QString& text);

private:
    void Restore();

    Desk& desk_;
    GuestPage page_;
};

} // namespace kalvo
