#include "live/GuestPage.h"

#include "playback/Mixer.h"

namespace kalvo {

GuestPage::GuestPage(const Parts& parts, QObject* parent)
    : QObject(parent),
      parts_(parts),
      queue_(parts.wishes, parts.list1, parts.list2),
      server_(parts.clock),
      build_(parts.archive) {
    connect(&server_, &GuestServer::Switched, this, &GuestPage::Switch);
    connect(&server_, &GuestServer::Wished, this, &GuestPage::TakeWish);
    connect(&build_, &GuestCatalogBuild::Built, this,
            [this](const GuestCatalogBuild::Catalog& catalog) { server_.Site().SetCatalog(catalog); });
    connect(&queue_, &GuestQueue::Changed, this, [this] { server_.Site().SetBoard(queue_.Board()); });
    connect(&parts.mixer, &Mixer::PlayerChanged, this, &GuestPage::ShowOnAir);
    connect(&parts.mixer, &Mixer::FaderMoved, this, &GuestPage::ShowOnAir);
    ShowOnAir();
}

void GuestPage::Switch(bool on) {
    build_.Follow(on);
    if (!on)
        server_.Site().DropCatalog();
}

void GuestPage::TakeWish(const GuestWish& wish) {
    const QList<TitleRecord> titles = parts_.archive.Read({wish.nr});
    quint64 id = 0;
    QString path;
    if (!titles.isEmpty() && !titles.constFirst().Pfad.isEmpty()) {
        path = titles.constFirst().Pfad;
        id = parts_.wishes.Add({path, WishDisplay(wish.artist, wish.title), wish.name, {}, 0});
    }
    queue_.Follow(wish.ticket, id, path);
}

void GuestPage::ShowOnAir() {
    const int player = parts_.mixer.OnAirPlayer();
    GuestNowPlaying playing;
    if (player != 0 && parts_.mixer.Activity(player) == audio::Activity::Playing) {
        const DeckTitle& title = parts_.mixer.Title(player);
        playing = {title.path, title.title, title.artist};
    }
    queue_.SetNowPlaying(playing);
}

} // namespace kalvo
