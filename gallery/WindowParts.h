#pragma once

#include <QList>
#include <QWidget>

namespace kalvo::gallery {

/** The window's own parts that are shown, also such as are scrolled away. */
template<typename Part = QWidget>
QList<Part*> ShownIn(const QWidget& window) {
    QList<Part*> parts = window.findChildren<Part*>();
    parts.removeIf([&](const Part* part) { return part->window() != &window || !part->isVisibleTo(&window); });
    return parts;
}

/** What Qt itself builds into a control. */
bool IsBuiltIn(const QWidget& part);

/** The window's own controls that can be seen, without those that Qt builds into others. */
QList<QWidget*> PartsOf(const QWidget& window);

/** Whether a part is of one of these classes. */
template<typename... Classes>
bool IsA(const QWidget& part) {
    return (qobject_cast<const Classes*>(&part) || ...);
}

/** For a line that tells a fault: class, name, text and place. */
QString NameOf(const QWidget& part);

} // namespace kalvo::gallery
