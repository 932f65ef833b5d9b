#include "app/DeckPictures.h"

#include "app/ConsolePanel.h"
#include "app/Desk.h"
#include "playback/ui/DeckView.h"

#include <QAction>
#include <QMenu>

namespace kalvo {

namespace {

const QString kPictureSection = QStringLiteral("Style");
const QString kKey = QStringLiteral("Cover");

QString CacheFolder(const Desk& desk) {
    return desk.folder.Path(QStringLiteral("\\Wellenformen"));
}

} // namespace

DeckPictures::DeckPictures(Desk& desk, ConsolePanel& console, QMenu& settingsMenu, QObject* parent)
    : QObject(parent),
      desk_(desk),
      decks_{Pictures(CacheFolder(desk)), Pictures(CacheFolder(desk))},
      showCover_(settingsMenu.addAction(QStringLiteral("&Coverbild anzeigen"))) {
    showCover_->setObjectName(QStringLiteral("CoverAnzeigen"));
    showCover_->setCheckable(true);
    showCover_->setChecked(desk.settings.GetSwitch(kPictureSection, kKey, true));
    connect(showCover_, &QAction::triggered, this,
            [this](bool on) { desk_.settings.PutSwitch(kPictureSection, kKey, on); });
    for (Pictures& deck : decks_) {
        connect(&deck.title, &TitlePictures::CoverChanged, this,
                [&deck] { deck.cover = QPixmap::fromImage(deck.title.Cover()); });
    }
    console.SetPictures([this](int player, DeckView& view) { Fill(player, view); });
}

DeckPictures::~DeckPictures() = default;

void DeckPictures::Fill(int player, DeckView& view) {
    Pictures& deck = decks_.at(static_cast<std::size_t>(player - 1));
    deck.title.Show(desk_.mixer.Title(player).path);
    view.showsCover = showCover_->isChecked();
    view.cover = deck.cover;
    view.wave = deck.title.Wave();
}

} // namespace kalvo
