#pragma once

#include "widgets/LayoutMode.h"

#include <QFont>
#include <QString>

namespace kalvo {

/** All sizes of the windows in logical pixels, derived from the chosen font size. */
class FontUnits {
public:
    /**
     * schriftgrad: "klein", "mittel", "groß" (unknown: "klein"); buttongroesse: "klein", "gross" (unknown: "klein").
     * logicalDpi: of the screen, 96 when it tells none.
     */
    explicit FontUnits(const QString& schriftgrad = {}, const QString& buttongroesse = {}, double logicalDpi = 96);

    /** Height of the chosen font. */
    int F() const { return f_; }
    /** Step of the grid: every distance is a multiple. */
    int G() const { return g_; }
    /** `times` font heights, rounded. */
    int Of(double times) const { return qRound(times * f_); }
    /** `times` grid steps, rounded. */
    int Gap(double times) const { return qRound(times * g_); }

    int TableRow() const { return Of(1.75); }
    int Button() const { return Of(bigButtons_ ? 2.4 : 2.1); }
    /** Transport and fade buttons: what the hand finds in the dark, never below 44 pixels. */
    int BigButton() const { return qMax(44, Of(bigButtons_ ? 4.0 : 3.4)); }
    /** The same in a low console. */
    int LowBigButton() const { return qMax(44, Of(2.5)); }
    int Icon() const { return Of(1.25); }
    int BigIcon() const { return Of(1.85); }
    int PanelHead(LayoutMode mode = LayoutMode::Normal) const {
        return Of(mode == LayoutMode::Wide ? 3.2 : mode == LayoutMode::Low ? 2.2 : 2.75);
    }
    int ListHead() const { return Of(2.15); }
    int ColumnHead() const { return Of(1.9); }
    int Corner() const { return Of(0.23); }
    int ConsoleHeight(LayoutMode mode) const;

    /** The program's font, `times` the chosen size. */
    QFont Font(double times = 1.0, bool bold = false) const;

private:
    int f_;
    int g_;
    bool bigButtons_;
};

} // namespace kalvo
