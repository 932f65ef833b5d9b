#pragma once

#include "app/MasterMeter.h"
#include "widgets/LayoutMode.h"
#include "widgets/MeterStyle.h"

#include <QColor>
#include <QTimer>
#include <QWidget>

#include <array>
#include <functional>

namespace kalvo {

class DeckPanel;
struct DeckView;
class Mixer;
class MixerPanel;

/**
 * The upper band of the main window: both decks and the mixer between them, joined with the players. What is pressed
 * goes down to the mixer; `Timer8` shows what it does. Mode, speed and switches are told upwards, since they are
 * settings.
 */
class ConsolePanel : public QWidget {
    Q_OBJECT

public:
    ConsolePanel(Mixer& mixer, QWidget* parent = nullptr);

    MixerPanel& Mixing() { return *mixing_; }
    void SetLayoutMode(LayoutMode mode);
    /** The mixer's display and the decks' level bars; an invalid colour: the skin's. */
    void SetMeters(MeterStyle style, const QColor& colour);
    /** Gives the selected row of a player's list, -1 for none. */
    void SetSelection(std::function<int(int player)> selectedRow) { selectedRow_ = std::move(selectedRow); }
    /** Gives the header caption of a player's list, for the deck's tooltip. */
    void SetCaption(std::function<QString(int player)> caption) { caption_ = std::move(caption); }
    /** Adds cover and waveform to what a deck shows. */
    void SetPictures(std::function<void(int player, DeckView& view)> pictures) { pictures_ = std::move(pictures); }

    void Play(int player);
    void FadeTo(int player);
    /** Shows the present state at once. */
    void Refresh();

Q_SIGNALS:
    /** The selected title of this player's list is to be heard. */
    void HeadphonesRequested(int player);

private:
    void ConnectDeck(int player);
    void ConnectMixing();
    void EndDrag(int player, double fraction);
    void RefreshDeck(int player);

    Mixer& mixer_;
    std::array<DeckPanel*, 2> decks_;
    MixerPanel* mixing_;
    MasterMeter meter_;
    QTimer* timer8_;
    std::function<int(int)> selectedRow_ = [](int) { return -1; };
    std::function<QString(int)> caption_ = [](int player) { return QStringLiteral("Player %1 ").arg(player); };
    std::function<void(int, DeckView&)> pictures_ = [](int, DeckView&) {};
    LayoutMode mode_ = LayoutMode::Normal;
};

} // namespace kalvo
