#pragma once

#include "widgets/DeckSignal.h"
#include "widgets/ElidedLabel.h"
#include "widgets/LayoutMode.h"
#include "widgets/Spoken.h"

namespace kalvo {

/** The head of a deck: number, player's name, the painted signal and the status text. Player 2 is mirrored. */
class DeckHead : public QWidget, public Spoken {
    Q_OBJECT

public:
    /** player: 1 or 2. */
    explicit DeckHead(int player, QWidget* parent = nullptr);

    /** Paints anew, restyles nothing. */
    void SetSignal(DeckSignal deckSignal);
    void SetLayoutMode(LayoutMode mode);
    ElidedLabel& Status() { return *status_; }

    /** The signal's word: "ON AIR", "STUMM", "LÄUFT", "PAUSE", "BEREIT"; empty for None. */
    static QString WordOf(DeckSignal deckSignal);

    QAccessible::Role SpokenRole() const override { return QAccessible::StaticText; }
    QString SpokenValue() const override { return status_->text(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void TakeName();
    /** A rectangle counted from the outer side: from the left for player 1, from the right for player 2. */
    QRect FromOutside(int offset, int width) const;
    int NameWidth() const;
    QFont WordFont() const;
    int WordWidth() const;
    bool HasRoomForName() const;
    QColor Background() const;
    void PaintWord(QPainter& painter, const QRect& room) const;
    void PlaceStatus();

    int player_;
    DeckSignal signal_ = DeckSignal::None;
    LayoutMode mode_ = LayoutMode::Normal;
    ElidedLabel* status_;
};

} // namespace kalvo
