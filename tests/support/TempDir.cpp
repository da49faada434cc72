#include "support/TempDir.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace tarvenix::test {

TempDir::TempDir() {
  std::random_device rd;
  fs::path base = fs::temp_directory_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    fs::path p = base / ("tarvenix-test-" + std::to_string(rd()));
    std::error_code ec;
    if (fs::create_directory(p, ec)) {
      path_ = p.string();
      return;
    }
  }
  throw std::runtime_error("cannot make a temporary folder");
}

TempDir::~TempDir() {
  std::error_code ec;
  // Give back any permissions a test took away, so everything can be removed.
  for (auto it = fs::recursive_directory_iterator(path_, ec); !ec && it != fs::recursive_directory_iterator();
       it.increment(ec)) {
    fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
  }
  fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
  fs::remove_all(path_, ec);
}

std::string TempDir::File(std::string_view name) const { return (fs::path(path_) / std::string(name)).string(); }

std::string TempDir::Write(std::string_view name, std::string_view bytes) const {
  std::string p = File(name);
  std::ofstream out(p, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return p;
}

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

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

}  // namespace tarvenix::test
