// tarvenix-cli: the batch analysis, the same work as Add Data Set and OK in the
// desktop program, driven by options.

#include <iostream>
#include <string>
#include <vector>

#include "Run.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  std::vector<std::string> args(argv + 1, argv + argc);
  try {
    return tarvenix::cli::Run(args, std::cout, std::cerr);
  } catch (const std::exception& e) {
    // Every procedure traps its own errors; this only guards the streams.
    std::cerr << "tarvenix-cli: " << e.what() << "\n";
    return tarvenix::cli::kExitIncomplete;
  }
}
