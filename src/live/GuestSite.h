#pragma once

#include "live/GuestBook.h"
#include "live/GuestLimiter.h"
#include "live/GuestPages.h"
#include "live/GuestRequest.h"

#include <atomic>
#include <functional>

namespace kalvo {

/** What guests may do before they have to wait. */
struct GuestRates {
    GuestRate requests{200, 25};         ///< of one address: all guests may share one
    GuestRate wishes{3, 180'000};        ///< of one guest
    GuestRate addressWishes{12, 15'000}; ///< of all guests of one address
    int waiting = 200;                   ///< wishes in the list, then no more are taken
};

/**
 * The guests' web site without its sockets: answers requests. Everything can be read by anybody; the one thing that can
 * be done is a wish, which needs the cookie and the token of a page that was given out in this run.
 *
 * Threads: any, at once. The catalog and the board are published by the UI thread and immutable. `wished` is called on
 * the thread of the request.
 */
class GuestSite {
public:
    using Wished = std::function<void(const GuestWish&)>;

    /** The clock outlives the site and may be asked by any thread. */
    GuestSite(const Clock& clock, Wished wished, const GuestRates& rates = {});

    void SetCatalog(std::shared_ptr<const GuestCatalog> catalog);
    /** Frees its memory; until the next one the titles count as being loaded. */
    void DropCatalog();
    void SetBoard(std::shared_ptr<const GuestBoard> board) { board_.Set(std::move(board)); }

    GuestResponse Answer(const GuestRequest& request);

private:
    GuestResponse Show(const GuestRequest& request);
    GuestResponse TakeWish(const GuestRequest& request);
    /** Key of the word that tells what became of it. */
    std::string Wish(const GuestRequest& request, const QByteArray& guest);
    GuestView ViewFor(const GuestRequest& request, const QByteArray& guest) const;
    QByteArray TokenOf(const QByteArray& guest) const;

    GuestPages pages_;
    Wished wished_;
    GuestRates rates_;
    GuestLimiter requests_;
    GuestLimiter wishes_;
    GuestLimiter addressWishes_;
    GuestBook book_;
    QByteArray secret_; ///< of this run
    std::atomic<quint64> lastTicket_ = 0;
    std::atomic<bool> loaded_ = false;
    Published<GuestCatalog> catalog_;
    Published<GuestBoard> board_;
};

} // namespace kalvo
