#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kalvo {

/** What was asked for when the program was started. */
struct CommandLine {
    QString dataFolder;        ///< --datenordner; empty = the personal one
    std::optional<int> device; ///< --geraet
    QString importFolder;      ///< --einlesen
    QString mixOutput;         ///< --mix
    QStringList files;         ///< titles for --mix, else files for the active playlist; absolute paths
    bool demonstration = false;
    bool skipStartChoice = false;
    bool version = false;
    bool help = false;
    QString error; ///< German; empty = everything was understood

    /** Whether the job is done without a window. */
    bool IsWindowless() const { return version || help || !importFolder.isEmpty() || !mixOutput.isEmpty(); }
};

/** arguments: with the program's name first. Relative paths are those of the current folder. */
CommandLine ParseCommandLine(const QStringList& arguments);
QString CommandLineHelp();

} // namespace kalvo
