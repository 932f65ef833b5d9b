#include "support/MessageBus.h"

#include <QStandardPaths>
#include <gtest/gtest.h>

namespace kalvo::test {

namespace {

constexpr int kBusPatience = 20'000; ///< ms

/** Without the folders of services that the system would start by itself. */
constexpr const char* kConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>)";

} // namespace

bool MessageBus::IsInstalled() {
    return !QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty();
}

MessageBus::MessageBus() {
    const QString configuration = QString::fromLatin1(kConfiguration).arg(folder_.Path());
    daemon_.start(
        QStringLiteral("dbus-daemon"),
        {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
         QStringLiteral("--config-file=") + folder_.Write(QStringLiteral("bus.conf"), configuration.toUtf8())});
    QByteArray told;
    while (!told.endsWith('\n') && daemon_.waitForReadyRead(kBusPatience))
        told += daemon_.readAllStandardOutput();
    EXPECT_TRUE(told.endsWith('\n')) << daemon_.readAllStandardError().constData();
    address_ = QString::fromLocal8Bit(told.trimmed());
}

MessageBus::~MessageBus() {
    daemon_.kill();
    daemon_.waitForFinished();
}

} // namespace kalvo::test
