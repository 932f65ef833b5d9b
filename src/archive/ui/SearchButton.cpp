#include "archive/ui/SearchButton.h"

#include "widgets/ButtonPainting.h"
#include "widgets/Icons.h"
#include "widgets/MainButton.h"
#include "widgets/Mnemonics.h"
#include "widgets/SkinStyle.h"

#include <QPainter>

namespace kalvo {

SearchButton::SearchButton(QWidget* parent) : QPushButton(parent) {
    setProperty(kPlainCaption, true); // its blanks make room for the icon, Enter presses it
    ShowRunning(false);
}

void SearchButton::ShowRunning(bool running) {
    running_ = running;
    MakeMain(*this, !running);
    setText(running ? tr("     Suche abbrechen") : tr("      Suche starten"));
}

void SearchButton::paintEvent(QPaintEvent* event) {
    QPushButton::paintEvent(event);
    const bool isFilled = IsMainButton(*this) && isEnabled() && !isDown();
    const int size = SkinStyle::Units().Of(1.1);
    const int left = (width() - CaptionWidth(fontMetrics(), text())) / 2;
    QPainter(this).drawPixmap(
        left, (height() - size) / 2,
        Icons::Pixmap(running_ ? QStringLiteral("close") : QStringLiteral("search"),
                      isFilled ? SkinStyle::Colours().highlightText : palette().color(QPalette::ButtonText), size,
                      devicePixelRatioF()));
}

} // namespace kalvo
