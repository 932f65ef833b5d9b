#pragma once

#include <QString>
#include <QStringList>

namespace kalvo::test {

struct ProgramResult {
    int exitCode = -1; ///< -1: it did not start, crashed or did not end in time
    QString output;
    QString errors;
};

/** Runs the built program without a window to its end. */
ProgramResult RunProgram(const QStringList& arguments);

} // namespace kalvo::test
