// A stand-in for the companion's file viewer: writes the arguments it was
// given, one a line in UTF-8, to "viewer-args.txt" in the folder it was
// started in.

#include <cstdio>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#include <shellapi.h>

#include "session/FileUtils.h"
#endif

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
#ifdef _WIN32
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  args.clear();
  for (int i = 1; i < count; ++i) args.push_back(tarvenix::modUtils::Narrow(wide[i]));
  LocalFree(wide);
#endif
  std::string text;
  for (const std::string& arg : args) text += arg + "\n";
  // Whole or not at all, so the test never reads half of it.
  std::FILE* f = std::fopen("viewer-args.tmp", "wb");
  if (!f) return 1;
  std::fwrite(text.data(), 1, text.size(), f);
  std::fclose(f);
  return std::rename("viewer-args.tmp", "viewer-args.txt") == 0 ? 0 : 1;
}
