#pragma once

#include "support/TestFolder.h"

#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace kalvo::test {

/** A message bus of its own, on which nothing is but what the test brings. Fails the test if it does not start. */
class MessageBus {
public:
    static bool IsInstalled() { return !QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty(); }

    MessageBus() {
        // Without the folders of services that the system would start by itself.
        const QString configuration = QStringLiteral(R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>)");
        const QString file = folder_.Write(QStringLiteral("bus.conf"), configuration.arg(folder_.Path()).toUtf8());
        daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                                                      QStringLiteral("--config-file=") + file});
        QByteArray told;
        while (!told.endsWith('\n') && daemon_.waitForReadyRead(20'000))
            told += daemon_.readAllStandardOutput();
        EXPECT_TRUE(told.endsWith('\n')) << daemon_.readAllStandardError().constData();
        address_ = QString::fromLocal8Bit(told.trimmed());
    }
    ~MessageBus() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

    const QString& Address() const { return address_; }

private:
    TestFolder folder_;
    QProcess daemon_;
    QString address_;
};

} // namespace kalvo::test
