#include "app/StartRoutine.h"

#include "app/CommandLine.h"
#include "app/ComponentFiles.h"
#include "app/DemoTitles.h"
#include "app/Desk.h"
#include "app/Form1.h"
#include "app/KeyNames.h"
#include "app/SingleInstance.h"
#include "app/StartFolder.h"
#include "app/StartQuestions.h"
#include "app/TerminationWatch.h"
#include "app/WindowlessRun.h"
#include "app/frmDownload.h"
#include "app/frmHallo.h"
#include "playback/AudioModule.h"
#include "widgets/DialogKeys.h"
#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"
#include "widgets/Spoken.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QTextStream>
#include <QTranslator>

namespace kalvo {

namespace {

constexpr int kFailed = 2;

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

/** The chosen look also for what comes before the main window. */
void ApplyStoredStyle(QApplication& application, const DataFolder& folder) {
    const Settings settings(folder.Path(QStringLiteral("\\kalvo.ini")));
    const auto setting = [&settings](const char* key, const char* fallback) {
        return settings.GetSetting(QStringLiteral("Style"), QLatin1String(key), QLatin1String(fallback));
    };
    SkinStyle::Apply(application, setting("Skin", "Light Green"), setting("Schriftgrad", "klein"),
                     setting("Buttongroesse", "klein"));
}

/** Qt's own windows and key names in German. What it is not installed for stays English. */
void SpeakGerman(QApplication& application) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    auto* texts = new QTranslator(&application);
    if (texts->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(texts);
    }
    QApplication::installTranslator(new KeyNames(&application)); // asked before the other
}

/** Loads the main window behind the splash and runs it to its end. */
int RunForm1(QApplication& application, const CommandLine& line, const StartFolder& folder, SingleInstance& instance,
             std::unique_ptr<audio::AudioLibrary> library) {
    Desk desk(folder.Data(), std::move(library));
    Form1 window(desk, line);
    {
        frmHallo splash(QCoreApplication::applicationVersion());
        splash.show();
        QObject::connect(&window, &Form1::LoadProgress, &splash, &frmHallo::SetProgress);
        if (!window.Load()) {
            return kFailed;
        }
        window.show();
    }
    window.AddFiles(instance.TakeFiles());
    QObject::connect(&instance, &SingleInstance::Received, &window, [&window](const QStringList& files) {
        window.AddFiles(files);
        window.ComeForward();
    });
    const TerminationWatch watch;
    QObject::connect(&watch, &TerminationWatch::Asked, &window, &Form1::End);
    if (line.demonstration) {
        window.Demonstrate(WriteDemoTitles(folder.DemoMusic()));
    }
    return application.exec();
}

int RunWindow(QApplication& application, const CommandLine& line) {
    QApplication::setWindowIcon(Icons::Icon(QStringLiteral("app")));
    QApplication::setDesktopFileName(QStringLiteral("kalvo"));
    QApplication::setQuitOnLastWindowClosed(false); // the main window itself ends the program
    const StartFolder folder(line);
    SingleInstance instance(folder.Data());
    if (!instance.IsFirst()) {
        instance.HandOver(line.files);
        return 0;
    }
    SpeakGerman(application);
    Spoken::Install();
    DialogKeys::Install(application);
    ApplyStoredStyle(application, folder.Data());
    const QString programFolder = QCoreApplication::applicationDirPath();
    QDir::setCurrent(programFolder);
    const ComponentFiles components(programFolder);
    components.InstallWaitingLibrary();
    AudioModule module(programFolder);
    std::unique_ptr<audio::AudioLibrary> library = module.Create();
    const QString version = library == nullptr ? QString() : VersionText(library->GetVersion());
    if (const auto fault = FindComponentFault(components.Facts(version))) {
        TellComponentFault(*fault, &frmDownload::Run);
        return kFailed;
    }
    if (!line.skipStartChoice && !line.demonstration && !ChooseProgram(folder.Data())) {
        return 0;
    }
    return RunForm1(application, line, folder, instance, std::move(library));
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
