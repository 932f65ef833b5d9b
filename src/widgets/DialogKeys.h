#pragma once

#include <QObject>

class QApplication;
class QWidget;

namespace kalvo {

/**
 * What every dialog gets for the keyboard. Tab goes through its controls as its layouts hold them. Captions of buttons,
 * fields, groups and tabs get a letter of their own for Alt, whenever they are shown or their text changes; given
 * letters stay. Enter presses the button that has the focus and belongs to the list that has it: the dialog's default
 * would act in their place otherwise. UI thread.
 */
class DialogKeys : public QObject {
public:
    /** From then on for all dialogs; more than one call is as good as one. */
    static void Install(QApplication& application);

    /** Of one window, at once: letters for what is visible in it. */
    static void Letter(QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using QObject::QObject;
};

} // namespace kalvo
