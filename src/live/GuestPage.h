#pragma once

#include "live/GuestCatalogBuild.h"
#include "live/GuestQueue.h"
#include "live/GuestServer.h"

namespace kalvo {

class Mixer;

/**
 * The guests' page joined with the desk: it shows the archive, what is on air and the places of the wishes; what is
 * wished there goes into the list of wishes like every other wish. UI thread.
 */
class GuestPage : public QObject {
    Q_OBJECT

public:
    struct Parts {
        Archive& archive;
        WishList& wishes;
        const Mixer& mixer;
        const Playlist& list1;
        const Playlist& list2;
        const Clock& clock;
    };
    /** All parts outlive the page. It is off at first. */
    explicit GuestPage(const Parts& parts, QObject* parent = nullptr);

    GuestServer& Server() { return server_; }

private:
    void Switch(bool on);
    void TakeWish(const GuestWish& wish);
    void ShowOnAir();

    Parts parts_;
    GuestQueue queue_;
    GuestServer server_;
    GuestCatalogBuild build_;
};

} // namespace kalvo
