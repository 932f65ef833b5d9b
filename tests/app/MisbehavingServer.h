#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QTcpServer>
#include <QTimer>
#include <QUrl>

class QTcpSocket;

namespace kalvo::test {

/** What the server says to one path. */
struct Answer {
    enum class Then { Close, Hang, Drip, Flood };

    QByteArray bytes; ///< head and body as they go out
    Then then = Then::Close;

    static Answer File(const QByteArray& content);
    static Answer Status(const char* status);
    static Answer Redirect(const QString& to);
};

/** A web server on this machine that answers each path with what the test puts there, and 404 to everything else. */
class MisbehavingServer : public QTcpServer {
public:
    MisbehavingServer();

    QUrl Address(const QString& path) const;
    QHash<QString, Answer> answers;
    QStringList asked; ///< paths, in the order of the requests

private:
    void Receive(QTcpSocket& socket);
    void Reply(QTcpSocket& socket, const QString& path);
};

} // namespace kalvo::test
