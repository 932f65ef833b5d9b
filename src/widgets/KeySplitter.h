#pragma once

#include <QSplitter>

namespace kalvo {

/**
 * A splitter whose handles are moved by the keyboard as well. A handle takes the focus by Tab and shows it; arrow keys
 * move it by a font height, page keys by five, Home and End as far as it goes. Enter gives the focus back, Esc puts the
 * handle back before. splitterMoved() tells each step, as it tells the mouse's. Screen readers know a handle by its
 * accessible name and its place in percent.
 */
class KeySplitter : public QSplitter {
    Q_OBJECT

public:
    explicit KeySplitter(Qt::Orientation orientation, QWidget* parent = nullptr);

    /** Of the handle in front of widget `index`, from 1 on. */
    void NameHandle(int index, const QString& objectName, const QString& accessibleName);

protected:
    QSplitterHandle* createHandle() override;
};

} // namespace kalvo
