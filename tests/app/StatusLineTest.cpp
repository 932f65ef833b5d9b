#include "app/StatusLine.h"

#include <QLabel>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

QString Shown(const StatusLine& line) {
    return line.findChild<QLabel*>(QStringLiteral("lblMeldung"))->text().mid(QStringLiteral("HH:mm  ").size());
}

TEST(StatusLine, ShowsTheLastMessage) {
    StatusLine line;
    line.Tell(QStringLiteral("eins"));
    line.Tell(QStringLiteral("zwei"));
    EXPECT_EQ(Shown(line), QStringLiteral("zwei"));
}

TEST(StatusLine, KeepsWarningsBehindWhatIsTold) {
    StatusLine line;
    line.Warn(QStringLiteral("Datei war beschädigt"));
    line.Tell(QStringLiteral("0 Titel gefunden"));
    line.Warn(QStringLiteral("Archiv ist schreibgeschützt"));
    line.Warn(QStringLiteral("Datei war beschädigt")); // the same is told once
    line.Warn(QString());
    EXPECT_EQ(Shown(line), QStringLiteral("0 Titel gefunden  ·  Datei war beschädigt  ·  Archiv ist schreibgeschützt"));
}

} // namespace
} // namespace kalvo
