#pragma once

#include "widgets/xMessageBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

namespace kalvo::test {

/** A whole click with the left button. */
inline void Click(QWidget& widget, const QPoint& place) {
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
}

inline void PressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                     const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &press);
}

/** Answers the questions that open next, one caption each, and keeps what they said: caption|text. */
class Answers : public QObject {
public:
    explicit Answers(QStringList captions) : captions_(std::move(captions)) {
        connect(&timer_, &QTimer::timeout, this, &Answers::Look);
        timer_.start(1);
    }
    const QStringList& Said() const { return said_; }
    bool AllGiven() const { return captions_.isEmpty(); }

private:
    void Look() {
        auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        said_.append(box->windowTitle() + u'|' +
                     box->findChild<QWidget*>(QStringLiteral("lblText"))->property("text").toString());
        const QString caption = captions_.isEmpty() ? QString() : captions_.takeFirst();
        for (auto* button : box->findChildren<QAbstractButton*>()) {
            if (button->text().remove(u'&') == caption)
                return button->click();
        }
        box->close(); // not foreseen; the test sees it in what was said
    }

    QStringList captions_;
    QStringList said_;
    QTimer timer_;
};

} // namespace kalvo::test
