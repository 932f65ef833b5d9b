#include "app/FakeWindow.h"
#include "app/frmHallo.h"
#include "archive/ui/WindowActs.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QLabel>
#include <sys/stat.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using Form1LoadTest = test::FakeWindow;

TEST_F(Form1LoadTest, TheSplashTellsEachStepInItsOrder) {
    const frmHallo splash(u"1.2.3"_s);
    EXPECT_EQ(In<QLabel>(splash, "lblVersion").text(), u"Version 1.2.3"_s);
    QStringList told;
    QObject::connect(window.get(), &Form1::LoadProgress, [&told](const QString& text) { told.append(text); });
    QObject::connect(window.get(), &Form1::LoadProgress, &splash, &frmHallo::SetProgress);
    ASSERT_TRUE(window->Load());
    ASSERT_TRUE(test::WaitUntil([&told] { return told.last() == u"0 Titel gefunden"_s; }));
    EXPECT_EQ(told,
              (QStringList{u"Grundparameter setzen..."_s, u"Start"_s, u"Skin setzen..."_s, u"Soundkarten suchen..."_s,
                           u"Überblendmodus: Fade-CrossOver"_s, u"Kontinuierliche Wiedergabe"_s,
                           u"Mixerautomatik Aktiv"_s, u"0 Titel im Musikarchiv..."_s, u"0 Titel gefunden"_s}))
        << told.join(u'|').toStdString();
}

TEST_F(Form1LoadTest, TheEndWritesFilesAndKeysInTheirOrder) {
    const auto written = [this](const char* name) {
        struct stat is {};
        EXPECT_EQ(::stat(QFile::encodeName(folder.Path(u"Kalvo/"_s + QLatin1String(name))).constData(), &is), 0)
            << name;
        return std::pair(is.st_mtim.tv_sec, is.st_mtim.tv_nsec);
    };
    ASSERT_TRUE(window->Load());
    desk->list1.Append({{u"a"_s, {}, {}, {}, {}, folder.Write(u"a-60"_s, "x")}});
    test::Answers answers({u"Abbrechen"_s});
    EXPECT_TRUE(window->close());
    EXPECT_EQ(answers.Said(), QStringList{u"Achtung!|Wollen Sie Kalvo wirklich beenden?"_s});
    EXPECT_LE(written("kalvo.dll"), written("kalvo.ini"));
    EXPECT_LE(written("kalvo.ini"), written("Wiedergabeliste/default.mav"));
    EXPECT_EQ(QString::fromLatin1(Read("kalvo.ini")).remove(u'\r').remove(u"\n\n"_s),
              u"[Equalizer]\nLautstärke=100\nPegelabsenkung=50\nMikrofonpegel=80\n[VU Meter]\nStyle=Analyzer\n"
              "[Mixer]\nWlLoeschen=0\nÜberblendgeschwindigkeit=30\nUmschaltzeitpunkt=9\n"_s);
}

TEST_F(Form1LoadTest, TheEqualizerOfTheMenuIsHeardAtOnceAndKept) {
    ASSERT_TRUE(window->Load());
    desk->list1.Append({{u"a"_s, {}, {}, {}, {}, folder.Write(u"a-60"_s, "x")}});
    desk->mixer.Play(1, -1);
    auto& action = In<QAction>(*window, "EQStatus");
    for (const bool on : {true, false}) {
        EXPECT_EQ(action.text(), on ? u"Equalizer aus"_s : u"Equalizer an"_s) << "before";
        action.trigger();
        EXPECT_EQ(action.text(), on ? u"Equalizer an"_s : u"Equalizer aus"_s);
        EXPECT_EQ(action.isChecked(), on);
        EXPECT_EQ(fake->effects, on ? 11 : 0) << "ten bands and the reverb";
        EXPECT_TRUE(Read("kalvo.ini").contains(on ? "EQStatus=1" : "EQStatus=0"));
    }
}

} // namespace
} // namespace kalvo
