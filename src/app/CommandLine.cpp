#include "app/CommandLine.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

namespace kalvo {

namespace {

const QString kDataFolder = QStringLiteral("datenordner");
const QString kDevice = QStringLiteral("geraet");
const QString kImport = QStringLiteral("einlesen");
const QString kMix = QStringLiteral("mix");
const QString kDemonstration = QStringLiteral("vorfuehrung");
const QString kSkipStart = QStringLiteral("ohne-startauswahl");
const QString kVersion = QStringLiteral("version");
const QString kHelp = QStringLiteral("help");

QString Absolute(const QString& path) {
    return path.isEmpty() ? path : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

void Describe(QCommandLineParser& parser) {
    parser.addOptions({{kDataFolder, QString(), QStringLiteral("ORDNER")},
                       {kDevice, QString(), QStringLiteral("N")},
                       {kImport, QString(), QStringLiteral("ORDNER")},
                       {kMix, QString(), QStringLiteral("AUSGABE.wav")},
                       QCommandLineOption(kDemonstration),
                       QCommandLineOption(kSkipStart),
                       QCommandLineOption(QStringList{QStringLiteral("v"), kVersion}),
                       QCommandLineOption(QStringList{QStringLiteral("h"), kHelp})});
}

} // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
    QCommandLineParser parser;
    Describe(parser);
    CommandLine result;
    if (!parser.parse(arguments)) {
        result.error = QStringLiteral("Unbekannte oder unvollständige Angabe: ") +
                       parser.unknownOptionNames().join(QStringLiteral(", "));
        return result;
    }
    result.dataFolder = Absolute(parser.value(kDataFolder));
    result.importFolder = Absolute(parser.value(kImport));
    result.mixOutput = Absolute(parser.value(kMix));
    result.demonstration = parser.isSet(kDemonstration);
    result.skipStartChoice = parser.isSet(kSkipStart);
    result.version = parser.isSet(kVersion);
    result.help = parser.isSet(kHelp);
    const QStringList files = parser.positionalArguments();
    for (const QString& file : files) {
        result.files.append(Absolute(file));
    }
    if (parser.isSet(kDevice)) {
        bool isNumber = false;
        const int device = parser.value(kDevice).toInt(&isNumber);
        if (!isNumber || device < 0) {
            result.error =
                QStringLiteral("--geraet braucht eine Gerätenummer ab 0, nicht \"%1\".").arg(parser.value(kDevice));
            return result;
        }
        result.device = device;
    }
    if (!result.mixOutput.isEmpty() && result.files.isEmpty() && !result.demonstration) {
        result.error = QStringLiteral("--mix braucht mindestens einen Titel.");
    }
    for (const QString& option : {kDataFolder, kImport, kMix}) {
        if (parser.isSet(option) && parser.value(option).isEmpty()) {
            result.error = QStringLiteral("--%1 braucht eine Angabe.").arg(option);
        }
    }
    return result;
}

QString CommandLineHelp() {
    return QStringLiteral("Aufruf: kalvo [Angaben] [Musikdateien]\n"
                          "\n"
                          "Musikdateien (MP3, OGG) kommen an das Ende der aktiven Wiedergabeliste.\n"
                          "\n"
                          "  --datenordner ORDNER      Daten dort statt im Dokumentenordner halten\n"
                          "  --geraet N                Ausgabegerät: 0 kein Ton, 1 Standardausgabe, 2 ... weitere\n"
                          "  --einlesen ORDNER         Musikordner ohne Fenster in das Archiv einlesen\n"
                          "  --mix AUSGABE.wav TITEL   Titel mit automatischer Übergabe in eine Datei mischen\n"
                          "  --vorfuehrung             Vorführung mit eigenen Titeln in einem vorläufigen Datenordner\n"
                          "  --ohne-startauswahl       Startauswahl überspringen\n"
                          "  --version                 Version zeigen\n"
                          "  --help                    diese Hilfe zeigen\n");
}

} // namespace kalvo
