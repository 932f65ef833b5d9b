// What a start lays out, asks and tells, and what the end asks, acted out on the real program.

#include "support/WaitUntil.h"
#include "system/DrivenProgram.h"

#include <QDir>
#include <QFile>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;
using Harm = ProgramFolder::Harm;

constexpr const char* kBox = "xMessageBox";

class StartTest : public DrivenTest {
protected:
    DrivenOptions At(const ProgramFolder& place) const { return {place.Path(), {}, {}}; }
    QStringList WithStartChoice() const { return Arguments().mid(0, 4); }
    QStringList WithStoredDevice() const { return Arguments().mid(0, 2) + Arguments().mid(4); }
};

/** The box that is open after the one of this text, and the answer to it; its own text. */
QString Expect(DrivenProgram& program, const QString& before, const QString& title, const QString& beginning,
               const QString& answer = u"OK"_s) {
    const SeenWindow box = program.WaitFor(kBox, before);
    EXPECT_EQ(box.title, title);
    EXPECT_TRUE(box.Label("lblText").startsWith(beginning)) << box.Label("lblText").toStdString();
    EXPECT_EQ(box.buttons.size(), answer == u"OK" ? 1 : 2);
    program.Press(kBox, answer);
    return box.Label("lblText");
}

TEST(CommandLineOfTheProgram, TellsVersionAndHelpWithoutAScreenAndRefusesWhatItDoesNotKnow) {
    const ProgramResult version = RunProgram({u"--version"_s});
    EXPECT_EQ(version.exitCode, 0) << version.errors.toStdString();
    EXPECT_TRUE(version.output.contains(u"0.1.0"_s)) << version.output.toStdString();
    const ProgramResult help = RunProgram({u"--help"_s});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* option : {"--datenordner", "--geraet", "--einlesen", "--mix", "--vorfuehrung"})
        EXPECT_TRUE(help.output.contains(QLatin1String(option))) << option;
    for (const char* wrong : {"--gibtesnicht", "--mix", "--geraet=laut"}) {
        const ProgramResult result = RunProgram({QString::fromLatin1(wrong)});
        EXPECT_GT(result.exitCode, 0) << wrong;
        EXPECT_FALSE(result.errors.isEmpty()) << wrong;
    }
    const TestFolder folder;
    const ProgramResult import =
        RunProgram({u"--datenordner"_s, folder.Path(u"Kalvo"_s), u"--einlesen"_s, folder.Path(u"fehlt"_s)});
    EXPECT_GT(import.exitCode, 0);
    EXPECT_TRUE((import.output + import.errors).contains(u"Kein gültiger Ordner!"_s));
}

TEST_F(StartTest, RunsOncePerDataFolderAndFallsBackToTheStandardOutput) {
    folder_.Write(u"Kalvo/kalvo.ini"_s, "[Soundkarte]\nDeviceW=99\n");
    DrivenProgram first(screen_->Display(), WithStoredDevice());
    first.WaitForMessage();
    DrivenProgram second(screen_->Display(), WithStoredDevice());
    EXPECT_EQ(second.WaitForExit(), 0);
    EXPECT_FALSE(second.IsOpen(kBox));
    EXPECT_TRUE(first.IsRunning());
}

TEST_F(StartTest, AMissingLibraryIsToldAndEndsTheProgram) {
    const ProgramFolder place;
    place.Do(Harm::Missing, "bass.dll");
    DrivenProgram program(screen_->Display(), Arguments(), At(place));
    Expect(program, {}, u"bass.dll"_s, u"bass.dll not exists"_s);
    EXPECT_GT(program.WaitForExit(), 0);
}

TEST_F(StartTest, AComponentThatCannotBeUsedIsAskedForAndEndsTheProgram) {
    struct Case {
        const char* file;
        Harm harm;
        const char* answer;
    };
    const Case cases[] = {{"bass.dll", Harm::Old, "Nein"},
                          {"bass.dll", Harm::Damaged, "Ja"},
                          {"BASSenc.dll", Harm::Missing, "Nein"},
                          {"CdBase.ocx", Harm::Old, "Nein"},
                          {"CdBase.ocx", Harm::Damaged, "Ja"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.file << ' ' << int(c.harm));
        const ProgramFolder place;
        place.Do(c.harm, c.file);
        DrivenProgram program(screen_->Display(), Arguments(), At(place));
        const bool isDisc = c.file == std::string("CdBase.ocx");
        const QString title = isDisc ? u"Kalvo"_s : u"bass.dll"_s;
        QString last;
        if (!isDisc)
            last = Expect(program, {}, title, u"Version der bass.dll ist veraltet!"_s);
        last = Expect(program, last, title,
                      isDisc ? u"Kalvo konnte nicht gestartet werden, für die Funktion CDDB fehlt eine Komponente, "
                               "soll diese jetzt aus dem Internet heruntergeladen werden?"_s
                             : u"Kalvo konnte nicht gestartet werden, es fehlt die aktuelle DLL, soll diese jetzt aus "
                               "dem Internet heruntergeladen werden?"_s,
                      QLatin1String(c.answer));
        if (c.answer == std::string("Ja")) {
            EXPECT_EQ(program.WaitFor("frmDownload").title, u"Komponente herunterladen"_s);
            program.Close("frmDownload");
        } else {
            Expect(program, last, title,
                   u"Kalvo konnte nicht gestartet werden!, Führen Sie Kalvo erneut aus und downloaden Sie die "_s +
                       (isDisc ? u"fehlende Komponente"_s : u"aktuelle wenzo.dll"_s));
        }
        EXPECT_GT(program.WaitForExit(), 0);
    }
    EXPECT_FALSE(QFile::exists(Data("Musikarchiv/default.mav")));
}

TEST_F(StartTest, AWaitingLibraryIsInstalledBeforeTheCheck) {
    const ProgramFolder place;
    ASSERT_TRUE(QFile::rename(place.Path("bass.dll"), place.Path("wenzo.dll")));
    place.Do(Harm::Old, "bass.dll");
    {
        DrivenProgram program(screen_->Display(), Arguments(), At(place));
        program.WaitFor("Form1");
        EXPECT_FALSE(QFile::exists(place.Path("wenzo.dll")));
    }
    place.Do(Harm::Old, "Temp/wenzo.dll");
    DrivenProgram program(screen_->Display(), Arguments(), At(place));
    Expect(program, {}, u"bass.dll"_s, u"Version der bass.dll ist veraltet!"_s);
}

TEST_F(StartTest, WithoutAnyOutputTheFatalMessageEndsTheProgram) {
    DrivenProgram program(
        screen_->Display(), WithStoredDevice(),
        {{}, {{u"SDL_AUDIODRIVER"_s, u"pulseaudio"_s}, {u"PULSE_SERVER"_s, u"unix:/nonexistent"_s}}, {}});
    Expect(program, {}, u"Digital output"_s, u"Error: Couldn't Initialize Digital Output"_s);
    EXPECT_GT(program.WaitForExit(), 0);
}

TEST_F(StartTest, OnlyNoKeepsTheWindowOpen) {
    DrivenProgram program(screen_->Display(), Arguments());
    program.WaitFor("Form1");
    program.CloseAndAnswer(u"Nein"_s);
    EXPECT_TRUE(WaitUntil([&program] { return !program.IsOpen(kBox); }));
    EXPECT_TRUE(program.IsOpen("Form1") && program.IsRunning());
    program.CloseAndAnswer(u"Abbrechen"_s);
    EXPECT_EQ(program.WaitForExit(), 0);
    EXPECT_FALSE(QFile::exists(Data("sitzung.json")));
}

TEST_F(StartTest, ALogoutSavesAndEndsWithoutAQuestion) {
    DrivenProgram program(screen_->Display(), Arguments());
    program.WaitForMessage();
    EXPECT_TRUE(WaitUntil([this] { return QFile::exists(Data("sitzung.json")); }));
    program.Terminate();
    EXPECT_EQ(program.WaitForExit(), 0);
    EXPECT_FALSE(program.IsOpen(kBox));
    EXPECT_FALSE(QFile::exists(Data("sitzung.json")));
}

TEST_F(StartTest, TheStartChoiceOpensTheMainWindowOrThePlayer) {
    {
        DrivenProgram program(screen_->Display(), WithStartChoice());
        const SeenWindow choice = program.WaitFor("frmStart");
        EXPECT_EQ(choice.title, u"Startoption Player-Auswahl"_s);
        EXPECT_EQ(choice.Label("Label19"), folder_.Path());
        EXPECT_EQ(choice.Label("Label2"),
                  u"Die Datei für den Player ist leider nicht installiert. Bitte installieren Sie Kalvo neu."_s);
        EXPECT_EQ(choice.buttons[u"Einzelner Player"_s], QVariant(false));
        program.Press("frmStart", u"Starten"_s);
        program.WaitFor("Form1");
    }
    const QString player = folder_.Write(u"1234/1234.exe"_s, "#!/bin/sh\necho da >gestartet\n");
    QFile(player).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    DrivenProgram program(screen_->Display(), WithStartChoice());
    EXPECT_EQ(program.WaitFor("frmStart").Label("Label2"), QString());
    program.Press("frmStart", u"Einzelner Player"_s);
    program.Press("frmStart", u"Starten"_s);
    EXPECT_EQ(program.WaitForExit(), 0);
    EXPECT_TRUE(WaitUntil([this] { return folder_.Read(u"1234/gestartet"_s) == "da\n"; }));
}

} // namespace
} // namespace kalvo::test
