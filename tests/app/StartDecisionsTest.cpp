#include "app/StartDecisions.h"

#include "app/ComponentFiles.h"
#include "support/TestFolder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(StartDecisions, FindTheFirstFaultInTheOrderOfTheChecks) {
    struct Case {
        ComponentFacts facts;
        const char* message;
        const char* component;
    };
    const QString sound = QStringLiteral("2.0");
    const Case cases[] = {
        {{false, {}, false, false}, "bass.dll not exists", ""},
        {{true, QStringLiteral("1.9"), true, true}, "Version der bass.dll ist veraltet!", "wenzo"},
        {{true, QStringLiteral("2.0.1"), true, true}, "Version der bass.dll ist veraltet!", "wenzo"},
        {{true, {}, true, true}, "Version der bass.dll ist veraltet!", "wenzo"},
        {{true, sound, false, false}, "Version der bass.dll ist veraltet!", "wenzo"},
        {{true, sound, true, false}, "", "CDDB"},
    };
    for (const Case& c : cases) {
        const auto fault = FindComponentFault(c.facts);
        ASSERT_TRUE(fault) << c.message << c.component;
        EXPECT_EQ(fault->message, QString::fromUtf8(c.message));
        EXPECT_EQ(fault->component, QString::fromUtf8(c.component));
    }
    EXPECT_FALSE(FindComponentFault({true, sound, true, true}));
}

TEST(StartDecisions, FarewellsNameTheAddressEachInItsOwnWay) {
    const QString outdated = FindComponentFault({true, {}, true, true})->farewell;
    EXPECT_TRUE(outdated.startsWith(QStringLiteral("Kalvo konnte nicht gestartet werden!, Führen Sie Kalvo erneut aus "
                                                   "und downloaden Sie die aktuelle wenzo.dll aus dem Internet, oder "
                                                   "Downloaden Sie das komplette Setup unter ")));
    const QString address = outdated.section(QStringLiteral(" unter "), 1).section(u' ', 0, 0);
    EXPECT_FALSE(address.isEmpty());
    EXPECT_TRUE(outdated.endsWith(address + QStringLiteral(" herunter!")));
    // The other one has always had no blank in front of the address.
    EXPECT_TRUE(FindComponentFault({true, QStringLiteral("2.0"), true, false})
                    ->farewell.endsWith(QStringLiteral("unter") + address + QStringLiteral(" herunter!")));
}

TEST(StartDecisions, OfferThePlayerOnlyOnAWideScreenWithAllItNeeds) {
    struct Case {
        int width;
        bool installed;
        bool archive;
        const char* reason;
    };
    const Case cases[] = {
        {1280, true, true, ""},
        {1279, true, true, "Für diese Funktion muss die Bildschirmbreite mindestens 1280 Pixel betragen"},
        {800, false, false, "Für diese Funktion muss die Bildschirmbreite mindestens 1280 Pixel betragen"},
        {1920, false, true, "Die Datei für den Player ist leider nicht installiert. Bitte installieren Sie Kalvo neu."},
        {1920, true, false, "Diese Funktion ist erst beim nächsten Start von Kalvo möglich."},
    };
    for (const Case& c : cases) {
        const PlayerOffer offer = OfferPlayer(c.width, c.installed, c.archive);
        EXPECT_EQ(offer.reason, QString::fromUtf8(c.reason));
        EXPECT_EQ(offer.enabled, *c.reason == '\0');
    }
}

TEST(ComponentFiles, PutAWaitingLibraryInItsPlace) {
    const test::TestFolder folder;
    const ComponentFiles files(folder.Path());
    const auto library = [&folder] { return folder.Read(QStringLiteral("bass.dll")); };
    folder.Write(QStringLiteral("bass.dll"), "old");
    files.InstallWaitingLibrary();
    EXPECT_EQ(library(), "old");

    folder.Write(QStringLiteral("wenzo.dll"), "beside");
    files.InstallWaitingLibrary();
    EXPECT_EQ(library(), "beside");
    EXPECT_FALSE(QFile::exists(folder.Path(QStringLiteral("wenzo.dll"))));

    folder.Write(QStringLiteral("wenzo.dll"), "beside again");
    folder.Write(QStringLiteral("Temp/wenzo.dll"), "downloaded");
    files.InstallWaitingLibrary();
    EXPECT_EQ(library(), "downloaded");
    EXPECT_TRUE(QFile::exists(folder.Path(QStringLiteral("Temp/wenzo.dll"))));
}

TEST(ComponentFiles, ADamagedModuleCountsAsMissing) {
    const ComponentFacts whole = ComponentFiles(qEnvironmentVariable("KALVO_BIN")).Facts(QStringLiteral("2.0"));
    EXPECT_FALSE(FindComponentFault(whole));
    const test::TestFolder folder;
    const ComponentFiles files(folder.Path());
    EXPECT_FALSE(files.Facts({}).libraryExists);
    for (const char* name : {"bass.dll", "BASSenc.dll", "CdBase.ocx"})
        folder.Write(QLatin1String(name), "x");
    const ComponentFacts facts = files.Facts(QStringLiteral("2.0"));
    EXPECT_TRUE(facts.libraryExists);
    EXPECT_FALSE(facts.encoderExists || facts.discDatabaseExists);
}

} // namespace
} // namespace kalvo
