#include "live/PreshowRules.h"

#include "base/Clock.h"
#include "live/PreshowCheck.h"
#include "live/TitleInspector.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace kalvo::test {
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
            PlaylistEntry entry{u"Titel %1"_s.arg(i), u"Wer"_s, u"03:20"_s, {}, {}, u"/m/%1.mp3"_s.arg(i)};
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
    /** In the file of the second title of list 1. */
    audio::TitleInspection& Found() { return answers.titles[u"/m/2.mp3"_s].found; }
    /** What is wrong: "F" or "H", where and text. */
    QStringList Wrong() const {
        QStringList lines;
        for (const PreshowFinding& finding : Preshow::Judge(facts, answers)) {
            const QString sign = finding.severity == PreshowSeverity::Error ? u"F "_s : u"H "_s;
            if (finding.severity != PreshowSeverity::Good)
                lines.append(sign + finding.where + u": "_s + finding.text);
        }
        return lines;
    }

    PreshowFacts facts;
    PreshowAnswers answers;
};

struct Spoilt {
    std::function<void(ReadyDesk&)> spoil;
    QString line;

    /** All lines about a desk that was ready but for this. */
    QString Wrong() const {
        ReadyDesk desk;
        spoil(desk);
        return desk.Wrong().join(u'\n');
    }
};

struct PreshowRulesTest : ::testing::Test, ReadyDesk {};

TEST_F(PreshowRulesTest, ADeskThatIsReadyHasOnlyGoodNews) {
    EXPECT_EQ(Wrong(), QStringList());
    const QList<PreshowFinding> findings = Preshow::Judge(facts, answers);
    EXPECT_EQ(Preshow::Verdict(findings), u"Alles bereit"_s);
    EXPECT_TRUE(Preshow::Report(findings, u"Kopf"_s).contains(u"- Wiedergabelisten: 4 Titel ganz dekodiert"_s));
}

TEST_F(PreshowRulesTest, EachFaultOfATitleIsNamed) {
    const std::vector<Spoilt> cases = {
        {[](auto& t) { t.answers.titles[u"/m/2.mp3"_s] = {}; }, u"F%1Die Datei fehlt: /m/2.mp3"_s},
        {[](auto& t) { t.Found() = {}; }, u"F%1Die Datei kann nicht abgespielt werden: /m/2.mp3"_s},
        {[](auto& t) { t.Found().silenceAtStart = 200; }, u"F%1Der Titel ist ganz still."_s},
        {[](auto& t) { t.Found().decoded = 100; }, u"F%1Der Titel bricht nach 01:40 ab, er sollte 03:20 lang sein."_s},
        {[](auto& t) { t.Found().broken = true; }, u"F%1Der Titel bricht nach 03:20 ab, er sollte 03:20 lang sein."_s},
        {[](auto& t) { t.Found().silenceAtEnd = 7; }, u"H%1Der Titel endet mit 7 s Stille."_s},
        {[](auto& t) {
             t.Found().longestGap = 4;
             t.Found().gapAt = 61;
         },
         u"H%1Nach 01:01 ist der Titel 4 s lang still."_s},
        {[](auto& t) {
             t.Found().decoded = t.Found().told = 8;
             t.Entry(1, 1).duration = u"00:08"_s;
         },
         u"H%1Der Titel ist mit 8 s kürzer als die Umschaltzeit von 9 s."_s},
        {[](auto& t) { t.Found().measures.loudness = -22; }, u"H%1Der Titel ist 10 LU leiser als die anderen."_s},
        {[](auto& t) { t.Found().clippedRuns = 20; }, u"H%1Der Titel ist an 20 Stellen übersteuert."_s},
        {[](auto& t) { t.Entry(1, 1).path = u"/m/1.mp3"_s; },
         u"H Liste 2, 1. Wer - Titel 1: Die Datei kommt zweimal: auch in Liste 1, 2."_s},
        {[](auto& t) { t.Entry(2, 1).title = u"TITEL 2 (Radio Edit)"_s; },
         u"H Liste 2, 2. Wer - TITEL 2 (Radio Edit): Derselbe Titel in einer anderen Datei: Liste 1, 2."_s},
    };
    for (const Spoilt& one : cases)
        EXPECT_EQ(one.Wrong(), QString(one.line).replace(u"%1"_s, u" Liste 1, 2. Wer - Titel 2: "_s));
}

TEST_F(PreshowRulesTest, EvenedOutTitlesAreComparedAsTheyWillSound) {
    Found().measures = {-21, 0.2, 0};
    EXPECT_EQ(Wrong().size(), 1);
    facts.levelling = true;
    EXPECT_EQ(Wrong(), QStringList());
}

TEST_F(PreshowRulesTest, EachFaultOfTheDeskIsNamed) {
    const std::vector<Spoilt> cases = {
        {[](auto& t) { t.facts.outputOpen = false; }, u"F Soundkarte: Es ist keine Ausgabe"_s},
        {[](auto& t) { t.facts.main.name = u"C"_s; }, u"F Soundkarte: Die gewählte Soundkarte „C“ ist nicht da"_s},
        {[](auto& t) { t.facts.output.overruns = 3; }, u"H Soundkarte: Bisher 3 Aussetzer"_s},
        {[](auto& t) {
             t.facts.headphones = OutputChoice{0, {}};
         },
         u"H Kopfhörer: Für den Kopfhörer"_s},
        {[](auto& t) { t.facts.headphones = t.facts.main; }, u"F Kopfhörer: Kopfhörer und Musik haben dieselbe"_s},
        {[](auto& t) { t.facts.headphones.name = u"D"_s; }, u"F Kopfhörer: Die Soundkarte für den Kopfhörer, „D“"_s},
        {[](auto& t) { t.facts.mixing.continuous = false; }, u"H Stillstandswache: Die kontinuierliche"_s},
        {[](auto& t) { t.facts.emergencyTitle.clear(); }, u"H Notfalltitel: Es ist keiner gewählt."_s},
        {[](auto& t) { t.answers.missingFiles = {u"/m/notfall.mp3"_s}; }, u"F Notfalltitel: Die Datei fehlt"_s},
        {[](auto& t) { t.answers.missingFiles = {u"/s/4.wav"_s}; }, u"F Sampler, Taste 4: Die Datei fehlt: /s/4.wav"_s},
        {[](auto& t) { t.answers.dataFree = 1 << 20; }, u"H Datenordner: Nur noch 0,0 GB frei"_s},
        {[](auto& t) { t.facts.recordingRate = 100'000'000; }, u"H Platz für Mitschnitte: Nur noch"_s},
        {[](auto& t) { t.facts.refillTitles = 0; }, u"F Auto DJ: Kein Titel"_s},
        {[](auto& t) { t.facts.lists = {}; }, u"H Wiedergabelisten: In beiden Listen"_s},
    };
    for (const Spoilt& one : cases) {
        EXPECT_EQ(one.Wrong().left(one.line.size()), one.line);
        EXPECT_FALSE(one.Wrong().contains(u'\n')) << one.Wrong().toStdString();
    }
    facts.refillTitles = 0;
    facts.emergencyTitle.clear();
    answers.dataFree = 0;
    EXPECT_EQ(Preshow::Verdict(Preshow::Judge(facts, answers)), u"1 Fehler, 2 Hinweise"_s);
}

std::atomic<int> inspections{0};
std::atomic<bool> gateOpen{true};

/** Takes as long as the gate is closed. */
std::optional<audio::TitleInspection> FakeInspect(const std::string& path, const std::atomic<bool>& cancelled) {
    ++inspections;
    while (!gateOpen && !cancelled)
        std::this_thread::yield();
    if (cancelled)
        return std::nullopt;
    audio::TitleInspection found;
    found.decoded = path.find("kaputt") == std::string::npos ? 100 : 0;
    found.measures.loudness = -12;
    return found;
}

struct PreshowCheckTest : ::testing::Test {
    PreshowCheckTest() { inspections = 0; }
    ~PreshowCheckTest() override { gateOpen = true; }
    std::unique_ptr<TitleInspector> MakeInspector() {
        return std::make_unique<TitleInspector>(folder.Path(u"Vorpruefung.db"_s), clock, &FakeInspect);
    }
    void Fill(const QStringList& names) {
        facts.lists[0].clear();
        for (const QString& name : names) {
            const QString path = name == u"fehlt"_s ? folder.Path(name) : folder.Write(name, "x");
            facts.lists[0].append({static_cast<int>(facts.lists[0].size()), {{}, {}, {}, {}, {}, path}});
        }
    }
    void Run() {
        check.Start();
        AwaitEnd();
    }
    void AwaitEnd() const {
        ASSERT_TRUE(WaitUntil([this] { return !check.IsRunning(); }));
    }
    /** Begins, and stays at the first title until the gate is opened. */
    void Begin() {
        gateOpen = false;
        check.Start();
        ASSERT_TRUE(WaitUntil([] { return inspections == 1; }));
    }
    qsizetype Errors(const QString& where = u"Liste"_s) const {
        return std::count_if(check.Findings().begin(), check.Findings().end(), [&](const PreshowFinding& finding) {
            return finding.severity == PreshowSeverity::Error && finding.where.startsWith(where);
        });
    }

    TestFolder folder;
    SystemClock clock;
    PreshowFacts facts;
    std::unique_ptr<TitleInspector> inspector = MakeInspector();
    PreshowCheck check{[this] { return facts; }, *inspector};
};

TEST_F(PreshowCheckTest, EachFileIsDecodedOnceUntilItChanges) {
    Fill({u"a"_s, u"b"_s, u"kaputt"_s, u"a"_s, u"fehlt"_s});
    Run();
    EXPECT_EQ(inspections, 3) << "the same file once, what is missing not at all";
    EXPECT_EQ(Errors(), 2);
    EXPECT_EQ(check.Done(), 4);
    Run();
    EXPECT_EQ(inspections, 4) << "the others are known, what could not be read may be readable by now";
    EXPECT_EQ(Errors(), 2);
    const auto second = MakeInspector();
    PreshowCheck again([this] { return facts; }, *second);
    folder.Write(u"b"_s, "longer");
    again.Start();
    ASSERT_TRUE(WaitUntil([&again] { return !again.IsRunning(); }));
    EXPECT_EQ(inspections, 6) << "the changed one and the broken one, the others from the file";
}

TEST_F(PreshowCheckTest, ChangedListsAreFollowedWhileItRuns) {
    Fill({u"a"_s, u"kaputt"_s});
    Begin();
    Fill({u"a"_s, u"b"_s, u"c"_s});
    check.Refresh();
    ASSERT_TRUE(WaitUntil([this] { return check.Count() == 3; }));
    gateOpen = true;
    AwaitEnd();
    EXPECT_EQ(check.Done(), 3);
    EXPECT_EQ(Errors(), 0) << "what has left the list is not judged";
    Fill({u"a"_s, u"kaputt"_s});
    check.Refresh();
    ASSERT_TRUE(WaitUntil([this] { return Errors() == 1; })) << "and after it has ended, too";
    facts.emergencyTitle = folder.Path(u"fehlt"_s);
    check.Refresh();
    EXPECT_TRUE(WaitUntil([this] { return Errors(u"Notfalltitel"_s) == 1; }));
}

TEST_F(PreshowCheckTest, ACancelledCheckEndsAtOnce) {
    Fill({u"a"_s, u"b"_s});
    Begin();
    check.Cancel();
    EXPECT_FALSE(check.IsRunning());
    EXPECT_FALSE(inspector->IsBusy());
    EXPECT_EQ(check.Done(), 0);
    gateOpen = true;
    Run();
    EXPECT_EQ(check.Done(), 2) << "and can be begun again";
}

} // namespace
} // namespace kalvo::test
