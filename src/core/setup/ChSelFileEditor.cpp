#include "setup/ChSelFileEditor.h"

#include <algorithm>
#include <optional>

#include "base/Basic.h"
#include "session/Utils.h"
#include "session/UiPort.h"

namespace tarvenix::chselfile {
namespace {

using setup::Refusal;
using setup::SetupFocus;

// Checks 1 to 3: the file's name and folder. An existing file is kept unless
// the user lets it go.
std::optional<Refusal> CheckFileName(UiPort& ui, const std::string& name) {
  if (name.empty()) return Refusal{kNoFileName, SetupFocus::txtChSelFile};
  if (modUtils::IsFile(name) && !ui.AskYesNo(kOverwriteQuestion, modUtils::kMessageTitle))
    return Refusal{nullptr, SetupFocus::txtChSelFile};
  std::string folder, file;
  modUtils::GetPathAndFilename(name, folder, file);
  if (!modUtils::IsDirectory(folder)) return Refusal{kInvalidDirectory, SetupFocus::txtChSelFile};
  return std::nullopt;
}

// Checks 4 and 5: the channels to write, or why there are none.
std::optional<Refusal> CollectChannels(const EditorEntries& e, ChannelPages& pages, const PageTicks& ticked,
                                       std::vector<int16_t>& channels) {
  if (e.individual) {
    pages.StorePage(ticked);
    channels = pages.Channels();
    if (channels.size() < 5) return Refusal{setup::kTooFewChannels, SetupFocus::None};
    return std::nullopt;
  }
  if (std::optional<Refusal> r = setup::CheckChannelRange(e.sFirstCh, e.sLastCh)) return r;
  channels.clear();
  for (int ch = setup::ChannelNumber(e.sFirstCh); ch <= setup::ChannelNumber(e.sLastCh); ++ch)
    channels.push_back(static_cast<int16_t>(ch));
  return std::nullopt;
}

}  // namespace

void ChannelPages::StorePage(const PageTicks& ticked) {
  for (int box = 0; box < kBoxesPerPage; ++box)
    if (ticked[box]) flags_[pageStart_ + box] = true;
}

void ChannelPages::MovePage(int direction) {
  if (direction < 0 && pageStart_ >= kBoxesPerPage) pageStart_ -= kBoxesPerPage;
  if (direction > 0 && pageStart_ < kLastPageStart) pageStart_ += kBoxesPerPage;
}

PageTicks ChannelPages::Ticks() const {
  PageTicks ticks{};
  std::copy_n(flags_.begin() + pageStart_, kBoxesPerPage, ticks.begin());
  return ticks;
}

void ChannelPages::ClearAll() { flags_.fill(false); }

void ChannelPages::ClearPage() { std::fill_n(flags_.begin() + pageStart_, kBoxesPerPage, false); }

void ChannelPages::Reset() {
  ClearAll();
  pageStart_ = 0;
}

bool ChannelPages::IsFlagged(int channel) const {
  return channel >= 1 && channel <= kMaxChannels && flags_[channel - 1];
}

std::vector<int16_t> ChannelPages::Channels() const {
  std::vector<int16_t> channels;
  for (int i = 0; i < kMaxChannels; ++i)
    if (flags_[i]) channels.push_back(static_cast<int16_t>(i + 1));
  return channels;
}

std::string ProposedFileName(const std::string& dataDir, const std::string& dataFile) {
  std::string folder, name;
  modUtils::GetPathAndFilename(dataFile, folder, name);
  if (name.size() >= 4) name.resize(name.size() - 4);
  return modUtils::JoinPath(dataDir, name + "_ChSelFile.txt");
}

OkResult WriteChSelFile(Session& s, UiPort& ui, const EditorEntries& entries, ChannelPages& pages,
                        const PageTicks& ticked, const modUtils::RetryClock& clock) {
  OkResult result;
  modUtils::Trapped(s, ui, "frmTarvenixChSelFile.cmdBtnOK", [&] {
    std::vector<int16_t> channels;
    std::optional<Refusal> refusal = CheckFileName(ui, entries.sChSelFile);
    if (!refusal) refusal = CollectChannels(entries, pages, ticked, channels);
    if (refusal) {
      if (refusal->message) modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", refusal->message);
      result.focus = refusal->focus;
      return;
    }
    int16_t iErr = 0;
    std::unique_ptr<modUtils::VbFile> file = modUtils::OpenFile(s, ui, "Output", entries.sChSelFile, iErr, clock);
    if (!file) {
      modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", kCannotOpen);
      result.focus = SetupFocus::txtChSelFile;
      return;
    }
    for (int16_t ch : channels) file->PrintLine(basic::Str(ch));
    file->Close();
    result.written = true;
  });
  return result;
}

}  // namespace tarvenix::chselfile
