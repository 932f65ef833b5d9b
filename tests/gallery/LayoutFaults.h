#pragma once

#include <QStringList>

class QWidget;

namespace kalvo::test {

/** What is wrong with a window as it stands, each fault in a line that names the control; empty when nothing is. */
namespace LayoutFaults {

/** Texts that need more room than they have and are neither cut with an ellipsis nor told by a tooltip. */
QStringList ClippedTexts(const QWidget& window);
/** Controls of one parent that lie on each other. */
QStringList Overlaps(const QWidget& window);
/** Controls that reach out of what holds them; what scrolls may. */
QStringList Outside(const QWidget& window);
/** Fields of a form, one below the other, whose left edges miss each other by a hair. */
QStringList UnevenEdges(const QWidget& window);
/** A dialog's lowest buttons that keep other distances than all dialogs' do: 4 g to its edges, 2 g to each other. */
QStringList OddFeet(const QWidget& window);
/** Texts that stand out from their background by less than 4.5 to 1, measured in a picture of the window. */
QStringList FaintTexts(QWidget& window);

} // namespace LayoutFaults

/** The ratio of two colours as WCAG defines it, 1 to 21. */
double ContrastOf(unsigned first, unsigned second);

} // namespace kalvo::test
