#include "live/AutoDjStore.h"
#include "archive/CategoryLists.h"
#include "archive/TestClock.h"
#include "live/AutoDjValues.h"
#include "support/TestFolder.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

class AutoDjStoreTest : public ::testing::Test {
protected:
    TestFolder folder;
    TestClock clock;
    AutoDjStore store{folder.Path(u"AutoDJ.json"_s)};
    AutoDjStore again{folder.Path(u"AutoDJ.json"_s)};
};

TEST_F(AutoDjStoreTest, EverythingComesBack) {
    const AutoDjSelection disco{ArchiveField::Extra1, {u"Disco \"70\""_s, u"Ö"_s}, 2.5, true, {4, true, true}};
    store.Put({u"Party"_s, disco});
    store.Put({u"abends"_s, {}});
    store.Put({u"PARTY"_s, disco});
    store.last = disco;
    store.refill = {true, 7, disco};
    ASSERT_TRUE(store.Save());
    EXPECT_EQ(again.Load(clock), QString());
    EXPECT_EQ(again.Saved(), store.Saved());
    ASSERT_EQ(again.Saved().size(), 2);
    EXPECT_EQ(again.Saved().at(0).name, u"abends"_s);
    ASSERT_TRUE(again.Find(u"party"_s));
    EXPECT_EQ(*again.Find(u"party"_s), disco);
    EXPECT_EQ(again.last, disco);
    EXPECT_EQ(again.refill, store.refill);
    again.Remove(u"Party"_s);
    EXPECT_FALSE(again.Find(u"Party"_s));
}

TEST_F(AutoDjStoreTest, ADamagedFileIsSetAside) {
    folder.Write(u"AutoDJ.json"_s, "{\"auswahlen\": [");
    EXPECT_TRUE(store.Load(clock).contains(u"beschädigt"_s));
    ASSERT_TRUE(store.Save());
    const QStringList kept = QDir(folder.Path()).entryList({u"AutoDJ.json.defekt-*"_s});
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(folder.Read(kept.at(0)), "{\"auswahlen\": [");
}

TEST_F(AutoDjStoreTest, ImpossibleValuesGetTheirDefaults) {
    folder.Write(u"AutoDJ.json"_s, "{\"auswahlen\": [{\"name\": \" \"}, 7], \"zuletzt\": {\"kriterium\": \"Titel\", "
                                   "\"stunden\": -4, \"interpretAbstand\": \"x\", \"werte\": [3, \"\", \"a\"]}, "
                                   "\"nachfuellen\": {\"unter\": 0}}");
    EXPECT_EQ(store.Load(clock), QString());
    EXPECT_TRUE(store.Saved().isEmpty());
    EXPECT_EQ(store.last.field, ArchiveField::Interpret);
    EXPECT_EQ(store.last.values, QStringList(u"a"_s));
    EXPECT_EQ(store.last.hours, 0);
    EXPECT_EQ(store.last.rules, AutoDjRules());
    EXPECT_EQ(store.refill.below, 1);
}

TEST_F(AutoDjStoreTest, ValuesAreTrimmedSortedAndThereOnce) {
    const DataFolder data(folder.Path());
    EXPECT_FALSE(AutoDjValues::Read(data, ArchiveField::Stil));
    CategoryLists::Write(data, ArchiveField::Stil, {u"Rock "_s, {}, u"Österreich"_s, u"pop"_s, u"Rock"_s, u"  "_s});
    const std::optional<QStringList> values = AutoDjValues::Read(data, ArchiveField::Stil);
    ASSERT_TRUE(values);
    EXPECT_EQ(*values, QStringList({u"Österreich"_s, u"pop"_s, u"Rock"_s}));
    EXPECT_EQ(AutoDjValues::Offered(*values, u"ROC"_s, {}), QStringList(u"Rock"_s));
    EXPECT_EQ(AutoDjValues::Offered(*values, {}, {u"pop"_s}), QStringList({u"Österreich"_s, u"Rock"_s}));
}

} // namespace
} // namespace kalvo::test
