#pragma once

namespace kalvo {

/** The whole program; main() only calls it. Returns the process's exit code. */
int Main(int argc, char** argv);

} // namespace kalvo
