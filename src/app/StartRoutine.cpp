#include "app/StartRoutine.h"

#include "app/CommandLine.h"
#include "app/DemoTitles.h"
#include "app/Desk.h"
#include "app/Form1.h"
#include "app/ImportCommand.h"
#include "app/MixCommand.h"
#include "playback/AudioModule.h"
#include "widgets/Icons.h"

#include <QApplication>
#include <QDir>
#include <QLockFile>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTextStream>

#include <optional>

namespace kalvo {

namespace {

constexpr int kFailed = 2;
const QString kRequiredVersion = QStringLiteral("2.0");

QStringList Arguments(int argc, char** argv) {
    QStringList arguments;
    for (int index = 0; index < argc; ++index) {
        arguments.append(QFile::decodeName(argv[index]));
    }
    return arguments;
}

void NameProgram() {
    QCoreApplication::setApplicationName(QStringLiteral("Kalvo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KALVO_VERSION));
}

/** The folder of the command line, a temporary one for the demonstration, else the personal one. */
DataFolder FolderOf(const CommandLine& line, const std::optional<QTemporaryDir>& temporary) {
    if (!line.dataFolder.isEmpty()) {
        return DataFolder(line.dataFolder);
    }
    return temporary ? DataFolder(temporary->filePath(QStringLiteral("Kalvo"))) : DataFolder::Personal();
}

/** Null with the message that names the fault. */
std::unique_ptr<audio::AudioLibrary> LoadLibrary(AudioModule& module, QString& message) {
    if (!module.Exists()) {
        message = QStringLiteral("bass.dll not exists");
        return nullptr;
    }
    std::unique_ptr<audio::AudioLibrary> library = module.Create();
    if (library == nullptr || VersionText(library->GetVersion()) != kRequiredVersion) {
        message = QStringLiteral("Version der bass.dll ist veraltet!");
        return nullptr;
    }
    return library;
}

int RunWithoutWindow(const CommandLine& line, QTextStream& out) {
    if (!line.error.isEmpty()) {
        QTextStream(stderr) << line.error << "\n\n" << CommandLineHelp();
        return kFailed;
    }
    if (line.help || line.version) {
        out << (line.help ? CommandLineHelp() : QStringLiteral("Kalvo " KALVO_VERSION "\n"));
        return 0;
    }
    std::optional<QTemporaryDir> temporary;
    if (line.demonstration) {
        temporary.emplace();
    }
    const DataFolder folder = FolderOf(line, temporary);
    if (!line.importFolder.isEmpty()) {
        return RunImportCommand(folder, line.importFolder, out);
    }
    QStringList titles = line.files;
    if (line.demonstration) {
        const QString music = temporary->filePath(QStringLiteral("Musik"));
        titles = WriteDemoTitles(music);
        RunImportCommand(folder, music, out);
    }
    AudioModule module(QCoreApplication::applicationDirPath());
    QString message;
    std::unique_ptr<audio::AudioLibrary> library = LoadLibrary(module, message);
    if (library == nullptr) {
        QTextStream(stderr) << message << "\n";
        return kFailed;
    }
    const Settings settings(folder.Path(QStringLiteral("\\kalvo.ini")));
    return RunMixCommand(std::move(library), MixerOptions::Read(settings), line.mixOutput, titles, out);
}

int RunWindow(QApplication& application, const CommandLine& line) {
    QApplication::setWindowIcon(Icons::Icon(QStringLiteral("app")));
    QApplication::setDesktopFileName(QStringLiteral("kalvo"));
    std::optional<QTemporaryDir> temporary;
    if (line.demonstration) {
        temporary.emplace();
    }
    const QString programFolder = QCoreApplication::applicationDirPath();
    QDir::setCurrent(programFolder);
    AudioModule module(programFolder);
    QString message;
    std::unique_ptr<audio::AudioLibrary> library = LoadLibrary(module, message);
    if (library == nullptr) {
        QMessageBox::critical(nullptr, QStringLiteral("bass.dll"), message);
        return kFailed;
    }
    const DataFolder folder = FolderOf(line, temporary);
    folder.CreateAll();
    QLockFile lock(folder.Path(QStringLiteral("\\kalvo.sperre")));
    lock.setStaleLockTime(0); // held for days; a crashed program's lock is told by its process
    if (!lock.tryLock(0) && lock.error() == QLockFile::LockFailedError) {
        return 0;
    }
    Desk desk(folder, std::move(library));
    Form1 window(desk, line);
    if (!window.Load()) {
        return kFailed;
    }
    window.show();
    if (line.demonstration) {
        window.Demonstrate(WriteDemoTitles(temporary->filePath(QStringLiteral("Musik"))));
    }
    return application.exec();
}

} // namespace

int Main(int argc, char** argv) {
    NameProgram();
    const CommandLine line = ParseCommandLine(Arguments(argc, argv));
    if (line.IsWindowless() || !line.error.isEmpty()) {
        const QCoreApplication application(argc, argv);
        QTextStream out(stdout);
        return RunWithoutWindow(line, out);
    }
    QApplication application(argc, argv);
    return RunWindow(application, line);
}

} // namespace kalvo
