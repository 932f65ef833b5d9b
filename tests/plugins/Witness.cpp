// A plugin that Qt loads into the program under test by the variable QT_QPA_GENERIC_PLUGINS: tells which windows are
// open and what stands in them, and presses what it is told to. The program itself is the one that ships.
//
// Over a local socket named by KALVO_WITNESS, one JSON object a line. Told, whenever it changes: {"windows": [{"name",
// "title", "labels": {name: text}, "buttons": {text: enabled}}]}. Taken: {"window", "press": text} or {"window",
// "close": true}; a button is named by its text or its objectName.

#include <QAbstractButton>
#include <QApplication>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLocalSocket>
#include <QTimer>
#include <QWidget>

namespace kalvo::test {

namespace {

using namespace Qt::StringLiterals;

QString Caption(const QAbstractButton& button) {
    return button.text().remove(u'&');
}

QJsonObject Told(const QWidget& window) {
    QJsonObject labels;
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (!label->objectName().isEmpty())
            labels.insert(label->objectName(), label->text());
    }
    QJsonObject buttons;
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && !button->text().isEmpty())
            buttons.insert(Caption(*button), button->isEnabled());
    }
    return {{u"name"_s, window.objectName()},
            {u"title"_s, window.windowTitle()},
            {u"labels"_s, labels},
            {u"buttons"_s, buttons}};
}

QWidget* OpenWindow(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->objectName() == name)
            return window;
    }
    return nullptr;
}

void Press(const QWidget& window, const QString& caption) {
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        const bool isMeant = Caption(*button) == caption || button->objectName() == caption;
        if (isMeant && button->isVisible() && button->isEnabled()) {
            // Later, since the press may open a modal window that does not return.
            QTimer::singleShot(0, button, [button] { button->click(); });
            return;
        }
    }
}

} // namespace

class Witness : public QObject {
    Q_OBJECT

public:
    Witness() {
        socket_.connectToServer(qEnvironmentVariable("KALVO_WITNESS"));
        connect(&socket_, &QLocalSocket::readyRead, this, [this] {
            while (socket_.canReadLine())
                Obey(QJsonDocument::fromJson(socket_.readLine()).object());
        });
        connect(&timer_, &QTimer::timeout, this, &Witness::Tell);
        timer_.start(20); // ms
    }

private:
    void Tell() {
        QJsonArray windows;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && !window->objectName().isEmpty())
                windows.append(Told(*window));
        }
        const QByteArray line =
            QJsonDocument(QJsonObject{{u"windows"_s, windows}}).toJson(QJsonDocument::Compact) + '\n';
        if (line != told_ && socket_.state() == QLocalSocket::ConnectedState) {
            told_ = line;
            socket_.write(line);
            socket_.flush();
        }
    }

    static void Obey(const QJsonObject& order) {
        QWidget* window = OpenWindow(order.value(u"window"_s).toString());
        if (window == nullptr)
            return;
        if (order.contains(u"press"_s))
            Press(*window, order.value(u"press"_s).toString());
        else
            QTimer::singleShot(0, window, &QWidget::close);
    }

    QLocalSocket socket_;
    QTimer timer_;
    QByteArray told_;
};

class WitnessPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "Witness.json")

public:
    QObject* create(const QString& key, const QString& /*arguments*/) override {
        return key == u"kalvowitness"_s ? new Witness : nullptr;
    }
};

} // namespace kalvo::test

#include "Witness.moc"
