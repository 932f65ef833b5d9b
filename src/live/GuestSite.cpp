#include "live/GuestSite.h"

#include "live/GuestText.h"

#include <QCryptographicHash>
#include <QMessageAuthenticationCode>
#include <QRandomGenerator>
#include <QUrl>

#include <algorithm>
#include <array>
#include <memory>

namespace kalvo {

namespace {

constexpr std::size_t kTitlesShown = 50;
constexpr int kLongestSearch = 80;
constexpr int kLongestName = 40;
constexpr qsizetype kIdBytes = 16;

QByteArray RandomHex() {
    std::array<quint32, kIdBytes / sizeof(quint32)> bytes;
    QRandomGenerator::system()->fillRange(bytes.data(), bytes.size());
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), kIdBytes).toHex();
}

/** As RandomHex() makes them; anything else a browser sends counts as none. */
bool IsId(const QByteArray& text) {
    return text.size() == 2 * kIdBytes && std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
           });
}

/** Nothing is fetched from elsewhere, no script runs but ours, nobody frames the page. */
void AddSafety(GuestResponse& response) {
    response.headers.emplaceBack("Content-Security-Policy",
                                 "default-src 'none'; style-src 'self'; script-src 'self'; connect-src 'self'; "
                                 "img-src 'self'; form-action 'self'; base-uri 'none'; frame-ancestors 'none'");
    response.headers.emplaceBack("X-Content-Type-Options", "nosniff");
    response.headers.emplaceBack("X-Frame-Options", "DENY");
    response.headers.emplaceBack("Referrer-Policy", "same-origin");
    response.headers.emplaceBack("Cross-Origin-Resource-Policy", "same-origin");
    response.headers.emplaceBack("Cache-Control", "no-store");
}

void SetCookie(GuestResponse& response, const QByteArray& name, const QByteArray& value) {
    response.headers.emplaceBack("Set-Cookie", name + '=' + value + "; Path=/; Max-Age=86400; HttpOnly; SameSite=Lax");
}

GuestResponse Plain(int status, const QByteArray& text) {
    return {status, "text/plain; charset=utf-8", text, {}};
}

} // namespace

GuestSite::GuestSite(const Clock& clock, Wished wished, const GuestRates& rates)
    : wished_(std::move(wished)),
      rates_(rates),
      requests_(clock, rates.requests),
      wishes_(clock, rates.wishes),
      addressWishes_(clock, rates.addressWishes),
      secret_(RandomHex()) {}

void GuestSite::SetCatalog(std::shared_ptr<const GuestCatalog> catalog) {
    catalog_.Set(std::move(catalog));
    loaded_ = true;
}

void GuestSite::DropCatalog() {
    loaded_ = false;
    catalog_.Set(std::make_shared<const GuestCatalog>());
}

GuestResponse GuestSite::Answer(const GuestRequest& request) {
    GuestResponse response;
    if (!requests_.Allow(request.address)) {
        response = Plain(429, "Zu viele Anfragen. / Too many requests.\n");
        response.headers.emplaceBack("Retry-After", "5");
    } else if (request.path == "/wunsch") {
        response = request.post ? TakeWish(request) : Plain(405, "405\n");
    } else if (request.post) {
        response = Plain(405, "405\n");
    } else {
        response = Show(request);
    }
    AddSafety(response);
    return response;
}

QByteArray GuestSite::TokenOf(const QByteArray& guest) const {
    return QMessageAuthenticationCode::hash(guest, secret_, QCryptographicHash::Sha256).toHex().left(32);
}

GuestView GuestSite::ViewFor(const GuestRequest& request, const QByteArray& guest) const {
    GuestView view;
    const QByteArray chosen = request.fields.value("sprache").toLatin1();
    view.language = GuestWords::Choose(chosen.isEmpty() ? request.cookies.value("sprache") : chosen, request.accepted);
    view.text = GuestText::Cleaned(request.fields.value("q"), kLongestSearch);
    view.loading = !loaded_;
    view.found = catalog_.Get()->Search(view.text, kTitlesShown);
    view.wishes = book_.WishesOf(guest);
    view.name = book_.NameOf(guest);
    view.token = TokenOf(guest);
    view.message = request.fields.value("m").toStdString();
    view.board = board_.Get();
    return view;
}

GuestResponse GuestSite::Show(const GuestRequest& request) {
    if (request.path == "/gast.css")
        return {200, "text/css; charset=utf-8", pages_.Style(), {}};
    if (request.path == "/gast.js")
        return {200, "text/javascript; charset=utf-8", pages_.Script(), {}};
    if (request.path == "/gast.svg" || request.path == "/favicon.ico")
        return {200, "image/svg+xml", pages_.Sign(), {}};
    const QByteArray known = request.cookies.value("gast");
    const QByteArray guest = IsId(known) ? known : RandomHex();
    GuestResponse response;
    if (request.path == "/treffer") {
        response.body = GuestPages::Titles(ViewFor(request, guest));
    } else if (request.path == "/stand") {
        response.body = GuestPages::State(ViewFor(request, guest));
    } else if (request.path == "/") {
        const GuestView view = ViewFor(request, guest);
        response.body = pages_.Page(view);
        SetCookie(response, "gast", guest); // anew with each page: it lasts a day from the latest
        if (request.fields.contains("sprache"))
            SetCookie(response, "sprache", GuestWords::Code(view.language));
    } else {
        return Plain(404, "404\n");
    }
    return response;
}

GuestResponse GuestSite::TakeWish(const GuestRequest& request) {
    const QByteArray guest = request.cookies.value("gast");
    const bool ours = IsId(guest) && request.fields.value("marke").toLatin1() == TokenOf(guest) &&
                      (request.origin.isEmpty() || request.origin == "http://" + request.host);
    const std::string outcome = ours ? Wish(request, guest) : "neu";
    GuestResponse response;
    if (request.byScript) {
        GuestView view = ViewFor(request, guest);
        view.message = outcome;
        response.body = GuestPages::Message(view);
        return response;
    }
    const QByteArray text = GuestText::Cleaned(request.fields.value("q"), kLongestSearch).toUtf8().toPercentEncoding();
    response.status = 303;
    response.headers.emplaceBack("Location", "/?q=" + text + "&m=" + QByteArray::fromStdString(outcome));
    return response;
}

std::string GuestSite::Wish(const GuestRequest& request, const QByteArray& guest) {
    bool isNumber = false;
    const qint64 nr = request.fields.value("titel").toLongLong(&isNumber);
    if (!isNumber)
        return "fehlt";
    const std::optional<GuestTitle> title = catalog_.Get()->Find(nr);
    if (!title)
        return "unbekannt";
    const std::shared_ptr<const GuestBoard> board = board_.Get();
    for (const GuestWish& wish : book_.WishesOf(guest)) {
        const WishStage stage = board->PlaceOf(wish.ticket).stage;
        if (wish.nr == nr && stage != WishStage::Played && stage != WishStage::Gone)
            return "schon";
    }
    if (board->waiting >= rates_.waiting)
        return "voll";
    if (!addressWishes_.MayAllow(request.address) || !wishes_.Allow(guest) || !addressWishes_.Allow(request.address))
        return "zuviele";
    const QString name = GuestText::Cleaned(request.fields.value("name"), kLongestName);
    const GuestWish wish{++lastTicket_, nr, title->title, title->artist, name};
    book_.Note(guest, wish);
    wished_(wish);
    return "notiert";
}

} // namespace kalvo
