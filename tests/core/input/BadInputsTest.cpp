// What a user sees for each bad input: the program's own message, and then the
// program carries on. Data history and channel selection files go through the
// setup dialog's OK as the user gives them; settings files through start-up
// and quitting. README's "Bad inputs" table summarises these rows.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "analysis/Messages.h"
#include "session/Session.h"
#include "settings/SettingsIO.h"
#include "setup/SetupSequence.h"
#include "support/HistoryText.h"
#include "support/FailurePoints.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::test {
namespace {

namespace fs = std::filesystem;
using setup::FinishUpResult;
using setup::SetupMode;

constexpr const char* kComplete = "Analysis complete.";
constexpr const char* kFailed = "Analysis did not complete successfully.";
constexpr const char* kReading = "Reading history data file ...";
constexpr const char* kTooFew = "Analysis requires at least 5 failed channels.";

std::string ErrorBox(const std::string& label, int number, const std::string& description) {
  return "Error in " + label + " - Error #" + std::to_string(number) + "  " + description + "\r";
}
std::string ReaderBox(int number, const std::string& description) {
  return ErrorBox("modTarvenix.ProcessData", number, description);
}
std::string ChannelsBox(int number, const std::string& description) {
  return ErrorBox("modTarvenix.CheckSetupEntries", number, description);
}
// A refused channel selection file; "{file}" stands for its path.
std::string Refusal(int line, const std::string& reason) {
  return "Error in  - Error #0  \rError in channel selection file:\r{file}\rat line number: " + std::to_string(line) +
         "\r\r" + reason;
}

// Ten channels, eight of which fail at their first event, one a cycle; with
// `tempJunk`, a temperature cycle line ending in it after each cycle's events.
std::vector<std::string> EightOfTen(const char* tempJunk = nullptr) {
  std::vector<std::string> lines = {"Vorlantic Data History File"};
  int cycle = 10;
  for (int ch : {3, 1, 7, 2, 9, 4, 5, 8}) {
    lines.push_back(DataCycleLine(cycle));
    lines.push_back(EventLine(1, {ch}));
    if (tempJunk) lines.push_back(TempLine(std::to_string(cycle) + ".0" + tempJunk));
    cycle += 10;
  }
  return lines;
}
std::vector<std::string> EightOfTenAnd(const std::string& line) {
  std::vector<std::string> lines = EightOfTen();
  lines.push_back(line);
  return lines;
}

// One session at the setup dialog.
struct Desk {
  TempDir dir;
  Session s;
  RecordingUi ui;
  std::string named;  // the channel selection or event array file of the row, if any

  Desk() { s.bSoundStatus = false; }

  // The dialog's entries for a data history file read with channels 1..10,
  // occurrence limit 1, data cycles.
  DataSetSettings Entries(const std::string& dataFile) const { return RangeSetup("bad input", dataFile); }
  DataSetSettings History(const std::string& content) { return Entries(dir.Write("run.txt", content)); }
  DataSetSettings TempHistory(const std::string& content) {
    DataSetSettings c = History(content);
    c.bDataCycles = false;
    c.bTempCycles = true;
    return c;
  }
  DataSetSettings ChannelFile(const std::string& content) {
    DataSetSettings c = History(Lines(EightOfTen()));
    c.bFirstLastCh = false;
    c.bChSelFile = true;
    c.sChSelFile = named = dir.Write("channels.txt", content);
    return c;
  }
  DataSetSettings EventArray(const std::string& content) {
    DataSetSettings c = History("");
    c.bNumOccurrences = false;
    c.bIPCOccurrences = true;
    named = dir.Write("run.ipc", content);
    return c;
  }

  // Add Data Set, the entries over what the dialog showed, OK; Cancel when
  // the dialog stays open.
  FinishUpResult Add(const DataSetSettings& c) {
    DataSetSettings shown;
    setup::ActivateSetup(s, ui, SetupMode::Add, shown);
    FinishUpResult r = setup::FinishUp(s, ui, SetupMode::Add, c);
    if (!r.accepted) setup::CancelSetup(s, ui);
    return r;
  }

  // The program carries on: the next data set is read and analysed as usual.
  bool AnalysesTheNextDataSet() {
    ui = RecordingUi();
    Add(History(Lines(EightOfTen())));
    return !ui.statuses.empty() && ui.statuses.back() == kComplete && ui.messages.empty();
  }

  // The messages and results lines with the row's file named "{file}".
  std::string Unplaced(std::string text) const {
    if (std::size_t at = text.find(named); !named.empty() && at != std::string::npos)
      text.replace(at, named.size(), "{file}");
    return text;
  }
  std::vector<std::string> Messages() const {
    std::vector<std::string> texts = ui.MessageTexts();
    for (std::string& t : texts) t = Unplaced(t);
    return texts;
  }
  bool ResultsHold(const std::string& line) const {
    return std::any_of(ui.textLines.begin(), ui.textLines.end(),
                       [&](const std::string& shown) { return Unplaced(shown) == line; });
  }
};

struct Row {
  const char* input;
  std::function<DataSetSettings(Desk&)> enter;
  std::vector<std::string> messages;  // every message box, in order
  const char* status;                 // the status line at the end
  std::string resultsLine;            // a line the results box holds ("" for none)
};

std::string Utf16(const std::string& text) {
  std::string wide = "\xff\xfe";
  for (char c : text) wide += std::string{c, '\0'};
  return wide;
}

std::string PseudoRandomBytes(std::size_t n) {
  std::string bytes(n, '\0');
  uint32_t state = 2024;
  for (char& b : bytes) b = static_cast<char>((state = state * 1103515245u + 12345u) >> 24);
  return bytes;
}

// A data history file of 1025 event entries: each of channels 1..1024 fails in
// a data cycle of its own, then channel 1 is named once more.
std::string AllChannelsAndOneMore() {
  std::vector<std::string> lines;
  for (int ch = 1; ch <= 1024; ++ch) {
    lines.push_back(DataCycleLine(ch + 1));
    lines.push_back(EventLine(1, {ch}));
  }
  lines.push_back(DataCycleLine(2000));
  lines.push_back(EventLine(1, {1}));
  return Lines(lines);
}

TEST(BadInputs, DataHistoryFiles) {
  const std::vector<Row> rows = {
      {"empty file", [](Desk& d) { return d.History(""); }, {kTooFew}, kFailed, "Number of analyzed events = 0"},
      {"only blank lines", [](Desk& d) { return d.History("\r\n\r\n\n\r  \r\n"); }, {kTooFew}, kFailed, ""},
      {"a binary file", [](Desk& d) { return d.History(PseudoRandomBytes(64 * 1024)); }, {kTooFew}, kFailed, ""},
      {"NUL bytes in and between the lines",
       [](Desk& d) {
         std::vector<std::string> lines = EightOfTen();
         lines[0] = std::string("Vorlantic\0\0\0", 12);
         lines.insert(lines.begin() + 3, std::string(40, '\0'));
         return d.History(Lines(lines));
       },
       {}, kComplete, "Number of analyzed events = 8"},
      {"UTF-16 text", [](Desk& d) { return d.History(Utf16(Lines(EightOfTen()))); }, {kTooFew}, kFailed, ""},
      {"a \".\" in position 2 of an event line",
       [](Desk& d) { return d.History(Lines({DataCycleLine(3), "1. ::   5:O."})); },
       {ReaderBox(5, "Invalid procedure call or argument")}, kReading, ""},
      {"a \".\" in position 5 of a continuation line",
       [](Desk& d) { return d.History(Lines({DataCycleLine(3), EventLine(1, {4}), "    .."})); },
       {ReaderBox(5, "Invalid procedure call or argument")}, kReading, ""},
      {"1025 event entries for 1024 channels",
       [](Desk& d) {
         DataSetSettings c = d.History(AllChannelsAndOneMore());
         c.sLastCh = "1024";
         return c;
       },
       {}, kComplete, "Number of analyzed events = 1024"},
      {"an occurrence number \"ab:\"", [](Desk& d) { return d.History(Lines(EightOfTenAnd("ab:::  10:O."))); }, {},
       kComplete, "Number of analyzed events = 8"},
      {"an entry \"abc.\"", [](Desk& d) { return d.History(Lines(EightOfTenAnd("001::abc:O."))); }, {}, kComplete,
       "Number of analyzed events = 8"},
      {"a \"Cycle #\" with no number",
       [](Desk& d) {
         std::vector<std::string> lines = EightOfTen();
         lines[1] = "Cycle #";
         return d.History(Lines(lines));
       },
       {}, kReading, "User has chosen not to ignore first data-cycle events. Analysis stopped."},
      {"a number past 32 bits after \"Cycle #\"",
       [](Desk& d) { return d.History(Lines({DataCycleLine(4294967296LL), EventLine(1, {1})})); },
       {ReaderBox(6, "Overflow")}, kReading, ""},
      {"\"T =\" lines with junk after position 34",
       [](Desk& d) { return d.TempHistory(Lines(EightOfTen(" C  ramp 3/4 #%&"))); }, {}, kComplete,
       "Number of analyzed events = 8"},
      {"a \"T =\" line whose count passes 32 bits",
       [](Desk& d) { return d.TempHistory(Lines({DataCycleLine(4), EventLine(1, {1}), TempLine("9E99")})); },
       {ReaderBox(6, "Overflow")}, kReading, ""},
      {"a folder instead of the file", [](Desk& d) { return d.Entries(d.dir.Path()); },
       {setup::kDataFileMissing}, "", ""},
  };
  for (const Row& row : rows) {
    Desk d;
    d.Add(row.enter(d));
    EXPECT_EQ(d.Messages(), row.messages) << row.input;
    EXPECT_EQ(d.ui.statuses.empty() ? "" : d.ui.statuses.back(), row.status) << row.input;
    if (!row.resultsLine.empty()) {
      EXPECT_TRUE(d.ResultsHold(row.resultsLine)) << row.input;
    }
    EXPECT_TRUE(d.AnalysesTheNextDataSet()) << "after " << row.input;
  }
}

TEST(BadInputs, ChannelSelectionFiles) {
  std::string twoThousand;
  for (int ch = 1; ch <= 2000; ++ch) twoThousand += std::to_string(ch) + "\r\n";
  const std::vector<Row> rows = {
      {"2000 entries", [&](Desk& d) { return d.ChannelFile(twoThousand); },
       {Refusal(1025, "Channel numbers must be between 1 and 1024.")}, "", ""},
      {"a duplicate", [](Desk& d) { return d.ChannelFile("5\r\n6\r\n5\r\n"); },
       {Refusal(3, "Duplicate channel number.")}, "", ""},
      {"a negative number", [](Desk& d) { return d.ChannelFile("3\r\n-4\r\n"); },
       {Refusal(2, "Channel numbers must be between 1 and 1024.")}, "", ""},
      {"an entry \"abc.\"", [](Desk& d) { return d.ChannelFile("1\r\nabc.\r\n"); },
       {Refusal(2, "A non-numeric character was found.")}, "", ""},
      {"\"START:\" with 1E20", [](Desk& d) { return d.ChannelFile("START: 1E20\r\n1\r\n"); },
       {ChannelsBox(6, "Overflow")}, "", ""},
      {"a channel past 16 bits", [](Desk& d) { return d.ChannelFile("1\r\n40000\r\n"); },
       {ChannelsBox(6, "Overflow")}, "", ""},
      {"an empty file", [](Desk& d) { return d.ChannelFile(""); },
       {ChannelsBox(62, "Input past end of file")}, "", ""},
      {"a binary file", [](Desk& d) { return d.ChannelFile(PseudoRandomBytes(4096)); },
       {Refusal(1, "A non-numeric character was found.")}, "", ""},
      {"a folder instead of the file",
       [](Desk& d) {
         DataSetSettings c = d.ChannelFile("1\r\n");
         c.sChSelFile = d.dir.Path();
         return c;
       },
       {setup::kChSelFileMissing}, "", ""},
  };
  for (const Row& row : rows) {
    Desk d;
    EXPECT_FALSE(d.Add(row.enter(d)).accepted) << row.input;
    EXPECT_EQ(d.Messages(), row.messages) << row.input;
    EXPECT_TRUE(d.ui.statuses.empty()) << row.input << ": nothing was read";
    EXPECT_TRUE(d.AnalysesTheNextDataSet()) << "after " << row.input;
  }
}

// Channel lines of an event array file: channel, data cycles, "T", temperature cycles.
std::string ChannelLines(int from, int to) {
  std::string lines;
  for (int ch = from; ch <= to; ++ch) lines += std::to_string(ch) + ":,T,\r\n";
  return lines;
}

TEST(BadInputs, EventArrayFiles) {
  const std::string cannot = "The IPC/JEDEC file {file} cannot be used: ";
  const std::vector<Row> rows = {
      {"a file cut short", [](Desk& d) { return d.EventArray("' header\r\n" + ChannelLines(1, 300)); }, {}, kReading,
       (cannot + "it ends after 300 channel lines (line 301); the rule needs 1024.")},
      {"a channel named twice", [](Desk& d) { return d.EventArray(ChannelLines(1, 5) + ChannelLines(5, 1024)); }, {},
       kReading, (cannot + "line 6 names channel 5 a second time.")},
      {"a cycle count past 32 bits",
       [](Desk& d) { return d.EventArray("1:9E99,T,5,\r\n" + ChannelLines(2, 1024)); }, {}, kReading,
       (cannot + "line 1 holds \"9E99\", which is not a cycle count followed by \",\".")},
      {"a binary file", [](Desk& d) { return d.EventArray(PseudoRandomBytes(4096)); }, {}, kReading, ""},
      {"an empty file", [](Desk& d) { return d.EventArray(""); }, {}, kReading,
       (cannot + "it ends after 0 channel lines (line 0); the rule needs 1024.")},
  };
  for (const Row& row : rows) {
    Desk d;
    EXPECT_TRUE(d.Add(row.enter(d)).accepted) << row.input;
    EXPECT_EQ(d.Messages(), row.messages) << row.input;
    EXPECT_EQ(d.ui.statuses.back(), row.status) << row.input;
    if (!row.resultsLine.empty()) {
      EXPECT_TRUE(d.ResultsHold(row.resultsLine)) << row.input;
    }
    EXPECT_FALSE(d.ResultsHold("Finished reading data history file.")) << row.input;
    EXPECT_TRUE(d.AnalysesTheNextDataSet()) << "after " << row.input;
  }
}

TEST(BadInputs, FilesThatCannotBeRead) {
  const std::vector<Row> rows = {
      {"an unreadable data history file", [](Desk& d) { return d.History(Lines(EightOfTen())); },
       {ReaderBox(75, "Path/File access error")}, kReading, ""},
      {"an unreadable channel selection file", [](Desk& d) { return d.ChannelFile("1\r\n2\r\n"); },
       {ChannelsBox(75, "Path/File access error")}, "", ""},
  };
  for (const Row& row : rows) {
    Desk d;
    DataSetSettings c = row.enter(d);
    OpenForEveryone(d.dir.Path());
    fs::permissions(c.bChSelFile ? c.sChSelFile : c.sDataFile, fs::perms::none);
    const std::string seen = AsUnprivilegedUser([&] {
      d.Add(c);
      std::string text;
      for (const std::string& m : d.Messages()) text += m + "\n";
      return text + "status: " + (d.ui.statuses.empty() ? "" : d.ui.statuses.back());
    });
    std::string expected;
    for (const std::string& m : row.messages) expected += m + "\n";
    EXPECT_EQ(seen, expected + "status: " + row.status) << row.input;
  }
}

// Takes the data history file away while the user is told the second pass is
// under way.
class VanishingFileUi : public RecordingUi {
 public:
  std::string file;
  void UpdateStatus(const std::string& sMsg) override {
    if (sMsg == "Working...") fs::remove(file);
    RecordingUi::UpdateStatus(sMsg);
  }
};

TEST(BadInputs, ADataHistoryFileDeletedBetweenThePasses) {
  Desk d;
  VanishingFileUi ui;
  DataSetSettings c = d.History(Lines(EightOfTen()));
  ui.file = c.sDataFile;
  DataSetSettings shown;
  setup::ActivateSetup(d.s, ui, SetupMode::Add, shown);
  EXPECT_TRUE(setup::FinishUp(d.s, ui, SetupMode::Add, c).accepted);
  EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{ReaderBox(53, "File not found")});
  EXPECT_EQ(ui.statuses.back(), "Working...");
}

struct Settings {
  TempDir dir;
  Session s;
  RecordingUi ui;
  Settings() {
    s.bSoundStatus = false;
    s.sDataLogDir = dir.File("Vorlantic") + "/";
    fs::create_directories(s.sDataLogDir);
  }
  std::string File() const { return modIO::SettingsFilePath(s); }
};

TEST(BadInputs, SettingsFiles) {
  struct SettingsRow {
    const char* input;
    std::string content;
    std::vector<std::string> messages;
    std::array<int16_t, 3> options;
  } rows[] = {
      {"a 10 KB number", "[General]\r\nN50/N63 Parameter=1\r\nFailure Fraction=" + std::string(10240, '1') + "\r\n",
       {ErrorBox("modIO.ReadTarvenixIni", 6, "Overflow")}, {1, 0, 0}},
      {"a 10 KB text", "[General]\r\nConfidence Level=1\r\nSound Status=" + std::string(10240, 'x') + "\r\n",
       {ErrorBox("modIO.ReadTarvenixIni", 13, "Type mismatch")}, {0, 0, 1}},
      {"10 KB of zeros", "[General]\r\nFailure Fraction=" + std::string(10240, '0') + "2\r\n", {}, {0, 0, 0}},
      {"binary junk", PseudoRandomBytes(8192), {}, {0, 0, 0}},
      {"no section header", "N50/N63 Parameter=1\r\nFailure Fraction=2\r\n", {}, {0, 0, 0}},
      {"UTF-16 text", Utf16("[General]\r\nN50/N63 Parameter=1\r\n"), {}, {0, 0, 0}},
  };
  for (const SettingsRow& row : rows) {
    Settings env;
    env.dir.Write("Vorlantic/Tarvenix.ini", row.content);
    modIO::ReadTarvenixIni(env.s, env.ui);
    EXPECT_EQ(env.ui.MessageTexts(), row.messages) << row.input;
    EXPECT_EQ(env.s.iAnalysisOptions, row.options) << row.input;

    // Quitting writes the settings over whatever was there.
    EXPECT_TRUE(modIO::WriteTarvenixIni(env.s, env.ui)) << row.input;
    Session again;
    again.sDataLogDir = env.s.sDataLogDir;
    modIO::ReadTarvenixIni(again, env.ui);
    EXPECT_EQ(again.iAnalysisOptions, row.options) << row.input;
  }
}

TEST(BadInputs, ASettingsFolderThatCannotBeWrittenAtQuit) {
  Settings env;
  const std::string old = "[General]\r\nSound Status=False\r\n; mine\r\n";
  env.dir.Write("Vorlantic/Tarvenix.ini", old);
  env.s.iAnalysisOptions = {1, 1, 1};
  OpenForEveryone(env.dir.Path());
  fs::permissions(env.s.sDataLogDir, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  const std::string seen = AsUnprivilegedUser([&] {
    const bool written = modIO::WriteTarvenixIni(env.s, env.ui);
    std::string text = written ? "written" : "refused";
    for (const std::string& m : env.ui.MessageTexts()) text += "\n" + m;
    return text;
  });
  EXPECT_EQ(seen, "refused\n" + ErrorBox("modIniFiles.PutKeyValue", 75, "Path/File access error") +
                      "The settings could not be saved to " + env.File());
  EXPECT_EQ(ReadAll(env.File()), old);
  EXPECT_EQ(std::distance(fs::directory_iterator(env.s.sDataLogDir), fs::directory_iterator()), 1)
      << "no temporary file is left behind";
}

}  // namespace
}  // namespace tarvenix::test
