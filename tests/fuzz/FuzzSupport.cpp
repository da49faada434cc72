#include "FuzzSupport.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <algorithm>
#include <filesystem>

#include "session/Session.h"

namespace fs = std::filesystem;

namespace tarvenix::fuzz {

uint8_t InputHeader::Byte() { return pos_ < size_ ? data_[pos_++] : uint8_t{0}; }

int16_t InputHeader::Int16() {
  const uint16_t lo = Byte();
  const uint16_t hi = Byte();
  return static_cast<int16_t>(static_cast<uint16_t>(lo | (hi << 8)));
}

int32_t InputHeader::Int32() {
  uint32_t v = 0;
  for (int shift = 0; shift < 32; shift += 8) v |= static_cast<uint32_t>(Byte()) << shift;
  return static_cast<int32_t>(v);
}

std::string_view InputHeader::Bytes(std::size_t n) {
  const std::size_t take = std::min(n, size_ - std::min(pos_, size_));
  std::string_view bytes(reinterpret_cast<const char*>(data_) + pos_, take);
  pos_ += take;
  return bytes;
}

std::string_view InputHeader::Rest() { return Bytes(size_); }

namespace {

// Made once and kept to the end, so the clean-up at exit can still name it.
const std::string& ScratchFolder() {
  static const std::string* const folder = [] {
    std::error_code ec;
    fs::path base = fs::is_directory("/dev/shm", ec) ? fs::path("/dev/shm") : fs::temp_directory_path();
    fs::path dir = base / ("tarvenix-fuzz-" + std::to_string(getpid()));
    fs::create_directories(dir);
    std::atexit([] {
      std::error_code ignored;
      fs::remove_all(ScratchFolder(), ignored);
    });
    return new std::string(dir.string());
  }();
  return *folder;
}

}  // namespace

std::string ScratchPath(std::string_view name) { return (fs::path(ScratchFolder()) / name).string(); }

std::string WriteScratch(std::string_view name, std::string_view bytes) {
  const std::string path = ScratchPath(name);
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (!f || (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), f) != bytes.size()) ||
      std::fclose(f) != 0) {
    std::perror(path.c_str());
    std::abort();
  }
  return path;
}

ReaderSettings ReadReaderSettings(InputHeader& in, Session& s) {
  ReaderSettings r;
  r.flags = in.Byte();
  r.number = in.Int16();
  s.lInitialCycle(0) = in.Int32();
  s.lInitialCycle(1) = in.Int32();
  r.first = std::clamp<int>(in.Int16(), 1, kMaxChannels);
  r.last = std::clamp<int>(in.Int16(), r.first, kMaxChannels);
  s.iMinFailures = static_cast<int16_t>(1 + in.Byte() % 5);
  return r;
}

void PrepareReader(const ReaderSettings& r, Session& s, CountingUi& ui) {
  s.bSoundStatus = false;
  s.iDataSetNum = 1;
  s.iNumDataSets = 1;
  s.bDataCycles = (r.flags & 1) != 0;
  s.bDebug = (r.flags & 2) != 0;
  s.bIgnoreFirstCycles = (r.flags & 16) != 0;
  s.sDataIDs(1) = "fuzz";
  s.iFirstChannels(1) = static_cast<int16_t>(r.first);
  s.iLastChannels(1) = static_cast<int16_t>(r.last);
  for (int ch = r.first; ch <= r.last; ++ch) s.iChSelected(ch) = 1;
  s.iGroupSize(1) = static_cast<int16_t>(r.last - r.first + 1);
  const int answer = (r.flags >> 2) & 3;
  if (answer == 1) ui.firstCycleAnswer = true;
  if (answer >= 2) ui.firstCycleAnswer = false;
}

void CheckReaderRun(const Session& s, const CountingUi& ui, int16_t iErr, bool ipcLimit) {
  // The lines ProcessData writes before it reads anything.
  constexpr int kRunHeaderLines = 6;
  Require(iErr == 0 || iErr == 1 || (ipcLimit && iErr == -1), "the error flag is one the caller knows",
          std::to_string(iErr));
  Require(iErr == 0 || ui.messages > 0 || ui.textLines > kRunHeaderLines, "a stopped run says why");
  int selected = 0;
  for (int ch = 1; ch <= kMaxChannels; ++ch) selected += s.iChSelected(ch);
  Require(s.iChSelected(0) == 0, "channel 0 is never selected");
  Require(s.iGroupSize(1) == selected, "the group size counts the selected channels",
          std::to_string(s.iGroupSize(1)) + " vs " + std::to_string(selected));
}

void Require(bool holds, const char* property, const std::string& detail) {
  if (holds) return;
  std::fprintf(stderr, "Property failed: %s\n%s\n", property, detail.c_str());
  std::abort();
}

}  // namespace tarvenix::fuzz
