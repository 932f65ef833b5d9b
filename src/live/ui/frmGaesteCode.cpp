#include "live/ui/frmGaesteCode.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace kalvo {

namespace {

/** Light modules that a code needs, both sides together. */
constexpr int kQuietZone = 8;

// Shares of the window's height.
constexpr double kLine = 0.05;
constexpr double kTop = 0.15;
constexpr double kBottom = 0.19;

void DrawLine(QPainter& painter, const QRectF& area, const QString& text, double height, bool bold) {
    QFont font = painter.font();
    font.setPixelSize(std::max(8, qRound(height)));
    font.setBold(bold);
    const double wanted = QFontMetricsF(font).horizontalAdvance(text);
    if (wanted > area.width())
        font.setPixelSize(std::max(8, static_cast<int>(font.pixelSize() * area.width() / wanted)));
    painter.setFont(font);
    painter.drawText(area, Qt::AlignCenter, text);
}

} // namespace

frmGaesteCode::frmGaesteCode(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("frmGaesteCode"));
    setWindowTitle(QStringLiteral("Musik wünschen"));
    setMinimumSize(240, 240);
}

void frmGaesteCode::SetAddress(const QString& address) {
    if (address == address_)
        return;
    address_ = address;
    code_ = GuestCode::Of(address.toUtf8());
    setAccessibleName(QStringLiteral("QR-Code für ") + address);
    update();
}

void frmGaesteCode::ShowLarge() {
    const QScreen* own = parentWidget() ? parentWidget()->screen() : screen();
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto other = std::find_if(screens.begin(), screens.end(), [own](const QScreen* one) { return one != own; });
    setGeometry((other == screens.end() ? own : *other)->geometry());
    showFullScreen();
    raise();
    activateWindow();
}

void frmGaesteCode::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setPen(Qt::black);
    const double line = height() * kLine;
    const double margin = width() * 0.04;
    const double wide = width() - 2 * margin;
    const double top = height() * kTop;
    const double bottom = height() * (1 - kBottom);
    DrawLine(painter, {margin, line, wide, top - line}, QStringLiteral("Musik wünschen · Wish for music"), line * 1.2,
             true);
    DrawLine(painter, {margin, bottom, wide, line * 1.6}, address_, line, true);
    DrawLine(painter, {margin, bottom + line * 1.6, wide, line * 1.4},
             QStringLiteral("Im selben WLAN: Code mit der Kamera scannen · Same Wi-Fi: scan with your camera"),
             line * 0.6, false);
    if (code_.width == 0)
        return;
    const int module = std::max(1, static_cast<int>(std::min(bottom - top, wide)) / (code_.width + kQuietZone));
    const int left = (width() - module * code_.width) / 2;
    const int first = static_cast<int>((top + bottom - module * code_.width) / 2);
    for (int row = 0; row < code_.width; ++row) {
        for (int column = 0; column < code_.width; ++column) {
            if (code_.IsDark(column, row))
                painter.fillRect(left + column * module, first + row * module, module, module, Qt::black);
        }
    }
}

void frmGaesteCode::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void frmGaesteCode::mousePressEvent(QMouseEvent* /*event*/) {
    close();
}

} // namespace kalvo
