#pragma once

#include <QStringList>

class QWidget;

namespace kalvo::test {

/** What a window does not tell those who do not see it, or do not know it yet; each fault names the control. */
namespace AccessFaults {

/** Controls that a screen reader has no name for. */
QStringList Nameless(const QWidget& window);
/** What shows no words of its own, a sign, a slider or a painted display, and has no tooltip either. */
QStringList Unexplained(const QWidget& window);

} // namespace AccessFaults

} // namespace kalvo::test
