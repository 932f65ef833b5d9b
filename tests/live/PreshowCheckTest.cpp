#include "live/PreshowCheck.h"

#include "base/Clock.h"
#include "live/TitleInspector.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

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
    PreshowCheckTest() {
        inspections = 0;
        gateOpen = true;
    }
    ~PreshowCheckTest() override { gateOpen = true; }

    std::unique_ptr<TitleInspector> MakeInspector() {
        return std::make_unique<TitleInspector>(folder.Path(u"Vorpruefung.db"_s), clock, &FakeInspect);
    }
    void Fill(const QStringList& names) {
        facts.lists[0].clear();
        for (const QString& name : names) {
            PlaylistEntry entry;
            entry.path = name == u"fehlt"_s ? folder.Path(name) : folder.Write(name, "x");
            facts.lists[0].append({static_cast<int>(facts.lists[0].size()), entry});
        }
    }
    void Run() {
        check.Start();
        ASSERT_TRUE(test::WaitUntil([this] { return !check.IsRunning(); }));
    }
    qsizetype Errors() const {
        return std::count_if(check.Findings().begin(), check.Findings().end(), [](const PreshowFinding& finding) {
            return finding.severity == PreshowSeverity::Error && finding.where.startsWith(u"Liste"_s);
        });
    }

    test::TestFolder folder;
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
    ASSERT_TRUE(test::WaitUntil([&again] { return !again.IsRunning(); }));
    EXPECT_EQ(inspections, 6) << "the changed one and the broken one, the others from the file";
}

TEST_F(PreshowCheckTest, ChangedListsAreFollowedWhileItRuns) {
    Fill({u"a"_s, u"kaputt"_s});
    gateOpen = false;
    check.Start();
    ASSERT_TRUE(test::WaitUntil([] { return inspections == 1; }));
    Fill({u"a"_s, u"b"_s, u"c"_s});
    check.Refresh();
    ASSERT_TRUE(test::WaitUntil([this] { return check.Count() == 3; }));
    gateOpen = true;
    ASSERT_TRUE(test::WaitUntil([this] { return !check.IsRunning(); }));
    EXPECT_EQ(check.Done(), 3);
    EXPECT_EQ(Errors(), 0) << "what has left the list is not judged";
    Fill({u"a"_s, u"kaputt"_s});
    check.Refresh();
    ASSERT_TRUE(test::WaitUntil([this] { return Errors() == 1; })) << "and after it has ended, too";
}

TEST_F(PreshowCheckTest, ACancelledCheckEndsAtOnce) {
    Fill({u"a"_s, u"b"_s});
    gateOpen = false;
    check.Start();
    ASSERT_TRUE(test::WaitUntil([] { return inspections == 1; }));
    check.Cancel();
    EXPECT_FALSE(check.IsRunning());
    EXPECT_FALSE(inspector->IsBusy());
    EXPECT_EQ(check.Done(), 0);
    gateOpen = true;
    Run();
    EXPECT_EQ(check.Done(), 2) << "and can be begun again";
}

TEST_F(PreshowCheckTest, AFileChosenMeanwhileIsLookedFor) {
    Run();
    facts.emergencyTitle = folder.Path(u"fehlt"_s);
    check.Refresh();
    EXPECT_TRUE(test::WaitUntil([this] {
        return std::any_of(check.Findings().begin(), check.Findings().end(), [](const PreshowFinding& finding) {
            return finding.where == u"Notfalltitel"_s && finding.severity == PreshowSeverity::Error;
        });
    }));
}

} // namespace
} // namespace kalvo
