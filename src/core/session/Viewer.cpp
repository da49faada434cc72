#include "session/Viewer.h"

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Session.h"
#include "session/Utils.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tarvenix::modUtils {

#ifdef _WIN32

namespace {

// One argument as the C runtime splits a command line: quoted when it holds a
// blank or a quote (or is empty), a quote escaped with "\", and the
// backslashes before a quote or the closing quote doubled.
std::wstring Quoted(const std::wstring& arg) {
  if (!arg.empty() && arg.find_first_of(L" \t\"") == std::wstring::npos) return arg;
  std::wstring out = L"\"";
  std::size_t backslashes = 0;
  for (wchar_t c : arg) {
    if (c == L'\\') {
      ++backslashes;
      continue;
    }
    out.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
    backslashes = 0;
    out += c;
  }
  out.append(backslashes * 2, L'\\');
  return out + L"\"";
}

}  // namespace

bool StartProgram(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder) {
  const std::wstring application = Widen(program);
  std::wstring commandLine = Quoted(application);
  for (const std::string& arg : arguments) commandLine += L" " + Quoted(Widen(arg));
  const std::wstring directory = Widen(folder);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  // Detached: a console program gets no share of ours.
  if (!CreateProcessW(application.c_str(), commandLine.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                      directory.empty() ? nullptr : directory.c_str(), &startup, &process))
    return false;
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return true;
}

#else

bool StartProgram(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder) {
  // Everything the new process needs is made before fork: after it, only
  // calls that are safe in a copy of a threaded process.
  std::vector<std::string> all{program};
  all.insert(all.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& arg : all) argv.push_back(arg.data());
  argv.push_back(nullptr);
  // The pipe closes unread when exec succeeds, and carries errno when it fails.
  int report[2];
  if (pipe2(report, O_CLOEXEC) != 0) return false;
  const pid_t child = fork();
  if (child < 0) {
    close(report[0]);
    close(report[1]);
    return false;
  }
  if (child == 0) {
    // The grandchild runs the program: nobody has to wait for it, and it
    // outlives us.
    setsid();
    const pid_t grandchild = fork();
    if (grandchild != 0) _exit(grandchild < 0 ? 1 : 0);
    int error = 0;
    if (!folder.empty() && chdir(folder.c_str()) != 0) {
      error = errno;
    } else {
      execv(argv[0], argv.data());
      error = errno;
    }
    (void)!write(report[1], &error, sizeof error);
    _exit(127);
  }
  close(report[1]);
  int status = 0;
  waitpid(child, &status, 0);
  int error = 0;
  const ssize_t told = read(report[0], &error, sizeof error);
  close(report[0]);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 && told == 0;
}

#endif

}  // namespace tarvenix::modUtils

namespace tarvenix::modTarvenix {

void ViewDataFile(Session& s, UiPort& ui, const std::string& file) {
  if (!modUtils::IsFile(file)) {
    modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "",
                          "The file " + file + "\rcould not be opened " + "for editing because it does not exist.");
    return;
  }
  const std::string viewer = modUtils::JoinPath(s.sAppPath, kViewerFileName);
  if (!modUtils::IsFile(viewer)) {
    modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", "Can't find Quillet.exe. Try reinstalling Vorlantic.");
    return;
  }
  if (!modUtils::StartProgram(viewer, {file, basic::Format(90.0, "000")}, s.sAppPath))
    modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", "Could not open the file " + viewer);
}

}  // namespace tarvenix::modTarvenix
