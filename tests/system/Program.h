#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>

namespace kalvo::test {

struct ProgramResult {
    int exitCode = -1; ///< -1: it did not start, crashed or did not end in time
    QString output;
    QString errors;
};

/** Runs the built program without a window to its end. */
ProgramResult RunProgram(const QStringList& arguments);

/** Starts the built program on an X display; it is killed with the returned value. Fails the test if it cannot. */
std::unique_ptr<QProcess> StartProgram(const QByteArray& display, const QStringList& arguments);

} // namespace kalvo::test
