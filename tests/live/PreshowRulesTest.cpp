#include "live/PreshowRules.h"

#include <gtest/gtest.h>

#include <functional>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** A title of 200 s that is as it should be. */
InspectedTitle Sound() {
    InspectedTitle title{{1000, 1}, {}};
    title.found.decoded = title.found.told = 200;
    title.found.measures = {-12, 0.9, 0};
    return title;
}

/** A desk on which everything is ready: four titles in two lists. */
struct ReadyDesk {
    ReadyDesk() {
        for (int i = 0; i < 4; ++i) {
            PlaylistEntry entry;
            entry.title = u"Titel %1"_s.arg(i);
            entry.artist = u"Wer"_s;
            entry.duration = u"03:20"_s;
            entry.path = u"/m/%1.mp3"_s.arg(i);
            entry.id = quint64(i) + 1;
            facts.lists[std::size_t(i % 2)].append({i / 2, entry});
            answers.titles.insert(entry.path, Sound());
        }
        facts.devices = QStringList{u"Kein Ton"_s, u"Standardausgabe"_s, u"A"_s, u"B"_s};
        facts.main = {2, u"A"_s};
        facts.headphones = {3, u"B"_s};
        facts.outputOpen = true;
        facts.output.device = 2;
        facts.output.deviceName = "A";
        facts.emergencyTitle = u"/m/notfall.mp3"_s;
        facts.files = {{u"Sampler, Taste 4"_s, u"/s/4.wav"_s, {PreshowTarget::Place::Sampler, 0, 0, {}}}};
        facts.recordingRate = 1000;
        answers.disksAsked = true;
        answers.dataFree = answers.recordingFree = qint64(1) << 40;
    }
    PlaylistEntry& Entry(int list, int row) { return facts.lists[std::size_t(list - 1)][row].entry; }
    audio::TitleInspection& Found(const char* path) { return answers.titles[QLatin1String(path)].found; }
    /** What is wrong: "F" or "H", where and text. */
    QStringList Wrong() const {
        QStringList lines;
        for (const PreshowFinding& finding : Preshow::Judge(facts, answers)) {
            if (finding.severity != PreshowSeverity::Good)
                lines.append((finding.severity == PreshowSeverity::Error ? u"F "_s : u"H "_s) + finding.where +
                             u": "_s + finding.text);
        }
        return lines;
    }

    PreshowFacts facts;
    PreshowAnswers answers;
};

struct PreshowRulesTest : ::testing::Test, ReadyDesk {};

TEST_F(PreshowRulesTest, ADeskThatIsReadyHasOnlyGoodNews) {
    EXPECT_EQ(Wrong(), QStringList());
    const QList<PreshowFinding> findings = Preshow::Judge(facts, answers);
    EXPECT_EQ(Preshow::Verdict(findings), u"Alles bereit"_s);
    EXPECT_TRUE(Preshow::Report(findings, u"Kopf"_s).contains(u"- Wiedergabelisten: 4 Titel ganz dekodiert"_s));
}

TEST_F(PreshowRulesTest, EachFaultOfATitleIsNamed) {
    struct Case {
        std::function<void(ReadyDesk&)> spoil;
        QString line;
    };
    const QString where = u" Liste 1, 2. Wer - Titel 2: "_s;
    const std::vector<Case> cases = {
        {[](auto& t) { t.answers.titles[u"/m/2.mp3"_s] = {}; }, u"F%1Die Datei fehlt: /m/2.mp3"_s},
        {[](auto& t) { t.Found("/m/2.mp3") = {}; }, u"F%1Die Datei kann nicht abgespielt werden: /m/2.mp3"_s},
        {[](auto& t) { t.Found("/m/2.mp3").silenceAtStart = 200; }, u"F%1Der Titel ist ganz still."_s},
        {[](auto& t) { t.Found("/m/2.mp3").decoded = 100; },
         u"F%1Der Titel bricht nach 01:40 ab, er sollte 03:20 lang sein."_s},
        {[](auto& t) { t.Found("/m/2.mp3").broken = true; },
         u"F%1Der Titel bricht nach 03:20 ab, er sollte 03:20 lang sein."_s},
        {[](auto& t) { t.Found("/m/2.mp3").silenceAtEnd = 7; }, u"H%1Der Titel endet mit 7 s Stille."_s},
        {[](auto& t) {
             t.Found("/m/2.mp3").longestGap = 4;
             t.Found("/m/2.mp3").gapAt = 61;
         },
         u"H%1Nach 01:01 ist der Titel 4 s lang still."_s},
        {[](auto& t) {
             t.Found("/m/2.mp3").decoded = t.Found("/m/2.mp3").told = 8;
             t.Entry(1, 1).duration = u"00:08"_s;
         },
         u"H%1Der Titel ist mit 8 s kürzer als die Umschaltzeit von 9 s."_s},
        {[](auto& t) { t.Found("/m/2.mp3").measures.loudness = -22; },
         u"H%1Der Titel ist 10 LU leiser als die anderen."_s},
        {[](auto& t) { t.Found("/m/2.mp3").clippedRuns = 20; }, u"H%1Der Titel ist an 20 Stellen übersteuert."_s},
        {[](auto& t) { t.Entry(1, 1).path = u"/m/1.mp3"_s; },
         u"H Liste 2, 1. Wer - Titel 1: Die Datei kommt zweimal: auch in Liste 1, 2."_s},
        {[](auto& t) { t.Entry(2, 1).title = u"TITEL 2 (Radio Edit)"_s; },
         u"H Liste 2, 2. Wer - TITEL 2 (Radio Edit): Derselbe Titel in einer anderen Datei: Liste 1, 2."_s},
    };
    for (const Case& one : cases) {
        ReadyDesk spoilt;
        one.spoil(spoilt);
        EXPECT_EQ(spoilt.Wrong(), QStringList{one.line.contains(u"%1"_s) ? one.line.arg(where) : one.line});
    }
}

TEST_F(PreshowRulesTest, EvenedOutTitlesAreComparedAsTheyWillSound) {
    Found("/m/2.mp3").measures = {-21, 0.2, 0};
    EXPECT_EQ(Wrong().size(), 1);
    facts.levelling = true;
    EXPECT_EQ(Wrong(), QStringList());
}

TEST_F(PreshowRulesTest, EachFaultOfTheDeskIsNamed) {
    struct Case {
        std::function<void(ReadyDesk&)> spoil;
        QString begins;
    };
    const std::vector<Case> cases = {
        {[](auto& t) { t.facts.outputOpen = false; }, u"F Soundkarte: Es ist keine Ausgabe"_s},
        {[](auto& t) {
             t.facts.main = {2, u"C"_s};
         },
         u"F Soundkarte: Die gewählte Soundkarte „C“ ist nicht da"_s},
        {[](auto& t) { t.facts.output.overruns = 3; }, u"H Soundkarte: Bisher 3 Aussetzer"_s},
        {[](auto& t) {
             t.facts.headphones = {0, {}};
         },
         u"H Kopfhörer: Für den Kopfhörer"_s},
        {[](auto& t) {
             t.facts.headphones = {2, u"A"_s};
         },
         u"F Kopfhörer: Kopfhörer und Musik haben dieselbe"_s},
        {[](auto& t) {
             t.facts.headphones = {3, u"D"_s};
         },
         u"F Kopfhörer: Die Soundkarte für den Kopfhörer, „D“"_s},
        {[](auto& t) { t.facts.mixing.continuous = false; }, u"H Stillstandswache: Die kontinuierliche"_s},
        {[](auto& t) { t.facts.emergencyTitle.clear(); }, u"H Notfalltitel: Es ist keiner gewählt."_s},
        {[](auto& t) { t.answers.missingFiles = {u"/m/notfall.mp3"_s}; }, u"F Notfalltitel: Die Datei fehlt"_s},
        {[](auto& t) { t.answers.missingFiles = {u"/s/4.wav"_s}; }, u"F Sampler, Taste 4: Die Datei fehlt: /s/4.wav"_s},
        {[](auto& t) { t.answers.dataFree = 1 << 20; }, u"H Datenordner: Nur noch 0,0 GB frei"_s},
        {[](auto& t) { t.facts.recordingRate = 100'000'000; }, u"H Platz für Mitschnitte: Nur noch"_s},
        {[](auto& t) { t.facts.refillTitles = 0; }, u"F Auto DJ: Kein Titel"_s},
        {[](auto& t) { t.facts.lists = {}; }, u"H Wiedergabelisten: In beiden Listen"_s},
    };
    for (const Case& one : cases) {
        ReadyDesk spoilt;
        one.spoil(spoilt);
        const QStringList wrong = spoilt.Wrong();
        ASSERT_EQ(wrong.size(), 1) << one.begins.toStdString() << wrong.join(u'\n').toStdString();
        EXPECT_TRUE(wrong.constFirst().startsWith(one.begins)) << wrong.constFirst().toStdString();
    }
    facts.refillTitles = 0;
    facts.emergencyTitle.clear();
    answers.dataFree = 0;
    EXPECT_EQ(Preshow::Verdict(Preshow::Judge(facts, answers)), u"1 Fehler, 2 Hinweise"_s);
}

} // namespace
} // namespace kalvo
