// tarvenix-cli: the batch analysis, the same work as Add Data Set and OK in the
// desktop program, driven by options.

#include <cstring>
#include <iostream>
#include <string>

#include "tarvenix/Version.h"

namespace {

const char* kUsage =
    "Usage: tarvenix-cli [global options] --data FILE [data-set options] [--data FILE [data-set options]] ...\n"
    "\n"
    "Weibull analysis of event-logger data history files, without a screen.\n"
    "\n"
    "Global options:\n"
    "  --help       show this help and exit\n"
    "  --version    show the program's version and exit\n";

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--help") == 0) {
      std::cout << kUsage;
      return 0;
    }
    if (std::strcmp(argv[i], "--version") == 0) {
      std::cout << "tarvenix-cli " << tarvenix::version::kText << "\n";
      return 0;
    }
  }
  std::cerr << "tarvenix-cli: the batch analysis is not available yet.\nTry 'tarvenix-cli --help'.\n";
  return 2;
}
