#include "app/FakeWindow.h"
#include "live/SampleFile.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** The main window with two titles that are no music, and a sample whose file is missing. */
struct PreshowCommandsTest : test::FakeWindow {
    void SetUp() override {
        SampleSlots slots;
        slots[3] = {u"Tusch"_s, u"/fehlt/tusch.wav"_s};
        SampleFile(desk->folder.Path(u"\\sample.dll"_s), desk->clock).Write(slots);
        ASSERT_TRUE(window->Load());
        window->show();
        for (const QString& name : {u"a-60"_s, u"b-60"_s})
            desk->list2.Append({{name, {}, {}, {}, {}, folder.Write(name, "x")}});
        In<QAction>(*window, "Vorpruefung").trigger();
        ASSERT_TRUE(test::WaitUntil([this] { return In<QPushButton>(*window, "cmdPruefen").isEnabled(); }));
    }
    void Follow(const QString& where) {
        auto& lines = In<QTreeWidget>(*window, "Befunde");
        const auto found = lines.findItems(where, Qt::MatchExactly | Qt::MatchRecursive, 0);
        ASSERT_FALSE(found.isEmpty()) << where.toStdString();
        Q_EMIT lines.itemActivated(found.constFirst(), 0);
    }
};

TEST_F(PreshowCommandsTest, ItsLinesLeadToWhatTheyName) {
    Follow(u"Liste 2, 2. b-60"_s);
    EXPECT_EQ(In<QTableView>(*window, "List2").currentIndex().row(), 1);
    Follow(u"Notfalltitel"_s);
    EXPECT_EQ(In<QListWidget>(*window, "lstSeiten").currentItem()->text(), u"Notfalltitel"_s);
    Follow(u"Kopfhörer"_s);
    EXPECT_EQ(In<QListWidget>(*window, "lstSeiten").currentItem()->text(), u"Soundkarten"_s);
    Follow(u"Sampler, Taste 4"_s);
    EXPECT_NE(window->findChild<QWidget*>(u"frmSampleEinstellungen"_s), nullptr);
}

TEST_F(PreshowCommandsTest, AListThatChangesIsLookedAtAgain) {
    auto& lines = In<QTreeWidget>(*window, "Befunde");
    const auto errors = [&lines] { return lines.topLevelItem(0)->childCount(); };
    const int before = errors();
    const int enumerations = fake->enumerations;
    desk->list2.Remove({1});
    EXPECT_TRUE(test::WaitUntil([&] { return errors() == before - 1; }));
    desk->list1.Append({{u"c"_s, {}, {}, {}, {}, folder.Path(u"fehlt.mp3"_s)}});
    EXPECT_TRUE(test::WaitUntil([&] { return errors() == before; }));
    EXPECT_EQ(fake->enumerations, enumerations) << "the sound system is left alone";
    ASSERT_TRUE(test::WaitUntil([this] { return In<QPushButton>(*window, "cmdPruefen").isEnabled(); }));
    In<QPushButton>(*window, "cmdPruefen").click();
    EXPECT_EQ(fake->enumerations, enumerations + 1) << "until it is asked for";
}

} // namespace
} // namespace kalvo
