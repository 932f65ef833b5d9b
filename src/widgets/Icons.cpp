#include "widgets/Icons.h"

#include "widgets/SkinStyle.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <optional>

// Outside a namespace, as the macro asks; without it the linker drops the icons of a static library.
static void RegisterKalvoIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace kalvo {

namespace {

QByteArray Drawing(const QString& name, const QColor& colour) {
    static const bool registered = (RegisterKalvoIcons(), true);
    Q_UNUSED(registered);
    QFile file(QStringLiteral(":/kalvo/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll().replace("currentColor", colour.name(QColor::HexRgb).toLatin1());
}

QPixmap Rendered(const QByteArray& drawing, int size, qreal devicePixelRatio) {
    QPixmap pixmap(QSize(size, size) * devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(drawing).render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

/** Asks for its colour when it is painted, so that an icon set once follows every change of skin. */
class SkinIconEngine final : public QIconEngine {
public:
    SkinIconEngine(QString name, std::optional<QColor> fixed) : name_(std::move(name)), fixed_(fixed) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const int size = qMin(rect.width(), rect.height());
        const QPoint corner = rect.center() - QPoint((size - 1) / 2, (size - 1) / 2);
        painter->drawPixmap(corner,
                            Icons::Pixmap(name_, Colour(mode, state), size, painter->device()->devicePixelRatioF()));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1.0);
    }

    /** size arrives in device pixels. */
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
        return Icons::Pixmap(name_, Colour(mode, state), qRound(qMin(size.width(), size.height()) / scale), scale);
    }

    QIconEngine* clone() const override { return new SkinIconEngine(*this); }
    bool isNull() override { return false; }

private:
    QColor Colour(QIcon::Mode mode, QIcon::State state) const {
        const Skin& skin = SkinStyle::Colours();
        if (mode == QIcon::Disabled)
            return skin.dim;
        if (fixed_)
            return *fixed_;
        return mode == QIcon::Selected || state == QIcon::On ? skin.highlightText : skin.text;
    }

    QString name_;
    std::optional<QColor> fixed_;
};

} // namespace

QPixmap Icons::Pixmap(const QString& name, const QColor& colour, int size, qreal devicePixelRatio) {
    const QString key = QStringLiteral("kalvo/%1/%2/%3/%4").arg(name, colour.name()).arg(size).arg(devicePixelRatio);
    QPixmap pixmap;
    if (size <= 0 || QPixmapCache::find(key, &pixmap))
        return pixmap;
    const QByteArray drawing = Drawing(name, colour);
    if (drawing.isEmpty())
        return {};
    pixmap = Rendered(drawing, size, devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QIcon Icons::Icon(const QString& name) {
    return QIcon(new SkinIconEngine(name, std::nullopt));
}

QIcon Icons::Icon(const QString& name, const QColor& colour) {
    return QIcon(new SkinIconEngine(name, colour));
}

} // namespace kalvo
