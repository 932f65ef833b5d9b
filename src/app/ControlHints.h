#pragma once

#include <QObject>

class QWidget;

namespace kalvo {

/**
 * Tooltips of the controls of every window, all in one place: what happens, and the shortcut of the menus where there
 * is one. A control gets its hint before it is shown for the first time; it is known by its window's and its own name.
 * A control whose hint changes with the desk sets it itself.
 */
class ControlHints : public QObject {
    Q_OBJECT

public:
    /** From then on for the whole application. menus: the window whose actions give the shortcuts; it outlives this. */
    explicit ControlHints(QWidget& menus);

    /** Without a shortcut; empty where there is none. */
    static QString Of(const QString& window, const QString& control);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Give(QWidget& control) const;

    QWidget& menus_;
};

} // namespace kalvo
