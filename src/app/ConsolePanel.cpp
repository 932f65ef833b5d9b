#include "app/ConsolePanel.h"

#include "app/DeckPresenter.h"
#include "playback/Mixer.h"
#include "playback/ui/DeckPanel.h"
#include "playback/ui/MixerPanel.h"
#include "widgets/LevelBar.h"
#include "widgets/SkinStyle.h"

#include <QHBoxLayout>

namespace kalvo {

namespace {

constexpr int kDisplayInterval = 50; // ms

} // namespace

ConsolePanel::ConsolePanel(Mixer& mixer, QWidget* parent)
    : QWidget(parent),
      mixer_(mixer),
      decks_{new DeckPanel(1, this), new DeckPanel(2, this)},
      mixing_(new MixerPanel(this)),
      meter_(mixer.Layer(), mixing_->Meter()),
      timer8_(new QTimer(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(decks_[0], 1);
    row->addWidget(mixing_);
    row->addWidget(decks_[1], 1);
    ConnectDeck(1);
    ConnectDeck(2);
    ConnectMixing();
    timer8_->setObjectName(QStringLiteral("Timer8"));
    timer8_->setInterval(kDisplayInterval);
    connect(timer8_, &QTimer::timeout, this, [this] {
        mixer_.Dispatch();
        Refresh();
        meter_.Refresh();
    });
    timer8_->start();
}

void ConsolePanel::SetLayoutMode(LayoutMode mode) {
    mode_ = mode;
    layout()->setSpacing(SkinStyle::Units().Gap(2));
    decks_[0]->SetLayoutMode(mode);
    decks_[1]->SetLayoutMode(mode);
    mixing_->SetLayoutMode(mode);
    // Who shares out the window's height now must not meet the least heights of the mode before.
    decks_[0]->updateGeometry();
    decks_[1]->updateGeometry();
    mixing_->updateGeometry();
}

void ConsolePanel::SetMeters(MeterStyle style, const QColor& colour) {
    mixing_->SetMeter(style, colour);
    for (LevelBar* bar : findChildren<LevelBar*>()) {
        bar->setVisible(style != MeterStyle::None);
        bar->SetColour(colour);
    }
}

void ConsolePanel::ConnectDeck(int player) {
    DeckPanel* deck = decks_.at(static_cast<std::size_t>(player - 1));
    connect(deck, &DeckPanel::PlayClicked, this, [this, player] { Play(player); });
    connect(deck, &DeckPanel::PauseClicked, this, [this, player] { mixer_.Pause(player); });
    connect(deck, &DeckPanel::StopClicked, this, [this, player] { mixer_.Stop(player); });
    connect(deck, &DeckPanel::NextClicked, this, [this, player] { mixer_.Next(player); });
    connect(deck, &DeckPanel::MuteClicked, this, [this, player] { mixer_.ToggleMute(player); });
    connect(deck, &DeckPanel::ToStartClicked, this, [this, player] { mixer_.ToStart(player); });
    connect(deck, &DeckPanel::HeadphonesClicked, this, [this, player] { Q_EMIT HeadphonesRequested(player); });
    connect(deck, &DeckPanel::PositionDragEnded, this, [this, player](double fraction) { EndDrag(player, fraction); });
    connect(deck, &DeckPanel::PitchChanged, this, [this, player](int pitch) { mixer_.SetPitch(player, pitch); });
    connect(&mixer_, &Mixer::PlayerChanged, this, [this](int) { Refresh(); });
}

void ConsolePanel::ConnectMixing() {
    connect(mixing_, &MixerPanel::FaderChanged, &mixer_, &Mixer::SetFader);
    connect(&mixer_, &Mixer::FaderMoved, mixing_, &MixerPanel::SetFader);
    connect(mixing_, &MixerPanel::FaderHeld, &mixer_, &Mixer::HoldFader);
    connect(mixing_, &MixerPanel::FadeToPlayer1Clicked, this, [this] { FadeTo(1); });
    connect(mixing_, &MixerPanel::FadeToPlayer2Clicked, this, [this] { FadeTo(2); });
}

void ConsolePanel::Play(int player) {
    mixer_.Play(player, selectedRow_(player));
}

void ConsolePanel::FadeTo(int player) {
    mixer_.FadeTo(player, selectedRow_(player));
}

void ConsolePanel::EndDrag(int player, double fraction) {
    mixer_.SeekSeconds(player, fraction * mixer_.Title(player).length);
    RefreshDeck(player);
}

void ConsolePanel::RefreshDeck(int player) {
    audio::Levels levels;
    if (const audio::Handle stream = mixer_.Layer().Record(player).stream; stream != 0) {
        levels = mixer_.Layer().Audio().ChannelGetLevel(stream);
    }
    DeckView view = PresentDeck(mixer_, player, levels.left, levels.right);
    view.caption = caption_(player);
    pictures_(player, view);
    decks_.at(static_cast<std::size_t>(player - 1))->SetView(view);
}

void ConsolePanel::Refresh() {
    RefreshDeck(1);
    RefreshDeck(2);
    mixing_->SetClock(QTime::currentTime());
    mixing_->SetHandOver(PresentHandOver(mixer_));
}

} // namespace kalvo
