#include "app/WindowlessRun.h"

#include "app/DemoTitles.h"
#include "app/ImportCommand.h"
#include "app/MixCommand.h"
#include "app/StartDecisions.h"
#include "app/StartFolder.h"
#include "base/Settings.h"
#include "playback/AudioModule.h"
#include "playback/MixerOptions.h"

#include <QCoreApplication>
#include <QTextStream>

namespace kalvo {

namespace {

constexpr int kRunFailed = 2;

int RunMix(const CommandLine& line, const StartFolder& folder, QTextStream& out) {
    QStringList titles = line.files;
    if (line.demonstration) {
        titles = WriteDemoTitles(folder.DemoMusic());
        RunImportCommand(folder.Data(), folder.DemoMusic(), out);
    }
    AudioModule module(QCoreApplication::applicationDirPath());
    std::unique_ptr<audio::AudioLibrary> library = module.Create();
    ComponentFacts facts;
    facts.moduleExists = module.Exists();
    facts.moduleVersion = library == nullptr ? QString() : VersionText(library->GetVersion());
    facts.encoderExists = facts.discDatabaseExists = true; // not needed here
    if (const auto fault = FindComponentFault(facts)) {
        QTextStream(stderr) << fault->message << "\n";
        return kRunFailed;
    }
    const Settings settings(folder.Data().Path(QStringLiteral("\\kalvo.ini")));
    return RunMixCommand(std::move(library), MixerOptions::Read(settings), line.mixOutput, titles, out);
}

} // namespace

int RunWithoutWindow(const CommandLine& line, QTextStream& out) {
    if (!line.error.isEmpty()) {
        QTextStream(stderr) << line.error << "\n\n" << CommandLineHelp();
        return kRunFailed;
    }
    if (line.help || line.version) {
        out << (line.help ? CommandLineHelp() : QStringLiteral("Kalvo " KALVO_VERSION "\n"));
        return 0;
    }
    const StartFolder folder(line);
    if (!line.importFolder.isEmpty()) {
        return RunImportCommand(folder.Data(), line.importFolder, out);
    }
    return RunMix(line, folder, out);
}

} // namespace kalvo
