#include "support/XServer.h"

#include <QStandardPaths>
#include <gtest/gtest.h>

namespace kalvo::test {

bool XServer::IsInstalled() {
    return !QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty();
}

XServer::XServer(int width, int height) {
    // The server chooses a free display by itself and tells its number on standard output. Without -noreset it refuses
    // who comes just when its only client has gone.
    server_.setStandardErrorFile(QProcess::nullDevice());
    server_.start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-ac"),
                   QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-screen"), QStringLiteral("0"),
                   QStringLiteral("%1x%2x24").arg(width).arg(height), QStringLiteral("-noreset")});
    QByteArray number;
    while (!number.endsWith('\n') && server_.waitForReadyRead(20'000))
        number += server_.readAllStandardOutput();
    EXPECT_TRUE(number.endsWith('\n'));
    if (number.endsWith('\n'))
        display_ = ':' + number.trimmed();
}

XServer::~XServer() {
    server_.terminate();
    if (!server_.waitForFinished(5'000))
        server_.kill();
    server_.waitForFinished();
}

} // namespace kalvo::test
