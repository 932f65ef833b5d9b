#pragma once

#include "support/TestFolder.h"

#include <QProcess>
#include <QString>

namespace kalvo::test {

/** A message bus of its own, on which nothing is but what the test brings. Fails the test if it does not start. */
class MessageBus {
public:
    static bool IsInstalled();

    MessageBus();
    ~MessageBus();

    const QString& Address() const { return address_; }

private:
    TestFolder folder_;
    QProcess daemon_;
    QString address_;
};

} // namespace kalvo::test
