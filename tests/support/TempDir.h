#pragma once
// A temporary folder that is removed with everything in it at the end of a test.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tarvenix::test {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& Path() const { return path_; }
  // Path() + separator + name.
  std::string File(std::string_view name) const;
  // Writes bytes to a file in the folder and returns its path.
  std::string Write(std::string_view name, std::string_view bytes) const;

 private:
  std::string path_;
};

// The whole content of a file ("" when it cannot be read).
std::string ReadAll(const std::string& path);

}  // namespace tarvenix::test

namespace tarvenix::test {

// Runs `body` as a user without special rights and hands back what it returned,
// so a test can show what happens in a folder that cannot be written even when
// the tests run as root (root writes anywhere). Not root: runs it directly. The
// body must not use test assertions; it reports through its text.
std::string AsUnprivilegedUser(const std::function<std::string()>& body);

// Makes a folder (and, when running as root, its path) usable by that user.
void OpenForEveryone(const std::string& folder);

// While it lives, no file this process writes can grow past `bytes`: a write
// beyond fails as it would on a disk with that much room left.
class DiskSpaceLimit {
 public:
  explicit DiskSpaceLimit(std::size_t bytes);
  ~DiskSpaceLimit();
  DiskSpaceLimit(const DiskSpaceLimit&) = delete;
  DiskSpaceLimit& operator=(const DiskSpaceLimit&) = delete;

 private:
  unsigned long long oldLimit_;
  void (*oldHandler_)(int);
};

}  // namespace tarvenix::test
