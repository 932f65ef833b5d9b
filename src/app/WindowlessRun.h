#pragma once

#include "app/CommandLine.h"

class QTextStream;

namespace kalvo {

/** What the command line asks for without a window. Answers go to `out`, faults to standard error; the exit code. */
int RunWithoutWindow(const CommandLine& line, QTextStream& out);

} // namespace kalvo
