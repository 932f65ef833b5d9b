#include "playback/ui/frmMitschnitt.h"

#include "support/PartOf.h"
#include "widgets/IconButton.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using test::Part;

const QDateTime kNine(QDate(2026, 11, 21), QTime(21, 0));

struct MitschnittTest : ::testing::Test {
    MitschnittTest() {
        QObject::connect(&window, &frmMitschnitt::StartRequested,
                         [this](const RecordingOrder& order) { orders.push_back(order); });
        QObject::connect(&window, &frmMitschnitt::StopRequested, [this] { ++stops; });
    }
    QString Text(const char* name) { return Part<QLabel>(window, name)->text(); }

    frmMitschnitt window{{u"wav"_s, u"/m"_s}, kNine};
    std::vector<RecordingOrder> orders;
    int stops = 0;
};

TEST_F(MitschnittTest, TheButtonStartsWithWhatIsChosenAndThenStops) {
    auto* button = Part<IconButton>(window, "cmdAufnahme");
    auto* format = Part<QComboBox>(window, "cboFormat");
    EXPECT_EQ(format->currentData(), u"wav"_s);
    format->setCurrentIndex(format->findData(u"ogg"_s));
    Q_EMIT format->activated(format->currentIndex());
    Part<QLineEdit>(window, "txtName")->setText(u"Fest/1.ogg"_s);
    button->click();
    ASSERT_EQ(orders.size(), 1U);
    EXPECT_EQ(orders[0].folder + u'|' + orders[0].name + u'|' + orders[0].format, u"/m|Fest1|ogg"_s);
    RecordingState state;
    state.status = RecordingStatus::Running;
    window.ShowState(state);
    EXPECT_FALSE(format->isEnabled());
    button->click();
    EXPECT_EQ(stops, 1);
    EXPECT_EQ(orders.size(), 1U);
}

TEST_F(MitschnittTest, TheSuggestedNameFollowsTheClockUntilOneIsTyped) {
    auto* name = Part<QLineEdit>(window, "txtName");
    window.SuggestName(kNine.addSecs(60));
    EXPECT_EQ(name->text(), u"Mitschnitt 2026-11-21 21.01"_s);
    name->setText(u"Fest"_s);
    window.SuggestName(kNine.addSecs(120));
    EXPECT_EQ(name->text(), u"Fest"_s);
    name->setText(QString());
    window.SuggestName(kNine.addSecs(180));
    EXPECT_EQ(name->text(), QString()) << "the user is about to type";
    name->setText(u" / "_s);
    Part<IconButton>(window, "cmdAufnahme")->click();
    EXPECT_EQ(orders.at(0).name, u"Mitschnitt 2026-11-21 21.03"_s);
}

TEST_F(MitschnittTest, ShowsTimeSizeAndTheRoomThatIsLeft) {
    RecordingState state;
    state.status = RecordingStatus::Running;
    state.path = u"/m/a.wav"_s;
    state.seconds = 3 * 3600 + 62.9;
    state.bytes = 1536 * 1024;
    state.free = MasterRecorder::kLeastFree + qint64(2) * 3600 * 176400;
    state.titles = 7;
    window.ShowState(state);
    EXPECT_EQ(Text("lblZeit"), u"03:01:02"_s);
    EXPECT_EQ(Text("lblGroesse"), u"1,5 MB"_s);
    EXPECT_TRUE(Text("lblFrei").endsWith(u"reicht für 2 Stunden"_s)) << Text("lblFrei").toStdString();
    EXPECT_EQ(Text("lblTitel"), u"7 Titel"_s);
    state.free = 5;
    window.ShowState(state);
    EXPECT_TRUE(Text("lblFrei").endsWith(u"reicht für 0 Minuten"_s));
}

} // namespace
} // namespace kalvo
