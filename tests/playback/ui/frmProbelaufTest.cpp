#include "playback/ui/frmProbelauf.h"

#include "base/Clock.h"
#include "base/Settings.h"
#include "playback/FakeDesk.h"
#include "support/WaitUntil.h"

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** A desk whose titles exist in name only: the plan is there, no joint can be rendered. */
struct frmProbelaufTest : ::testing::Test {
    frmProbelaufTest() {
        for (Playlist* list : {&desk.list1, &desk.list2})
            desk.Fill(*list, {u"a-60"_s, u"b-60"_s});
        rehearsal.Start();
        window.show();
    }
    QString Text(const char* label) const { return window.findChild<QLabel*>(QLatin1String(label))->text(); }

    test::FakeDesk desk;
    test::TestFolder data;
    Settings settings{data.Path(u"kalvo.ini"_s)};
    SystemClock clock;
    Rehearsal rehearsal{{[this] { return DeskMoment::Of(desk.mixer, desk.list1, desk.list2); },
                         [] { return RehearsalSettings(); }, [] { return nullptr; }}};
    frmProbelauf window{{rehearsal, desk.mixer, settings, clock, [](const QString&) { return 120.0; }}};
};

TEST_F(frmProbelaufTest, TellsWhenThereIsNothingToRehearse) {
    ASSERT_TRUE(test::WaitUntil([this] { return !rehearsal.IsRunning(); }));
    EXPECT_EQ(Text("lblStand"), u"Es steht kein Übergang bevor."_s) << "no file of that name holds sound";
    EXPECT_FALSE(window.findChild<QPushButton*>(u"cmdAnhoeren"_s)->isEnabled());
    EXPECT_FALSE(window.findChild<QPushButton*>(u"cmdAlle"_s)->isEnabled());
}

TEST(JointTextTest, SaysWhatIsWorthListeningTo) {
    audio::JointMeasures measures{-12, -12, -14, 0.1};
    EXPECT_EQ(JointText::Level(measures), u"gleichmäßig"_s);
    EXPECT_EQ(JointText::Gap(measures), u"keine"_s);
    measures = {-12, -20, -33, 1.26};
    EXPECT_EQ(JointText::Level(measures), u"Loch 13 LU, −8 LU"_s);
    EXPECT_EQ(JointText::Gap(measures), u"1,3 s"_s);
    EXPECT_EQ(JointText::Tempo(128, 124.4), u"128 → 124 (−4)"_s);
    EXPECT_EQ(JointText::Tempo(0, 124), u"? → 124"_s);
    EXPECT_EQ(JointText::Tempo(0, 0), QString());
    Joint joint;
    joint.fade = 5.95;
    EXPECT_EQ(JointText::Fade(joint), u"6,0 s"_s);
    joint.kind = Joint::Kind::Jump;
    EXPECT_EQ(JointText::Fade(joint), u"Schnitt"_s);
}

} // namespace
} // namespace kalvo
