#pragma once
// The command line of tarvenix-cli: global options, then one group of data-set
// options per --data. Everything is checked here, before anything runs.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "CliPlot.h"
#include "session/Session.h"

namespace tarvenix::cli {

// One --data group: what the user would enter in the setup dialog. Unset
// options keep the dialog's defaults.
struct DataSetOptions {
  std::string dataFile;
  std::optional<std::string> id;
  std::optional<std::string> firstCh;  // --channels FIRST-LAST, split as typed
  std::optional<std::string> lastCh;
  std::optional<std::string> chSelFile;
  bool tempCycles = false;
  std::string occurrenceLimit = "1";
  bool ipc = false;
};

struct Options {
  bool help = false;
  bool version = false;
  NParam nParamType = NParam::N50;
  FractionMethod fractionType = FractionMethod::Unadjusted;
  ConfLevel confLevel = ConfLevel::Percent90;
  bool ignoreFirstCycles = false;
  std::optional<std::string> reportFile;
  std::string plotTitle;
  bool debug = false;
  PlotOptions plot;
  std::vector<DataSetOptions> dataSets;
};

inline constexpr std::size_t kMaxDataSetGroups = 5;

struct ParseResult {
  Options options;
  std::string error;  // a usage error when not empty
};

// Parses the arguments after the program name. "--name VALUE" and
// "--name=VALUE" are both accepted. --help and --version end the parse.
ParseResult ParseArguments(const std::vector<std::string>& args);

// The text of --help.
std::string UsageText();

}  // namespace tarvenix::cli
