#include "gallery/WindowParts.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QTabBar>

namespace kalvo::gallery {

using namespace Qt::StringLiterals;

QString NameOf(const QWidget& part) {
    const QString text = part.property("text").toString().left(30);
    return QString::fromLatin1(part.metaObject()->className()) + u' ' + part.objectName() +
           (text.isEmpty() ? QString() : u" \""_s + text + u'"') +
           u" %1x%2 at %3,%4"_s.arg(part.width()).arg(part.height()).arg(part.x()).arg(part.y());
}

bool IsBuiltIn(const QWidget& part) {
    return part.objectName().startsWith(u"qt_") || part.inherits("QRubberBand") ||
           (part.parentWidget() != nullptr &&
            IsA<QLineEdit, QAbstractSpinBox, QComboBox, QTabBar, QMenuBar>(*part.parentWidget()));
}

QList<QWidget*> PartsOf(const QWidget& window) {
    QList<QWidget*> parts = ShownIn(window);
    parts.removeIf([](const QWidget* part) { return IsBuiltIn(*part) || part->visibleRegion().isEmpty(); });
    return parts;
}

} // namespace kalvo::gallery
