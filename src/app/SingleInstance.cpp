#include "app/SingleInstance.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QMetaMethod>
#include <QSysInfo>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <utility>

namespace kalvo {

namespace {

constexpr int kConnectMilliseconds = 500;
constexpr int kAnswerMilliseconds = 5000; ///< the first may be busy with its own start
constexpr auto kStream = QDataStream::Qt_6_4;
const QByteArray kTaken = QByteArrayLiteral("+");

QString ServerName(const DataFolder& folder) {
    const QString canonical = QFileInfo(folder.Root()).canonicalFilePath();
    const QByteArray path = (canonical.isEmpty() ? folder.Root() : canonical).toUtf8();
    const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
    return QStringLiteral("kalvo-") + QString::fromLatin1(hash);
}

QString LockPath(const DataFolder& folder) {
    QDir().mkpath(folder.Root());
    return folder.Path(QStringLiteral("\\kalvo.sperre"));
}

bool Pause() {
    QThread::msleep(20);
    return true;
}

/**
 * Whether a lock that cannot be taken belongs to nobody: one that was broken off before its content was written, which
 * takes an instant, or one of a program that is gone, in a folder that cannot be written.
 */
bool IsLeftOver(const QLockFile& lock) {
    qint64 process = 0;
    QString host;
    QString program;
    for (int attempt = 0; attempt < 10 && process == 0; ++attempt) {
        if (!lock.getLockInfo(&process, &host, &program)) {
            Pause();
        }
    }
    return process == 0 ||
           (host == QSysInfo::machineHostName() && ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH);
}

bool Answers(const QString& name) {
    QLocalSocket socket;
    socket.connectToServer(name);
    return socket.waitForConnected(kConnectMilliseconds);
}

} // namespace

SingleInstance::SingleInstance(const DataFolder& folder, QObject* parent) : QObject(parent), lock_(LockPath(folder)) {
    name_ = ServerName(folder);
    lock_.setStaleLockTime(0); // held for days; a crashed program's lock is told by its process
    if (lock_.tryLock(0)) {
        first_ = true;
    } else {
        first_ = (lock_.error() != QLockFile::LockFailedError || IsLeftOver(lock_)) && !Answers(name_);
    }
    if (first_ && !lock_.isLocked()) { // does nothing where the folder cannot be written
        QFile::remove(lock_.fileName());
        lock_.tryLock(0);
    }
    if (first_) {
        Listen();
    }
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::Listen() {
    QLocalServer::removeServer(name_); // left over by a crash
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::Answer);
    server_.listen(name_);
}

void SingleInstance::Answer() {
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto read = [this, socket] {
            QDataStream stream(socket);
            stream.setVersion(kStream);
            stream.startTransaction();
            QStringList files;
            stream >> files;
            if (!stream.commitTransaction()) {
                return;
            }
            socket->write(kTaken);
            socket->flush();
            if (!isSignalConnected(QMetaMethod::fromSignal(&SingleInstance::Received))) {
                files_ += files;
            }
            Q_EMIT Received(files);
        };
        connect(socket, &QLocalSocket::readyRead, this, read);
        read();
    }
}

bool SingleInstance::HandOver(const QStringList& files) const {
    QLocalSocket socket;
    const QDeadlineTimer deadline(kAnswerMilliseconds);
    do { // the first has its lock a moment before it listens
        socket.connectToServer(name_);
    } while (!socket.waitForConnected(kConnectMilliseconds) && !deadline.hasExpired() && Pause());
    if (socket.state() != QLocalSocket::ConnectedState) {
        return false;
    }
    QDataStream stream(&socket);
    stream.setVersion(kStream);
    stream << files;
    return socket.waitForBytesWritten(kAnswerMilliseconds) && socket.waitForReadyRead(kAnswerMilliseconds) &&
           socket.readAll() == kTaken;
}

QStringList SingleInstance::TakeFiles() {
    return std::exchange(files_, {});
}

} // namespace kalvo
