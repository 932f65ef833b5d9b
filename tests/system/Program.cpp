#include "system/Program.h"

#include <gtest/gtest.h>

namespace kalvo::test {

namespace {

constexpr int kPatience = 240'000; ///< ms

QString ProgramPath() {
    return qEnvironmentVariable("KALVO_BIN") + QStringLiteral("/kalvo");
}

} // namespace

ProgramResult RunProgram(const QStringList& arguments) {
    QProcess program;
    program.start(ProgramPath(), arguments);
    const bool done = program.waitForFinished(kPatience) && program.exitStatus() == QProcess::NormalExit;
    ProgramResult result;
    result.exitCode = done ? program.exitCode() : -1;
    result.output = QString::fromUtf8(program.readAllStandardOutput());
    result.errors = QString::fromUtf8(program.readAllStandardError());
    return result;
}

std::unique_ptr<QProcess> StartProgram(const QByteArray& display, const QStringList& arguments) {
    auto program = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    program->setProcessEnvironment(environment);
    program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program->start(ProgramPath(), arguments);
    EXPECT_TRUE(program->waitForStarted()) << ProgramPath().toStdString();
    return program;
}

} // namespace kalvo::test
