#include "MisbehavingServer.h"

#include <QTcpSocket>
#include <gtest/gtest.h>

namespace kalvo::test {

using namespace Qt::StringLiterals;

Answer Answer::File(const QByteArray& content) {
    return {"HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(content.size()) +
            "\r\nConnection: close\r\n\r\n" + content};
}

Answer Answer::Status(const char* status) {
    return {QByteArray("HTTP/1.1 ") + status + "\r\nContent-Length: 4\r\nConnection: close\r\n\r\nnein"};
}

Answer Answer::Redirect(const QString& to) {
    return {"HTTP/1.1 302 Found\r\nLocation: " + to.toUtf8() + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"};
}

MisbehavingServer::MisbehavingServer() {
    EXPECT_TRUE(listen(QHostAddress::LocalHost));
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Receive(*socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

QUrl MisbehavingServer::Address(const QString& path) const {
    return QUrl(u"http://127.0.0.1:%1%2"_s.arg(serverPort()).arg(path));
}

void MisbehavingServer::Receive(QTcpSocket& socket) {
    QByteArray request = socket.property("request").toByteArray() + socket.readAll();
    socket.setProperty("request", request);
    if (request.contains("\r\n\r\n"))
        Reply(socket, QString::fromUtf8(request.split(' ').value(1)));
}

void MisbehavingServer::Reply(QTcpSocket& socket, const QString& path) {
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

} // namespace kalvo::test
