#include "support/MessageBus.h"

#include <QStandardPaths>
#include <gtest/gtest.h>

namespace kalvo::test {

using namespace Qt::StringLiterals;

/** Without the folders of services that the system would start by itself. */
static constexpr const char* kConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>)";

bool MessageBus::IsInstalled() {
    return !QStandardPaths::findExecutable(u"dbus-daemon"_s).isEmpty();
}

MessageBus::MessageBus() {
    const QByteArray configuration = QString::fromLatin1(kConfiguration).arg(folder_.Path()).toUtf8();
    daemon_.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--print-address=1"_s,
                                     u"--config-file="_s + folder_.Write(u"bus.conf"_s, configuration)});
    QByteArray told;
    while (!told.endsWith('\n') && daemon_.waitForReadyRead(20'000))
        told += daemon_.readAllStandardOutput();
    EXPECT_TRUE(told.endsWith('\n')) << daemon_.readAllStandardError().constData();
    address_ = QString::fromLocal8Bit(told.trimmed());
}

MessageBus::~MessageBus() {
    daemon_.kill();
    daemon_.waitForFinished();
}

} // namespace kalvo::test
