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

// Sets an environment variable to a UTF-8 value; an empty value removes it.
void SetEnvironment(const char* name, const std::string& value);

// Runs `body` while `file` is out of the program's reach and hands back what
// it returned; the body must not use test assertions (it may run in another
// process) and reports through its text. Elsewhere than on Windows the file
// (Reach::Read) or its folder (Reach::Write) is closed to a user without
// special rights, who runs the body, so it works when the tests run as root.
// On Windows another program holds the file open without sharing it, as an
// editor may: it can be neither read nor replaced.
enum class Reach { Read, Write };
std::string OutOfReach(const std::string& file, Reach what, const std::function<std::string()>& body);

}  // namespace tarvenix::test

#ifdef _WIN32
namespace tarvenix::test {

// Holds a file open without sharing it, as another program may, until
// released: meanwhile it can be neither read nor replaced.
class HeldByAnotherProgram {
 public:
  explicit HeldByAnotherProgram(const std::string& file);
  ~HeldByAnotherProgram() { Release(); }
  HeldByAnotherProgram(const HeldByAnotherProgram&) = delete;
  HeldByAnotherProgram& operator=(const HeldByAnotherProgram&) = delete;
  void Release();

 private:
  void* handle_;
};

}  // namespace tarvenix::test
#endif

// A file size limit: POSIX only.
#ifndef _WIN32
namespace tarvenix::test {

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
#endif
