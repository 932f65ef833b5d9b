// What a start tells and asks when something is missing, acted out on the real program.

#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "support/XServer.h"
#include "system/DrivenProgram.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

const QString kYes = QStringLiteral("Ja");
const QString kNo = QStringLiteral("Nein");
const QString kOk = QStringLiteral("OK");
constexpr const char* kBox = "xMessageBox";
constexpr const char* kLibraryQuestion =
    "Kalvo konnte nicht gestartet werden, es fehlt die aktuelle DLL, soll diese jetzt aus dem Internet heruntergeladen "
    "werden?";
constexpr const char* kDiscQuestion =
    "Kalvo konnte nicht gestartet werden, für die Funktion CDDB fehlt eine Komponente, soll diese jetzt aus dem "
    "Internet heruntergeladen werden?";
constexpr const char* kFarewell = "Kalvo konnte nicht gestartet werden!, Führen Sie Kalvo erneut aus und downloaden "
                                  "Sie die ";

class StartFailureTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!XServer::IsInstalled())
            GTEST_SKIP() << "Xvfb is not installed";
        screen_ = std::make_unique<XServer>(1280, 800);
    }

    QString Data() const { return folder_.Path(QStringLiteral("Kalvo")); }

    QStringList Arguments(const QStringList& further = {QStringLiteral("--ohne-startauswahl")}) const {
        return QStringList{QStringLiteral("--datenordner"), Data(), QStringLiteral("--geraet"), QStringLiteral("0")} +
               further;
    }

    std::unique_ptr<DrivenProgram> Start(const ProgramFolder& place, const QStringList& arguments) const {
        DrivenOptions options;
        options.programFolder = place.Path();
        return std::make_unique<DrivenProgram>(screen_->Display(), arguments, options);
    }

    TestFolder folder_;
    std::unique_ptr<XServer> screen_;
};

/** Reads the box that is open, after the one of this text, and checks it. */
QString Expect(DrivenProgram& program, const QString& before, const char* title, const char* beginning) {
    const SeenWindow box = program.WaitFor(kBox, before);
    EXPECT_EQ(box.title, QString::fromUtf8(title));
    EXPECT_TRUE(box.Label("lblText").startsWith(QString::fromUtf8(beginning))) << box.Label("lblText").toStdString();
    return box.Label("lblText");
}

TEST_F(StartFailureTest, AMissingLibraryIsToldAndEndsTheProgram) {
    const ProgramFolder place;
    place.Remove("bass.dll");
    const auto program = Start(place, Arguments());
    Expect(*program, {}, "bass.dll", "bass.dll not exists");
    program->Press(kBox, kOk);
    EXPECT_GT(program->WaitForExit(), 0);
}

TEST_F(StartFailureTest, AnOldOrBrokenLibraryOrAMissingEncoderAsksForTheDownload) {
    for (const char* fault : {"old", "broken", "encoder"}) {
        SCOPED_TRACE(fault);
        const ProgramFolder place;
        if (fault == std::string("old"))
            place.WriteOldLibrary("bass.dll");
        else if (fault == std::string("broken"))
            place.Write("bass.dll", "this is no library");
        else
            place.Remove("BASSenc.dll");
        const auto program = Start(place, Arguments());
        const QString message = Expect(*program, {}, "bass.dll", "Version der bass.dll ist veraltet!");
        program->Press(kBox, kOk);
        const QString question = Expect(*program, message, "bass.dll", kLibraryQuestion);
        program->Press(kBox, kNo);
        const QString farewell = Expect(*program, question, "bass.dll", kFarewell);
        EXPECT_TRUE(farewell.contains(QStringLiteral("aktuelle wenzo.dll")));
        program->Press(kBox, kOk);
        EXPECT_GT(program->WaitForExit(), 0);
    }
}

TEST_F(StartFailureTest, AMissingDiscDatabaseAsksForItsDownload) {
    const ProgramFolder place;
    place.Remove("CdBase.ocx");
    const auto program = Start(place, Arguments());
    const QString question = Expect(*program, {}, "Kalvo", kDiscQuestion);
    EXPECT_EQ(program->WaitFor(kBox).buttons.size(), 2U);
    program->Press(kBox, kNo);
    Expect(*program, question, "Kalvo", kFarewell);
    program->Press(kBox, kOk);
    EXPECT_GT(program->WaitForExit(), 0);
    EXPECT_FALSE(QFile::exists(Data() + QStringLiteral("/Musikarchiv/default.mav")));
}

TEST_F(StartFailureTest, AWaitingLibraryIsInstalledBeforeTheCheck) {
    const ProgramFolder place;
    ASSERT_TRUE(QFile::rename(place.Path("bass.dll"), place.Path("wenzo.dll")));
    place.WriteOldLibrary("bass.dll");
    {
        const auto program = Start(place, Arguments());
        program->WaitFor("Form1");
        EXPECT_FALSE(QFile::exists(place.Path("wenzo.dll")));
    }
    place.WriteOldLibrary("Temp/wenzo.dll");
    const auto program = Start(place, Arguments());
    Expect(*program, {}, "bass.dll", "Version der bass.dll ist veraltet!");
}

TEST_F(StartFailureTest, WithoutAnyOutputTheFatalMessageEndsTheProgram) {
    DrivenOptions options;
    options.environment = {{QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("pulseaudio")},
                           {QStringLiteral("PULSE_SERVER"), QStringLiteral("unix:/nonexistent")}};
    DrivenProgram program(screen_->Display(),
                          {QStringLiteral("--datenordner"), Data(), QStringLiteral("--ohne-startauswahl")}, options);
    Expect(program, {}, "Digital output", "Error: Couldn't Initialize Digital Output");
    program.Press(kBox, kOk);
    EXPECT_GT(program.WaitForExit(), 0);
}

TEST_F(StartFailureTest, ASmallScreenIsToldOnceAndTheLoadGoesOn) {
    const XServer small(640, 480);
    DrivenProgram program(small.Display(), Arguments());
    Expect(program, {}, "Kalvo",
           "Für Kalvo wird eine Bildschirmeinstellung von mindestens 800 x 600 benötigt, bitte ändern Sie die "
           "Eigenschaften Ihrer Grafikkarte");
    program.Press(kBox, kOk);
    program.WaitFor("Form1");
    EXPECT_FALSE(program.IsOpen(kBox));
}

TEST_F(StartFailureTest, OnlyNoKeepsTheWindowOpen) {
    for (const QString& answer : {kNo, QStringLiteral("Abbrechen")}) {
        DrivenProgram program(screen_->Display(), Arguments());
        program.WaitFor("Form1");
        program.Close("Form1");
        const SeenWindow box = program.WaitFor(kBox);
        EXPECT_EQ(box.title, QStringLiteral("Achtung!"));
        EXPECT_EQ(box.Label("lblText"), QStringLiteral("Wollen Sie Kalvo wirklich beenden?"));
        program.Press(kBox, answer);
        if (answer == kNo) {
            EXPECT_TRUE(WaitUntil([&program] { return !program.IsOpen(kBox); }));
            EXPECT_TRUE(program.IsOpen("Form1") && program.IsRunning());
        } else {
            EXPECT_EQ(program.WaitForExit(), 0);
        }
    }
    EXPECT_FALSE(QFile::exists(Data() + QStringLiteral("/sitzung.json")));
}

TEST_F(StartFailureTest, TheStartChoiceOpensTheMainWindowOrThePlayer) {
    {
        DrivenProgram program(screen_->Display(), Arguments({}));
        const SeenWindow choice = program.WaitFor("frmStart");
        EXPECT_EQ(choice.title, QStringLiteral("Startoption Player-Auswahl"));
        EXPECT_EQ(choice.Label("Label19"), folder_.Path());
        EXPECT_EQ(choice.Label("Label2"),
                  QStringLiteral("Die Datei für den Player ist leider nicht installiert. Bitte installieren Sie Kalvo "
                                 "neu."));
        program.Press("frmStart", QStringLiteral("Starten"));
        program.WaitFor("Form1");
    }
    const QString player = folder_.Write(QStringLiteral("1234/1234.exe"), "#!/bin/sh\necho da >gestartet\n");
    QFile(player).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    DrivenProgram program(screen_->Display(), Arguments({}));
    EXPECT_EQ(program.WaitFor("frmStart").Label("Label2"), QString());
    program.Press("frmStart", QStringLiteral("Einzelner Player"));
    program.Press("frmStart", QStringLiteral("Starten"));
    EXPECT_EQ(program.WaitForExit(), 0);
    EXPECT_TRUE(WaitUntil([this] { return folder_.Read(QStringLiteral("1234/gestartet")) == "da\n"; }));
}

} // namespace
} // namespace kalvo::test
