#pragma once
// How the lines of a data history file are read: each line's kind from fixed
// character positions, the cycle numbers they carry, and the channel entries of
// event lines. Positions count from 1, as the data logger's documentation does.

#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvenix::input {

enum class HistoryLineKind { Other, DataCycle, Event, TempCycle, MechCycle };

// The kind of a line from its first bytes: "Cycle #" at 1-7, "::" at 4-5,
// "T =" or "M =" at 5-7. The four want different characters in position 5, so
// at most one matches; that character alone picks the test to make. Every line
// of a file passes here, twice, so it is inline.
inline HistoryLineKind ClassifyHistoryLine(std::string_view line) {
  if (line.size() < 5) return HistoryLineKind::Other;
  const char* p = line.data();
  const bool cycleLine = line.size() >= 7 && p[5] == ' ' && p[6] == '=';
  switch (p[4]) {
    case ':': return p[3] == ':' ? HistoryLineKind::Event : HistoryLineKind::Other;
    case 'T': return cycleLine ? HistoryLineKind::TempCycle : HistoryLineKind::Other;
    case 'M': return cycleLine ? HistoryLineKind::MechCycle : HistoryLineKind::Other;
    case 'e': return line.substr(0, 7) == "Cycle #" ? HistoryLineKind::DataCycle : HistoryLineKind::Other;
    default: return HistoryLineKind::Other;
  }
}
// Position 6 holds "." (read only right after an event line).
inline bool IsContinuationLine(std::string_view line) { return line.size() >= 6 && line[5] == '.'; }

// The leading-number value of a field (as Val), without Val's cost for the
// plain digit fields the logger writes.
double FieldValue(std::string_view field);

// The numbers the lines carry, each converted to 32 bits with rounding (error 6
// out of range): the data cycle from position 9, the temperature cycle from
// position 34 plus 0.6, the mechanical cycle from position 37.
int32_t DataCycleOf(std::string_view line);
int32_t TempCycleOf(std::string_view line);
int32_t MechCycleOf(std::string_view line);
// The occurrence number: the value of positions 1 to 3. Every event line
// passes here, so the logger's three digits are read inline and anything
// else goes through the general rule.
double OccurrenceFieldOf(std::string_view line);
inline double OccurrenceOf(std::string_view line) {
  if (line.size() >= 3) {
    const unsigned hundreds = static_cast<unsigned char>(line[0]) - unsigned{'0'};
    const unsigned tens = static_cast<unsigned char>(line[1]) - unsigned{'0'};
    const unsigned ones = static_cast<unsigned char>(line[2]) - unsigned{'0'};
    if (hundreds < 10 && tens < 10 && ones < 10) return hundreds * 100 + tens * 10 + ones;
  }
  return OccurrenceFieldOf(line);
}

// The channel of an entry from the three characters standing five to three
// places before its ".": a leading "0" means 1000 and up ("024" is 1024).
// Returns 0 and the channel, or the classic error number the conversion raises
// (6 when it does not fit 16 bits).
int DecodeChannel(char c1, char c2, char c3, int16_t& channel);

// The channel entries of one event or continuation line, fed in pieces (a long
// line need not be held whole). The logger's entries are meant to be taken from
// the line's end back to its start; the scanner reads forwards and hands back
// what that backwards walk would see, without remembering more than one
// position per channel:
// - Channels(): the channels to record, in the order the backwards walk meets
//   them first (a channel named twice counts at its rightmost entry);
// - Error(): the classic error the walk then stops with (5 for a "." in
//   positions 1 to 5, 6 or 9 for an entry that names no channel of 0..1024), or
//   0; entries left of that error are never reached;
// - LastDecoded(): the channel of the leftmost entry, the walk's last, if any.
class EntryScanner {
 public:
  static constexpr int kMaxChannel = 1024;

  EntryScanner();
  void Begin();
  void Feed(std::string_view piece);
  // Sorts what was collected; call once after the last piece.
  void End();

  const std::vector<int16_t>& Channels() const { return order_; }
  int Error() const { return error_; }
  bool HasDecoded() const { return hasDecoded_; }
  int16_t LastDecoded() const { return lastDecoded_; }

 private:
  void Entry(uint64_t dotPosition, char c1, char c2, char c3);

  uint64_t fed_ = 0;   // bytes of the line fed so far
  char tail_[5] = {};  // the last five bytes fed
  std::vector<uint64_t> rightmost_;  // per channel 0..1024: position of its rightmost entry
  std::vector<uint32_t> seenIn_;     // per channel: the generation it was last collected in
  uint32_t generation_ = 0;          // moves on with each line and each error, forgetting what came before
  std::vector<int16_t> order_;
  bool repeated_ = false;  // some channel in order_ was named again further right
  int error_ = 0;
  bool hasDecoded_ = false;
  int16_t lastDecoded_ = 0;
};

}  // namespace tarvenix::input
