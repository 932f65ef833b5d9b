#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace kalvo::test {

/** The window's own controls that can be seen, without those that Qt builds into others. */
QList<QWidget*> PartsOf(const QWidget& window);

/** What Qt itself builds into a control. */
bool IsBuiltIn(const QWidget& part);

/** For a line that tells a fault: class, name, text and place. */
QString NameOf(const QWidget& part);

} // namespace kalvo::test
