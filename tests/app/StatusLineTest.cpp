#include "app/StatusLine.h"

#include <QLabel>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

QString Shown(const StatusLine& line) {
    return line.findChild<QLabel*>(u"lblMeldung"_s)->text().mid(u"HH:mm  "_s.size());
}

TEST(StatusLine, KeepsWarningsBehindWhatIsTold) {
    StatusLine line;
    line.Warn(u"Datei war beschädigt"_s);
    line.Tell(u"1 Titel gefunden"_s);
    line.Tell(u"0 Titel gefunden"_s); // only the last one stays
    line.Warn(u"Archiv ist schreibgeschützt"_s);
    line.Warn(u"Datei war beschädigt"_s); // the same is told once
    line.Warn(QString());
    EXPECT_EQ(Shown(line), u"0 Titel gefunden  ·  Datei war beschädigt  ·  Archiv ist schreibgeschützt"_s);
}

} // namespace
} // namespace kalvo
