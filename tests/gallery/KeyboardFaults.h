#pragma once

#include <QStringList>

class QWidget;

namespace kalvo::test {

/** What is wrong with a shown window for somebody without a mouse, each fault in a line that names the control. */
namespace KeyboardFaults {

/**
 * Of Tab, pressed until it comes round: steps against the order in which the window is read, controls that it never
 * reaches, and such that keep it. Fields one below the other may be gone through column by column. The focus is where
 * it was afterwards.
 */
QStringList TabOrder(QWidget& window);
/** Captions without a letter for Alt although one is free, and letters that two captions of the window share. */
QStringList Letters(const QWidget& window);
/** Of Enter: more than one default button, or one that deletes. */
QStringList DefaultButtons(const QWidget& window);
/** Of what has the focus when the window opens: nothing, or a button beside which there is something to fill in. */
QStringList FirstFocus(const QWidget& window);
/** Presses Esc, which closes the window; what would delete it then is kept from it. */
QStringList Escape(QWidget& window);

} // namespace KeyboardFaults

} // namespace kalvo::test
