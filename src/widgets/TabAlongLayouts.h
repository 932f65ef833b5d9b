#pragma once

class QWidget;

namespace kalvo {

/**
 * From then on Tab goes through the window's controls as its layouts hold them: rows from the left to the right, one
 * below the other, what reaches over several rows after them. A part that gives the focus on may only give it to the
 * first control that it holds. The focus stays where it is. UI thread.
 */
void TabAlongLayouts(QWidget& window);

} // namespace kalvo
