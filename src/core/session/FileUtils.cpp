#include "session/FileUtils.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <system_error>
#include <thread>

#include "base/RuntimeError.h"
#include "session/Sound.h"
#include "session/Session.h"
#include "session/UiPort.h"

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace tarvenix::modUtils {
namespace {

constexpr std::size_t kReadChunk = 64 * 1024;

// Every file the program opens goes through here: names are UTF-8 inside the
// program, and Windows takes them only through its wide-character calls (its
// narrow ones read them in the local code page).
std::FILE* OpenStdFile(const std::string& path, const char* mode) {
#ifdef _WIN32
  return _wfopen(Widen(path).c_str(), Widen(mode).c_str());
#else
  return std::fopen(path.c_str(), mode);
#endif
}

// The classic error for a failed open or write, from the system's error code.
int ErrorNumberFor(int sysErrno, const std::string& path, bool forInput) {
  switch (sysErrno) {
    case ENOENT: {
      std::error_code ec;
      fs::path parent = NativePath(path).parent_path();
      if (!parent.empty() && !fs::is_directory(parent, ec)) return err::kPathNotFound;
      return forInput ? err::kFileNotFound : err::kPathNotFound;
    }
    case ENOTDIR: return err::kPathNotFound;
    case ENOSPC: return err::kDiskFull;
    case EFBIG: return err::kDiskFull;  // the file system (or a quota) takes no larger file
#ifdef EDQUOT
    case EDQUOT: return err::kDiskFull;
#endif
    case EMFILE:
    case ENFILE: return 67;
    case EIO: return err::kDeviceIO;
    case ENOMEM: return err::kOutOfMemory;
    default: return err::kPathFileAccess;
  }
}

[[noreturn]] void RaiseFor(int sysErrno, const std::string& path, bool forInput) {
  Raise(ErrorNumberFor(sysErrno, path, forInput));
}

std::string TempNameBeside(const std::string& path) {
  static thread_local std::mt19937_64 rng{std::random_device{}()};
  return path + ".tmp-" + std::to_string(rng() % 1000000000ull);
}

bool SyncFile(std::FILE* f) {
  if (std::fflush(f) != 0) return false;
#ifdef _WIN32
  return _commit(_fileno(f)) == 0;
#else
  return fsync(fileno(f)) == 0;
#endif
}

// Writes all of `content` to an open file; the errno of the failure, or 0.
int WriteAll(std::FILE* f, std::string_view content) {
  if (!content.empty() && std::fwrite(content.data(), 1, content.size(), f) != content.size())
    return errno ? errno : EIO;
  if (!SyncFile(f)) return errno ? errno : EIO;
  return 0;
}

// The file a path finally names, so writing through a link replaces the file it
// points at and keeps the link.
std::string ResolvedTarget(const std::string& path) {
  std::error_code ec;
  if (fs::is_symlink(fs::symlink_status(NativePath(path), ec))) {
    fs::path target = fs::canonical(NativePath(path), ec);
    if (!ec) return PathText(target);
  }
  return path;
}

}  // namespace

#ifdef _WIN32
std::wstring Widen(std::string_view utf8) {
  if (utf8.empty()) return {};
  const int n = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(n), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), n);
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  if (wide.empty()) return {};
  const int n = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(n), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8.data(), n, nullptr, nullptr);
  return utf8;
}
#endif

fs::path NativePath(const std::string& path) {
#ifdef _WIN32
  return fs::path(Widen(path));
#else
  return fs::path(path);
#endif
}

std::string PathText(const fs::path& path) {
#ifdef _WIN32
  return Narrow(path.native());
#else
  return path.native();
#endif
}

bool IsPathSeparator(char c) {
#ifdef _WIN32
  return c == '\\' || c == '/';
#else
  return c == '/';
#endif
}

std::string JoinPath(std::string_view a, std::string_view b) {
  if (a.empty()) return std::string(b);
  std::string r(a);
  if (!IsPathSeparator(r.back())) r += kPathSep;
  return r + std::string(b);
}

bool IsFile(const std::string& path) {
  if (path.empty()) return false;
  std::error_code ec;
  fs::file_status st = fs::status(NativePath(path), ec);
  return !ec && fs::exists(st) && !fs::is_directory(st);
}

bool IsDirectory(const std::string& path) {
  if (path.empty()) return false;
  std::error_code ec;
  return fs::is_directory(NativePath(path), ec);
}

void GetPathAndFilename(const std::string& fullName, std::string& folder, std::string& fileName) {
  std::size_t cut = std::string::npos;
  for (std::size_t i = fullName.size(); i-- > 0;) {
    if (IsPathSeparator(fullName[i])) {
      cut = i;
      break;
    }
  }
  if (cut == std::string::npos) {
    folder.clear();
    fileName = fullName;
    return;
  }
  folder = fullName.substr(0, cut);
  fileName = fullName.substr(cut + 1);
}

std::string CommonAppDataFolder() {
#ifdef _WIN32
  const wchar_t* programData = _wgetenv(L"PROGRAMDATA");
  if (programData && *programData) return Narrow(programData);
#else
  const char* xdg = std::getenv("XDG_DATA_HOME");
  if (xdg && *xdg == '/') return xdg;
  const char* home = std::getenv("HOME");
  if (home && *home) return JoinPath(JoinPath(home, ".local"), "share");
#endif
  throw RuntimeError(err::kInvalidCall, "The folder path could not be detected", "SpecialFolder");
}

void WriteFileAtomically(const std::string& path, std::string_view content) {
  const std::string target = ResolvedTarget(path);
  std::error_code ec;
  fs::file_status st = fs::status(NativePath(target), ec);
  if (!ec && fs::exists(st) && !fs::is_regular_file(st)) {
    if (fs::is_directory(st)) Raise(err::kPathFileAccess);
    std::FILE* f = OpenStdFile(target, "wb");
    if (!f) RaiseFor(errno, target, false);
    int e = WriteAll(f, content);
    std::fclose(f);
    // Devices such as a pipe or a terminal cannot be synced; only a failed write counts.
    if (e != 0 && e != EINVAL && e != ENOTSUP && e != EROFS) RaiseFor(e, target, false);
    return;
  }
  const std::string temp = TempNameBeside(target);
  std::FILE* f = OpenStdFile(temp, "wb");
  if (!f) RaiseFor(errno, target, false);
  int e = WriteAll(f, content);
  if (std::fclose(f) != 0 && e == 0) e = errno ? errno : EIO;
  if (e == 0) {
    fs::rename(NativePath(temp), NativePath(target), ec);
    if (ec) e = ec.value();
  }
  if (e != 0) {
    fs::remove(NativePath(temp), ec);
    RaiseFor(e, target, false);
  }
}

std::string ReadFileBytes(const std::string& path, std::size_t maxBytes) {
  if (IsDirectory(path)) Raise(err::kPathFileAccess);
  std::FILE* f = OpenStdFile(path, "rb");
  if (!f) RaiseFor(errno, path, true);
  std::string all;
  char chunk[kReadChunk];
  std::size_t n = 0;
  while ((n = std::fread(chunk, 1, sizeof chunk, f)) > 0) {
    if (all.size() + n > maxBytes) {
      std::fclose(f);
      Raise(err::kOutOfMemory);
    }
    all.append(chunk, n);
  }
  bool failed = std::ferror(f) != 0;
  std::fclose(f);
  if (failed) Raise(err::kDeviceIO);
  return all;
}

VbFile::VbFile(FileMode mode, std::string path) : mode_(mode), path_(std::move(path)) {}

VbFile::~VbFile() {
  if (file_) std::fclose(file_);
}

std::unique_ptr<VbFile> VbFile::Open(FileMode mode, const std::string& path) {
  std::unique_ptr<VbFile> f(new VbFile(mode, path));
  if (path.empty()) Raise(err::kBadFileName);
  if (IsDirectory(path)) Raise(err::kPathFileAccess);
  switch (mode) {
    case FileMode::Input:
      f->file_ = OpenStdFile(path, "rb");
      if (!f->file_) RaiseFor(errno, path, true);
      break;
    case FileMode::Append:
      f->file_ = OpenStdFile(path, "ab");
      if (!f->file_) RaiseFor(errno, path, false);
      break;
    case FileMode::Output: {
      // Find out now whether the folder takes a file, so an Open that cannot
      // succeed fails here and not at Close. Devices are written directly.
      std::error_code ec;
      fs::file_status st = fs::status(NativePath(path), ec);
      if (!ec && fs::exists(st) && !fs::is_regular_file(st)) break;
      std::string probe = TempNameBeside(ResolvedTarget(path));
      std::FILE* t = OpenStdFile(probe, "wb");
      if (!t) RaiseFor(errno, path, false);
      std::fclose(t);
      fs::remove(NativePath(probe), ec);
      break;
    }
  }
  return f;
}

void VbFile::Print(std::string_view text) {
  if (closed_ || mode_ == FileMode::Input) Raise(err::kBadFileName);
  if (mode_ == FileMode::Output) {
    output_.append(text);
  } else if (!text.empty() && std::fwrite(text.data(), 1, text.size(), file_) != text.size()) {
    RaiseFor(errno ? errno : EIO, path_, false);
  }
}

void VbFile::PrintLine(std::string_view text) {
  Print(text);
  Print("\r\n");
}

void VbFile::Close() {
  if (closed_) return;
  closed_ = true;
  if (mode_ == FileMode::Output) {
    WriteFileAtomically(path_, output_);
    output_.clear();
    return;
  }
  if (file_) {
    int e = 0;
    if (mode_ == FileMode::Append && std::fflush(file_) != 0) e = errno ? errno : EIO;
    std::fclose(file_);
    file_ = nullptr;
    if (e) RaiseFor(e, path_, false);
  }
}

int VbFile::Peek() {
  if (pos_ < buffer_.size()) return static_cast<unsigned char>(buffer_[pos_]);
  if (atEnd_ || !file_ || mode_ != FileMode::Input) return EOF;
  buffer_.resize(kReadChunk);
  std::size_t n = std::fread(buffer_.data(), 1, kReadChunk, file_);
  if (n == 0 && std::ferror(file_)) Raise(err::kDeviceIO);
  buffer_.resize(n);
  pos_ = 0;
  if (n == 0) {
    atEnd_ = true;
    return EOF;
  }
  return static_cast<unsigned char>(buffer_[0]);
}

int VbFile::Get() {
  int c = Peek();
  if (c != EOF) ++pos_;
  return c;
}

void VbFile::SkipLineEnd(int c) {
  if (c == '\r' && Peek() == '\n') Get();
}

bool VbFile::Eof() { return Peek() == EOF; }

std::string VbFile::LineInput() {
  if (mode_ != FileMode::Input || closed_) Raise(err::kBadFileName);
  if (Peek() == EOF) Raise(err::kInputPastEnd);
  std::string line;
  for (int c = Get(); c != EOF; c = Get()) {
    if (c == '\r' || c == '\n') {
      SkipLineEnd(c);
      break;
    }
    line.push_back(static_cast<char>(c));
  }
  return line;
}

std::string VbFile::InputItem() {
  if (mode_ != FileMode::Input || closed_) Raise(err::kBadFileName);
  while (Peek() == ' ' || Peek() == '\t') Get();
  if (Peek() == EOF) Raise(err::kInputPastEnd);
  std::string item;
  if (Peek() == '"') {
    Get();
    for (int c = Get(); c != EOF && c != '"'; c = Get()) item.push_back(static_cast<char>(c));
    // Whatever stands between the closing quote and the delimiter is dropped.
    for (int c = Get(); c != EOF; c = Get()) {
      if (c == ',') break;
      if (c == '\r' || c == '\n') {
        SkipLineEnd(c);
        break;
      }
    }
    return item;
  }
  for (int c = Get(); c != EOF; c = Get()) {
    if (c == ',') break;
    if (c == '\r' || c == '\n') {
      SkipLineEnd(c);
      break;
    }
    item.push_back(static_cast<char>(c));
  }
  while (!item.empty() && (item.back() == ' ' || item.back() == '\t')) item.pop_back();
  return item;
}

std::unique_ptr<ByteFile> ByteFile::OpenForReading(const std::string& path) {
  if (path.empty()) Raise(err::kBadFileName);
  if (IsDirectory(path)) Raise(err::kPathFileAccess);
  std::FILE* f = OpenStdFile(path, "rb");
  if (!f) RaiseFor(errno, path, true);
  std::unique_ptr<ByteFile> file(new ByteFile(f));
  // The caller's blocks are large; a stdio buffer would only add a copy.
  std::setvbuf(f, nullptr, _IONBF, 0);
  return file;
}

ByteFile::~ByteFile() { std::fclose(file_); }

std::size_t ByteFile::Read(char* into, std::size_t max) {
  std::size_t n = std::fread(into, 1, max, file_);
  if (n < max && std::ferror(file_)) Raise(err::kDeviceIO);
  return n;
}

RetryClock SystemRetryClock() {
  return RetryClock{
      [] {
        using namespace std::chrono;
        return static_cast<long long>(duration_cast<seconds>(steady_clock::now().time_since_epoch()).count());
      },
      [] { std::this_thread::sleep_for(std::chrono::milliseconds(250)); }};
}

std::unique_ptr<VbFile> OpenFile(Session& s, UiPort& ui, std::string_view mode, const std::string& name,
                                 int16_t& iErr, const RetryClock& clock) {
  iErr = 0;
  FileMode m = FileMode::Input;
  if (mode == "Append") m = FileMode::Append;
  else if (mode == "Output") m = FileMode::Output;
  else if (mode != "Input") Raise(err::kInvalidCall);

  const long long start = clock.wholeSecondsNow();
  std::string title;
  for (;;) {
    try {
      return VbFile::Open(m, name);
    } catch (const RuntimeError& e) {
      title = "modUtils.OpenFile Error #" + std::to_string(e.Number()) + " " + e.Description();
    }
    if (clock.wholeSecondsNow() - start >= 10) break;
    clock.pause();
  }
  iErr = 1;
  modSound::PlaySound(s, ui, modSound::Sound::Attention);
  ui.ShowMessageBox("The file, '" + name + "' could not be opened.\rThe file may be in use by another program.",
                    title, MessageIcon::Critical);
  return nullptr;
}

}  // namespace tarvenix::modUtils
