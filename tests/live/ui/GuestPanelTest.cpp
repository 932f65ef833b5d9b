#include "live/ui/GuestPanel.h"

#include "base/Settings.h"
#include "live/GuestServer.h"
#include "live/GuestSupport.h"
#include "live/ui/frmGaesteCode.h"
#include "support/PartOf.h"
#include "support/TestFolder.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <gtest/gtest.h>

namespace kalvo::test {

struct GuestPanelTest : testing::Test {
    /** A port that nobody has. */
    static int FreePort() {
        const GuestClock clock;
        GuestServer server(clock);
        return server.Start(0) ? server.Port() : 0;
    }

    TestFolder folder;
    GuestClock clock;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
    GuestServer server{clock};
};

TEST_F(GuestPanelTest, IsOffUntilSwitchedOnAndComesBackInTheNextRun) {
    GuestPanel::Restore(server, settings);
    EXPECT_FALSE(server.IsOn());
    GuestPanel panel(server, settings);
    auto* on = Part<QCheckBox>(panel, "chkGaeste");
    auto* port = Part<QSpinBox>(panel, "txtGaestePort");
    EXPECT_EQ(port->value(), GuestServer::kDefaultPort);
    EXPECT_FALSE(Part<QPushButton>(panel, "cmdGaesteCode")->isEnabled());
    port->setValue(FreePort());
    on->click();
    EXPECT_TRUE(server.IsOn());
    EXPECT_EQ(server.Port(), port->value());
    EXPECT_FALSE(port->isEnabled());
    server.Stop();
    EXPECT_FALSE(on->isChecked()) << "follows the server";
    GuestPanel::Restore(server, settings);
    EXPECT_EQ(server.Port(), port->value());
    on->click();
    EXPECT_FALSE(server.IsOn());
    GuestPanel::Restore(server, settings);
    EXPECT_FALSE(server.IsOn());
}

TEST_F(GuestPanelTest, TellsAPortThatIsTakenAndStaysOff) {
    GuestServer other(clock);
    ASSERT_TRUE(other.Start(0));
    settings.PutNumber(u"Gaeste"_s, u"Anschluss"_s, other.Port());
    GuestPanel panel(server, settings);
    auto* on = Part<QCheckBox>(panel, "chkGaeste");
    on->click();
    EXPECT_FALSE(server.IsOn());
    EXPECT_FALSE(on->isChecked());
    EXPECT_TRUE(Part<QLabel>(panel, "lblGaeste")->text().contains(u"anderen Programm"_s));
    EXPECT_FALSE(settings.GetSwitch(u"Gaeste"_s, u"An"_s, false));
}

TEST(GaesteCodeTest, PaintsEachModuleWithALightEdgeAround) {
    const QString address = u"http://192.168.178.23:8090/"_s;
    const GuestCode code = GuestCode::Of(address.toUtf8());
    ASSERT_GE(code.width, 21);
    frmGaesteCode window;
    window.SetAddress(address);
    for (const QSize size : {QSize(800, 600), QSize(360, 640), QSize(1920, 1080)}) {
        window.resize(size);
        const QImage picture = window.grab().toImage();
        const auto isDark = [&picture](int x, int y) { return qGray(picture.pixel(x, y)) < 128; };
        QRect painted; // what is dark between the lines of text
        for (int y = size.height() * 16 / 100; y < size.height() * 80 / 100; ++y) {
            for (int x = 0; x < size.width(); ++x)
                painted |= isDark(x, y) ? QRect(x, y, 1, 1) : QRect();
        }
        const int module = painted.width() / code.width;
        ASSERT_GE(module, 3) << size.width();
        EXPECT_EQ(painted.size(), QSize(module * code.width, module * code.width));
        EXPECT_GE(painted.left(), 4 * module) << "a light edge";
        for (int place = 0; place < code.width * code.width; ++place) {
            const QPoint at(place % code.width, place / code.width);
            const QPoint middle = painted.topLeft() + at * module + QPoint(module / 2, module / 2);
            ASSERT_EQ(isDark(middle.x(), middle.y()), code.IsDark(at.x(), at.y())) << size.width() << ' ' << place;
        }
    }
    EXPECT_EQ(GuestCode::Of(QByteArray(5000, 'x')).width, 0) << "too long for a code";
}

} // namespace kalvo::test
