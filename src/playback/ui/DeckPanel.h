#pragma once

#include "playback/ui/DeckView.h"
#include "widgets/LayoutMode.h"

#include <QFrame>

#include <memory>

class QLayout;

namespace kalvo {

/**
 * One player of the console: head, title, times, position, transport, pitch and level. A view without logic:
 * it shows a DeckView and tells what was pressed. Player 2 mirrors head and titles, never the transport's order.
 * Controls by objectName (n = player): `cmdPlay`n `cmdPause`n `cmdStop`n `LArtist`n `LSong`n `lblbitrate`n `LTiempo`n
 * `SPos`n `lblStatus`n `cmdAnfang`n `cmdKopfhoerer`n; next `Command1`/`Command3`, mute `Command2`/`Command4`,
 * pitch `HScroll2`/`HScroll3`.
 */
class DeckPanel : public QFrame {
    Q_OBJECT

public:
    /** number: 1 or 2. */
    explicit DeckPanel(int number, QWidget* parent = nullptr);
    ~DeckPanel() override;

    /** A position is not shown while the user drags. Emits nothing. */
    void SetView(const DeckView& view);
    void SetLayoutMode(LayoutMode mode);

    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void PlayClicked();
    void PauseClicked();
    void StopClicked();
    void NextClicked();
    void MuteClicked();
    void ToStartClicked();
    void HeadphonesClicked();
    /** Fractions of the title, 0 to 1. A key or wheel step tells all three at once. */
    void PositionDragBegan(double fraction);
    void PositionDragged(double fraction);
    void PositionDragEnded(double fraction);
    /** -120 to 120, by the user. */
    void PitchChanged(int permille);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Parts;

    void NameControls();
    void Connect();
    /** In a narrow deck that has not even room for its buttons with their gaps, gaps and times shrink. */
    bool IsTight(int width) const;
    int TightWidth() const;
    /** Room for the button that opens the headphones, and for a cover beside names that are not cut. */
    bool IsRoomy(int width) const;
    bool ShowsCover() const { return roomy_ && view_.showsCover; }
    void Arrange();
    QLayout* Titles() const;
    QLayout* NarrowTitles() const;
    QLayout* Transport() const;
    QLayout* Bottom() const;
    void ApplyFonts();
    void ShowSignal();
    void ShowTitle();
    void ShowControls();

    int number_;
    LayoutMode mode_ = LayoutMode::Normal;
    bool tight_ = false;
    bool roomy_ = false;
    DeckView view_;
    std::unique_ptr<Parts> parts_;
};

} // namespace kalvo
