#include "support/TempDir.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

#include "session/FileUtils.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace tarvenix::test {

TempDir::TempDir() {
  std::random_device rd;
  fs::path base = fs::temp_directory_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    fs::path p = base / ("tarvenix-test-" + std::to_string(rd()));
    std::error_code ec;
    if (fs::create_directory(p, ec)) {
      path_ = modUtils::PathText(p);
      return;
    }
  }
  throw std::runtime_error("cannot make a temporary folder");
}

TempDir::~TempDir() {
  std::error_code ec;
  // Give back any permissions a test took away, so everything can be removed.
  const fs::path root = modUtils::NativePath(path_);
  for (auto it = fs::recursive_directory_iterator(root, ec); !ec && it != fs::recursive_directory_iterator();
       it.increment(ec)) {
    fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
  }
  fs::permissions(root, fs::perms::owner_all, fs::perm_options::add, ec);
  fs::remove_all(root, ec);
}

std::string TempDir::File(std::string_view name) const {
  return modUtils::PathText(modUtils::NativePath(path_) / modUtils::NativePath(std::string(name)));
}

std::string TempDir::Write(std::string_view name, std::string_view bytes) const {
  std::string p = File(name);
  std::ofstream out(modUtils::NativePath(p), std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return p;
}

std::string ReadAll(const std::string& path) {
  std::ifstream in(modUtils::NativePath(path), std::ios::binary);
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

void SetEnvironment(const char* name, const std::string& value) {
#ifdef _WIN32
  _wputenv_s(modUtils::Widen(name).c_str(), modUtils::Widen(value).c_str());
#else
  if (value.empty()) {
    unsetenv(name);
  } else {
    setenv(name, value.c_str(), 1);
  }
#endif
}

#ifdef _WIN32

HeldByAnotherProgram::HeldByAnotherProgram(const std::string& file)
    : handle_(CreateFileW(modUtils::NativePath(file).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                          FILE_ATTRIBUTE_NORMAL, nullptr)) {
  if (handle_ == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot hold " + file);
}

void HeldByAnotherProgram::Release() {
  if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
  handle_ = INVALID_HANDLE_VALUE;
}

std::string OutOfReach(const std::string& file, Reach, const std::function<std::string()>& body) {
  HeldByAnotherProgram held(file);
  return body();
}

#else

namespace {

std::string AsUnprivilegedUser(const std::function<std::string()>& body) {
  if (geteuid() != 0) return body();
  int fds[2];
  if (pipe(fds) != 0) throw std::runtime_error("pipe");
  pid_t pid = fork();
  if (pid < 0) throw std::runtime_error("fork");
  if (pid == 0) {
    close(fds[0]);
    std::string out;
    if (setgid(65534) != 0 || setuid(65534) != 0) {
      out = "could not drop rights";
    } else {
      try {
        out = body();
      } catch (const std::exception& e) {
        out = std::string("exception: ") + e.what();
      }
    }
    std::size_t done = 0;
    while (done < out.size()) {
      ssize_t n = write(fds[1], out.data() + done, out.size() - done);
      if (n <= 0) break;
      done += static_cast<std::size_t>(n);
    }
    close(fds[1]);
    _exit(0);
  }
  close(fds[1]);
  std::string result;
  char buf[4096];
  ssize_t n = 0;
  while ((n = read(fds[0], buf, sizeof buf)) > 0) result.append(buf, static_cast<std::size_t>(n));
  close(fds[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  return result;
}

void OpenForEveryone(const std::string& folder) {
  std::error_code ec;
  fs::permissions(folder, fs::perms::all, fs::perm_options::add, ec);
  for (auto it = fs::recursive_directory_iterator(folder, ec); !ec && it != fs::recursive_directory_iterator();
       it.increment(ec))
    fs::permissions(it->path(), fs::perms::all, fs::perm_options::add, ec);
}

}  // namespace

std::string OutOfReach(const std::string& file, Reach what, const std::function<std::string()>& body) {
  const fs::path path(file);
  OpenForEveryone(path.parent_path().string());
  if (what == Reach::Read) {
    fs::permissions(path, fs::perms::none);
  } else {
    fs::permissions(path.parent_path(), fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
  }
  return AsUnprivilegedUser(body);
}

DiskSpaceLimit::DiskSpaceLimit(std::size_t bytes) {
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  oldLimit_ = limit.rlim_cur;
  // Only the soft limit moves, so it can be given back without special rights.
  limit.rlim_cur = std::min<rlim_t>(bytes, limit.rlim_max);
  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::runtime_error("cannot limit file sizes");
  // A write past the limit then fails with an error instead of ending the process.
  oldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
}

DiskSpaceLimit::~DiskSpaceLimit() {
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = oldLimit_;
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, oldHandler_);
}

#endif

}  // namespace tarvenix::test
