#pragma once

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <fcntl.h>
#include <unistd.h>

#include <array>

namespace kalvo::test {

/** Stands for the desktop's services on a bus of the test's own and keeps what they were asked for. */
class FakeScreenSaver : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    QStringList reasons; ///< of everybody who holds it off
    uint cookie = 40;

public Q_SLOTS:
    Q_SCRIPTABLE uint Inhibit(const QString& who, const QString& why) {
        reasons.append(who + QStringLiteral(": ") + why);
        return ++cookie;
    }
    Q_SCRIPTABLE void UnInhibit(uint given) {
        if (given == cookie)
            reasons.removeLast();
    }
};

/** Its lock is a pipe: as long as somebody holds the end that was given away, reading the other finds no end. */
class FakeLogin : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    FakeLogin() { ::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC); }
    ~FakeLogin() override { ::close(ends[0]); }

    bool IsReleased() const {
        char byte = 0;
        return ::read(ends[0], &byte, 1) == 0;
    }

    QString asked;
    std::array<int, 2> ends{};

public Q_SLOTS:
    Q_SCRIPTABLE QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& /*why*/,
                                                 const QString& mode) {
        asked = what + u' ' + who + u' ' + mode;
        const QDBusUnixFileDescriptor lock(ends[1]);
        ::close(ends[1]);
        return lock;
    }
};

class FakeNotifications : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList shown; ///< number: summary|body
    uint number = 0;

public Q_SLOTS:
    Q_SCRIPTABLE uint Notify(const QString& /*program*/, uint replaced, const QString& /*icon*/, const QString& summary,
                             const QString& body, const QStringList& /*actions*/, const QVariantMap& /*hints*/,
                             int /*expires*/) {
        const uint id = replaced == 0 ? ++number : replaced;
        shown.append(QStringLiteral("%1: %2|%3").arg(id).arg(summary, body));
        return id;
    }
    Q_SCRIPTABLE void CloseNotification(uint id) { shown.append(QStringLiteral("%1 closed").arg(id)); }

Q_SIGNALS:
    Q_SCRIPTABLE void ActionInvoked(uint id, const QString& action);
};

/** What programs on the bus hear of a player. */
class FakeListener : public QObject {
    Q_OBJECT

public:
    QVariantMap changed;  ///< newest value of each property
    QList<double> seeked; ///< seconds

public Q_SLOTS:
    void TakeChanges(const QString& /*interface*/, const QVariantMap& changes, const QStringList& /*gone*/) {
        for (auto property = changes.begin(); property != changes.end(); ++property)
            changed.insert(property.key(), property.value());
    }
    void TakeSeeked(qlonglong position) { seeked.append(static_cast<double>(position) / 1e6); }
};

} // namespace kalvo::test
