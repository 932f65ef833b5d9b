#pragma once

#include <QObject>

class QWidget;

namespace kalvo {

/**
 * Tooltips of the controls of every window, all in one place: what happens, and the shortcut of the menus where there
 * is one. The controls get their hints when their window is shown; they are known by its and their own name. A control
 * whose hint changes with the desk sets it itself.
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
    void GiveAll(const QWidget& window) const;
    void Give(QWidget& control) const;

    QWidget& menus_;
};

} // namespace kalvo
