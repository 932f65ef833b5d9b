#include "system/Program.h"

#include <QProcess>

namespace kalvo::test {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 240'000; ///< ms

} // namespace

ProgramResult RunProgram(const QStringList& arguments) {
    QProcess program;
    program.start(qEnvironmentVariable("KALVO_BIN") + u"/kalvo"_s, arguments);
    const bool done = program.waitForFinished(kPatience) && program.exitStatus() == QProcess::NormalExit;
    ProgramResult result;
    result.exitCode = done ? program.exitCode() : -1;
    result.output = QString::fromUtf8(program.readAllStandardOutput());
    result.errors = QString::fromUtf8(program.readAllStandardError());
    return result;
}

} // namespace kalvo::test
