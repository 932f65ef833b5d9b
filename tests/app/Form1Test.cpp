#include "app/Form1.h"

#include "app/FakeWindow.h"

#include <QTest>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using Form1Test = test::FakeWindow;

TEST_F(Form1Test, TheEndAsksAndWritesItsKeys) {
    ASSERT_TRUE(window->Load());
    test::Answers answers({u"Abbrechen"_s});
    EXPECT_TRUE(window->close());
    EXPECT_EQ(answers.Said(), QStringList{u"Achtung!|Wollen Sie Kalvo wirklich beenden?"_s});
    EXPECT_EQ(QString::fromLatin1(Read("kalvo.ini")).remove(u'\r').remove(u"\n\n"_s),
              u"[Equalizer]\nLautstärke=100\nPegelabsenkung=50\nMikrofonpegel=80\n[VU Meter]\nStyle=Analyzer\n"
              "[Mixer]\nWlLoeschen=0\nÜberblendgeschwindigkeit=30\nUmschaltzeitpunkt=9\n"_s);
}

TEST_F(Form1Test, TheEqualizerIsHeardAtOnceAndKept) {
    ASSERT_TRUE(window->Load());
    Append(1, {"a-60"});
    desk->mixer.Play(1, -1);
    Trigger("Equalizer");
    auto& dialog = In<QDialog>("frmEqualizer");
    auto& button = In<QAbstractButton>(dialog, "EQStatus");
    auto& action = In<QAction>("EQStatus");
    EXPECT_EQ(action.text(), u"Equalizer aus"_s) << "as it stands";
    for (const bool on : {true, false, true}) {
        action.trigger();
        EXPECT_EQ(action.text(), on ? u"Equalizer an"_s : u"Equalizer aus"_s);
        EXPECT_EQ(std::pair(action.isChecked(), button.isChecked()), std::pair(on, on));
        EXPECT_EQ(fake->effects, on ? 11 : 0) << "ten bands and the reverb";
        EXPECT_TRUE(Read("kalvo.ini").contains(on ? "EQStatus=1" : "EQStatus=0"));
    }
    In<QSlider>(dialog, "Band80").setValue(4);
    In<QSlider>(dialog, "Hall").setValue(5);
    EXPECT_EQ(fake->effects, 11) << "changed, not added once more";
    button.click();
    EXPECT_EQ(action.text(), u"Equalizer aus"_s);
    EXPECT_EQ(fake->effects, 0);
    dialog.close();
    for (const char* line : {"EQStatus=0", "80=14", "125=10", "Hall=15"})
        EXPECT_TRUE(Read("kalvo.ini").contains(line)) << line;
}

TEST_F(Form1Test, TheFunctionKeysWorkThePlayersWhereverTheFocusIs) {
    Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    Append(1, {"a-60"});
    Append(2, {"a-60"});
    In("cboTempo").setFocus();
    const std::pair<int, QString> steps[] = {{1, u"play stop"_s}, {3, u"pause stop"_s}, {5, u"pause play"_s},
                                             {1, u"play play"_s}, {6, u"play stop"_s},  {2, u"stop stop"_s}};
    for (const auto& [key, expected] : steps) {
        QTest::keyClick(window.get(), Qt::Key(Qt::Key_F1 + key - 1));
        EXPECT_EQ(desk->mixer.StatusText(1) + u' ' + desk->mixer.StatusText(2), expected) << "after F" << key;
    }
}

} // namespace
} // namespace kalvo
