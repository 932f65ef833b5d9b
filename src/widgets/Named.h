#pragma once

#include <QString>

namespace kalvo {

/** Gives a control its name and what a screen reader says of it. */
template<typename Widget>
Widget* Named(Widget* widget, const QString& name, const QString& accessibleName) {
    widget->setObjectName(name);
    widget->setAccessibleName(accessibleName);
    return widget;
}

} // namespace kalvo
