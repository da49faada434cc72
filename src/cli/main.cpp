// tarvenix-cli: the batch analysis, the same work as Add Data Set and OK in the
// desktop program, driven by options.

#include <iostream>
#include <string>
#include <vector>

#include "Run.h"

#ifdef _WIN32
#include <windows.h>
#include <shellapi.h>

#include "session/FileUtils.h"
#endif

namespace {

// The arguments as UTF-8, as the program holds every text. Windows hands the
// narrow ones over in the local code page, which cannot spell every file name.
std::vector<std::string> Arguments(int argc, char** argv) {
#ifdef _WIN32
  (void)argc, (void)argv;
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> args;
  for (int i = 1; wide && i < count; ++i) args.push_back(tarvenix::modUtils::Narrow(wide[i]));
  LocalFree(wide);
  return args;
#else
  return {argv + 1, argv + argc};
#endif
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
#ifdef _WIN32
  // The texts are UTF-8; the console shows them as such.
  SetConsoleOutputCP(CP_UTF8);
#endif
  const std::vector<std::string> args = Arguments(argc, argv);
  try {
    return tarvenix::cli::Run(args, std::cout, std::cerr);
  } catch (const std::exception& e) {
    // Every procedure traps its own errors; this only guards the streams.
    std::cerr << "tarvenix-cli: " << e.what() << "\n";
    return tarvenix::cli::kExitIncomplete;
  }
}
