#include "app/ImportCommand.h"

#include "archive/TitleImport.h"

namespace kalvo {

namespace {

void Print(QTextStream& report, const QList<PassedOver>& passedOver) {
    for (const PassedOver& one : passedOver) {
        report << one.path << ": " << one.reason << "\n";
    }
}

} // namespace

int RunImportCommand(const DataFolder& dataFolder, const QString& musicFolder, QTextStream& report) {
    const SystemClock clock;
    Archive archive(clock);
    QObject::connect(&archive, &Archive::Message, [&report](const QString& text) { report << text << "\n"; });
    if (!dataFolder.CreateAll() || !archive.Open(dataFolder) || !archive.WaitForIndex()) {
        report << "Das Musikarchiv kann nicht geöffnet werden: " << dataFolder.Root() << "\n";
        return 2;
    }
    const ScanResult found = ScanFolder(musicFolder, ScanMethod::Standard);
    if (!found.validRoot) {
        report << "Kein gültiger Ordner!\n";
        return 2;
    }
    report << found.files.size() << " kompatible Dateien gefunden\n";
    TitleImport import(archive);
    const ImportReport done = import.Run(found.files);
    Print(report, found.passedOver);
    Print(report, done.passedOver);
    report << done.Text() << "\n";
    return found.passedOver.isEmpty() && done.passedOver.isEmpty() ? 0 : 1;
}

} // namespace kalvo
