#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

namespace kalvo::test {

/** What the server says to one path. */
struct Answer {
    enum class Then { Close, Hang, Drip, Flood };

    QByteArray bytes; ///< head and body as they go out
    Then then = Then::Close;

    static Answer Of(const QByteArray& status, const QByteArray& content, const QByteArray& more = {}) {
        return {"HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(content.size()) +
                "\r\nConnection: close\r\n" + more + "\r\n" + content};
    }
    static Answer File(const QByteArray& content) { return Of("200 OK", content); }
    static Answer Status(const QByteArray& status) { return Of(status, "nein"); }
    static Answer Redirect(const QString& to) { return Of("302 Found", {}, "Location: " + to.toUtf8() + "\r\n"); }
};

/** A web server on this machine that answers each path with what the test puts there, and 404 to everything else. */
class MisbehavingServer : public QTcpServer {
public:
    MisbehavingServer() {
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = nextPendingConnection()) {
                connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Receive(*socket); });
                connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            }
        });
    }

    QUrl Address(const QString& path) const {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path));
    }
    QHash<QString, Answer> answers;
    QStringList asked; ///< paths, in the order of the requests

private:
    void Receive(QTcpSocket& socket) {
        const QByteArray request = socket.property("request").toByteArray() + socket.readAll();
        socket.setProperty("request", request);
        if (request.contains("\r\n\r\n"))
            Reply(socket, QString::fromUtf8(request.split(' ').value(1)));
    }
    void Reply(QTcpSocket& socket, const QString& path) {
        asked.append(path);
        const Answer answer = answers.value(path, Answer::Status("404 Not Found"));
        socket.write(answer.bytes);
        if (answer.then == Answer::Then::Close)
            return socket.disconnectFromHost();
        if (answer.then == Answer::Then::Hang)
            return;
        const QByteArray more(answer.then == Answer::Then::Drip ? 1 : 16384, 'x');
        auto* timer = new QTimer(&socket);
        connect(timer, &QTimer::timeout, &socket, [&socket, more] {
            if (socket.bytesToWrite() < 1 << 20)
                socket.write(more);
        });
        timer->start(1);
    }
};

} // namespace kalvo::test
