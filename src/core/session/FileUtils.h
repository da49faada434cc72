#pragma once
// Files as the program uses them: opening with retry, the classic line and item
// input, writing that replaces a file atomically, file and folder tests, paths.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modUtils {

#ifdef _WIN32
inline constexpr char kPathSep = '\\';
#else
inline constexpr char kPathSep = '/';
#endif

// A file name as the system's file calls take it, and back: UTF-8 inside the
// program, the wide-character form on Windows, whatever the local code page.
std::filesystem::path NativePath(const std::string& path);
std::string PathText(const std::filesystem::path& path);
#ifdef _WIN32
// UTF-8 to and from the UTF-16 of Windows' wide-character calls.
std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view wide);
#endif

bool IsPathSeparator(char c);
// a + separator + b, without doubling a separator that a already ends with.
std::string JoinPath(std::string_view a, std::string_view b);

// Empty path: false, without touching the disk.
bool IsFile(const std::string& path);       // an existing file (not a folder)
bool IsDirectory(const std::string& path);  // an existing folder

// Splits at the last path separator; a name without one has an empty folder.
void GetPathAndFilename(const std::string& fullName, std::string& folder, std::string& fileName);

// The machine's common application data folder: on Windows the ProgramData
// folder, elsewhere the user's writable data folder (XDG_DATA_HOME, else
// ~/.local/share). Run-time error "The folder path could not be detected" when
// none is known.
std::string CommonAppDataFolder();

// Writes `content` to `path`, replacing the file atomically: a temporary file in
// the same folder is written, flushed and renamed over the old one, so a crash or
// a full disk leaves the old file whole. A target that exists and is not a
// regular file (a device such as /dev/stdout) is written directly. Failures raise
// the classic file errors (61 Disk full, 75 Path/File access error, 76 Path not
// found).
void WriteFileAtomically(const std::string& path, std::string_view content);

// The whole file as bytes. Raises the classic open errors, and 7 (Out of memory)
// when the file is larger than maxBytes.
std::string ReadFileBytes(const std::string& path, std::size_t maxBytes);

enum class FileMode { Input, Output, Append };

// An open file, as the classic Open statement gives one. Output collects the
// text and replaces the file atomically on Close; Append adds to the end; Input
// reads lines (CR LF, LF or a lone CR end a line) and list items.
class VbFile {
 public:
  // Raises 53 (missing file), 76 (missing folder), 75 (no access, a folder) ...
  static std::unique_ptr<VbFile> Open(FileMode mode, const std::string& path);
  ~VbFile();
  VbFile(const VbFile&) = delete;
  VbFile& operator=(const VbFile&) = delete;

  FileMode Mode() const { return mode_; }
  const std::string& Path() const { return path_; }

  // Output and Append.
  void Print(std::string_view text);
  void PrintLine(std::string_view text);  // text and CR LF
  // Finishes the file: Output replaces the target atomically. Raises on failure.
  void Close();

  // Input.
  bool Eof();
  // The next whole line without its line end; error 62 at the end of the file.
  std::string LineInput();
  // The next list item: blanks around it dropped, a quoted item taken between its
  // quotes, ended by a comma or a line end; error 62 at the end of the file.
  std::string InputItem();

 private:
  VbFile(FileMode mode, std::string path);
  int Peek();
  int Get();
  void SkipLineEnd(int c);

  FileMode mode_;
  std::string path_;
  std::FILE* file_ = nullptr;
  std::string output_;  // Output mode: the text so far
  bool closed_ = false;
  std::string buffer_;  // Input mode: read ahead
  std::size_t pos_ = 0;
  bool atEnd_ = false;
};

// A file read as raw bytes in large blocks, for readers that split lines
// themselves. Nothing is buffered behind the caller's back: each Read goes to the
// system with the caller's block.
class ByteFile {
 public:
  // Raises the classic errors of an input open: 53 (missing file), 76 (missing
  // folder), 75 (a folder, or no access), 52 (empty name).
  static std::unique_ptr<ByteFile> OpenForReading(const std::string& path);
  ~ByteFile();
  ByteFile(const ByteFile&) = delete;
  ByteFile& operator=(const ByteFile&) = delete;

  // Up to `max` bytes into `into`; 0 at the end of the file. A failed read is
  // error 57 (Device I/O error).
  std::size_t Read(char* into, std::size_t max);

 private:
  explicit ByteFile(std::FILE* f) : file_(f) {}
  std::FILE* file_;
};

// Seconds and pauses for OpenFile's retry; tests move a fake clock.
struct RetryClock {
  std::function<long long()> wholeSecondsNow;
  std::function<void()> pause;
};
RetryClock SystemRetryClock();

// Opens a file in mode "Input", "Output" or "Append", retrying for 10 seconds
// while it fails (another program may hold it). When it still fails, shows
// "The file, '<name>' could not be opened." CR "The file may be in use by another
// program." titled "modUtils.OpenFile Error #<n> <description>", sets iErr to 1
// and returns nothing. iErr is cleared at the start.
std::unique_ptr<VbFile> OpenFile(Session& s, UiPort& ui, std::string_view mode, const std::string& name,
                                 int16_t& iErr, const RetryClock& clock = SystemRetryClock());

}  // namespace tarvenix::modUtils
