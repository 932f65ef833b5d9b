#pragma once

#include "playback/TitlePictures.h"

#include <QObject>
#include <QPixmap>

#include <array>

class QAction;
class QMenu;

namespace kalvo {

struct Desk;
struct DeckView;
class ConsolePanel;

/** Waveform and cover of both decks, and the menu item `CoverAnzeigen`, "Coverbild anzeigen". */
class DeckPictures : public QObject {
    Q_OBJECT

public:
    /** Both outlive this. The item is the last of the menu. */
    DeckPictures(Desk& desk, ConsolePanel& console, QMenu& settingsMenu, QObject* parent);
    ~DeckPictures() override;

private:
    /** One deck's. */
    struct Pictures {
        explicit Pictures(const QString& cacheFolder) : title(cacheFolder) {}

        TitlePictures title;
        QPixmap cover; ///< of the title's, null without one
    };

    void Fill(int player, DeckView& view);

    Desk& desk_;
    std::array<Pictures, 2> decks_;
    QAction* showCover_;
};

} // namespace kalvo
