#pragma once
// The channel selection file editor's work, without the window: the channels
// ticked on pages of 64 boxes, the file name it proposes, and OK, which checks
// the entries and writes the file (one channel per line, ascending, no header
// lines) that the channel selection reader takes back.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "session/FileUtils.h"
#include "session/Session.h"
#include "setup/SetupSequence.h"

namespace tarvenix {
class UiPort;
}

namespace tarvenix::chselfile {

inline constexpr int kBoxesPerPage = 64;
// The page start of channels 961..1024.
inline constexpr int16_t kLastPageStart = kMaxChannels - kBoxesPerPage;

// The messages of OK, in the order it checks.
inline constexpr const char* kNoFileName = "Please type in a name for the channel selection file.";
inline constexpr const char* kOverwriteQuestion = "Channel Selection File already exists. OK to Overwrite?";
inline constexpr const char* kInvalidDirectory = "The specified directory is invalid.";
inline constexpr const char* kCannotOpen = "The specified Channel Selection File could not be opened.";

// Whether each of the 64 boxes of a page is ticked.
using PageTicks = std::array<bool, kBoxesPerPage>;

// The channels chosen one by one: a flag for each of channels 1..1024 and the
// page of 64 boxes on show. The boxes and the flags meet only when a page is
// stored, so unticking a box whose channel was stored earlier keeps the channel
// until a clear.
class ChannelPages {
 public:
  // 0, 64 ... 960: the page shows channels PageStart() + 1 .. PageStart() + 64.
  int16_t PageStart() const { return pageStart_; }
  // The channel of box `box` (0..63) on the page on show.
  int Channel(int box) const { return pageStart_ + box + 1; }

  // Flags the channel of every ticked box; an unticked box leaves its flag.
  void StorePage(const PageTicks& ticked);
  // One page towards channel 1 (-1) or 1024 (+1); nothing beyond the ends.
  void MovePage(int direction);
  // The flags of the page on show, as its boxes are to be ticked.
  PageTicks Ticks() const;

  void ClearAll();
  void ClearPage();
  // All flags cleared, the first page on show (the editor as it opens).
  void Reset();

  bool IsFlagged(int channel) const;
  // Every flagged channel, ascending.
  std::vector<int16_t> Channels() const;

 private:
  std::array<bool, kMaxChannels> flags_{};
  int16_t pageStart_ = 0;
};

// The name the editor proposes for the data history file `dataFile`: the data
// folder, the data file's name less its last four characters (its extension),
// and "_ChSelFile.txt". A name of under four characters is kept whole.
std::string ProposedFileName(const std::string& dataDir, const std::string& dataFile);

// The editor's entries at OK.
struct EditorEntries {
  std::string sChSelFile;
  bool individual = true;  // channels ticked one by one, else a first/last range
  std::string sFirstCh;
  std::string sLastCh;
};

struct OkResult {
  bool written = false;
  // Where the focus goes when the editor stays open.
  setup::SetupFocus focus = setup::SetupFocus::None;
};

// OK: a file name is needed; an existing file is overwritten only when the user
// answers Yes; its folder must exist; with individual channels the page on
// show (`ticked`) is stored and at least 5 channels must be flagged, with a
// range the setup dialog's range checks apply. Then the file is opened through
// the common file opening (with its retry) and written, replacing an old one
// whole. Each refusal shows its message and leaves the editor open.
// Errors: "frmTarvenixChSelFile.cmdBtnOK".
OkResult WriteChSelFile(Session& s, UiPort& ui, const EditorEntries& entries, ChannelPages& pages,
                        const PageTicks& ticked, const modUtils::RetryClock& clock = modUtils::SystemRetryClock());

}  // namespace tarvenix::chselfile
