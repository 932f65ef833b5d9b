#include "gallery/WindowParts.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QTabBar>

namespace kalvo::test {

using namespace Qt::StringLiterals;

QString NameOf(const QWidget& part) {
    QString text = part.property("text").toString().left(30);
    return QString::fromLatin1(part.metaObject()->className()) + u' ' + part.objectName() +
           (text.isEmpty() ? QString() : u" \""_s + text + u'"') +
           u" %1x%2 at %3,%4"_s.arg(part.width()).arg(part.height()).arg(part.x()).arg(part.y());
}

bool IsBuiltIn(const QWidget& part) {
    const QWidget* parent = part.parentWidget();
    return part.objectName().startsWith(u"qt_") || part.inherits("QRubberBand") ||
           qobject_cast<const QLineEdit*>(parent) || qobject_cast<const QAbstractSpinBox*>(parent) ||
           qobject_cast<const QComboBox*>(parent) || qobject_cast<const QTabBar*>(parent) ||
           qobject_cast<const QMenuBar*>(parent);
}

QList<QWidget*> PartsOf(const QWidget& window) {
    QList<QWidget*> parts;
    for (QWidget* part : window.findChildren<QWidget*>()) {
        if (part->isVisibleTo(&window) && part->window() == &window && !IsBuiltIn(*part) &&
            !part->visibleRegion().isEmpty())
            parts.append(part);
    }
    return parts;
}

} // namespace kalvo::test
