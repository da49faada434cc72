// tarvenix-simulate: writes the data history file of a simulated cycling test
// (and, on request, its channel selection file and the list of its events).

#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

#include "HistorySimulator.h"

namespace {

using tarvenix::sim::CycleLines;
using tarvenix::sim::SimOptions;

const char* const kUsage =
    "Usage: tarvenix-simulate [options] OUTPUT\n"
    "Writes the data history file of a simulated cycling test to OUTPUT (\"-\" for standard output).\n"
    "\n"
    "  --channels N              channels under test, 1..1024 (32)\n"
    "  --first-channel N         number of the first channel (1)\n"
    "  --cycles N                data cycles the test ran (1000)\n"
    "  --beta X                  Weibull shape of the channels' lives (2.5)\n"
    "  --eta X                   Weibull characteristic life in data cycles (400)\n"
    "  --seed N                  random seed; the same seed gives the same file (1)\n"
    "  --occurrences N           events per failed channel, 1 to N (3)\n"
    "  --max-gap N               data cycles between a channel's events, 1 to N (5)\n"
    "  --keep-reporting P        after its last event a failed channel reports one on each\n"
    "                            later data cycle with chance P %; its occurrence number\n"
    "                            counts on to 999 and stays there (0)\n"
    "  --cycle-lines KIND        none, temp or mech: a cycle line after each data cycle (none)\n"
    "  --data-per-cycle N        data cycles per temperature/mechanical cycle (1)\n"
    "  --first-cycle-failures N  channels that fail in the first cycle (0)\n"
    "  --noise N                 noise lines after each data cycle line (0)\n"
    "  --line-end KIND           crlf, lf or cr (crlf)\n"
    "  --wrap N                  longest event line before continuation lines (80)\n"
    "  --start N                 data cycles before the test; writes START: N (none)\n"
    "  --tstart N                temperature/mechanical cycles before it; writes TSTART: N (none)\n"
    "  --chsel FILE              also write a channel selection file\n"
    "  --truth FILE              also write every event as channel,occurrence,data_cycle,cycle\n"
    "  --ipc                     shape each failure for the IPC/JEDEC rule and also write the event\n"
    "                            array file (OUTPUT less its last 4 characters, then .ipc); needs\n"
    "                            --cycle-lines temp or mech\n"
    "  --ipc-noise N             isolated events the rule rejects before a failure, 0 to N\n"
    "                            (at most 1 with temp, 7 with mech) (0)\n"
    "  --help                    this text\n";

template <typename T>
bool ParseNumber(std::string_view text, T& value) {
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  return ec == std::errc() && end == text.data() + text.size();
}

bool ParseDouble(const std::string& text, double& value) {
  char* end = nullptr;
  value = std::strtod(text.c_str(), &end);
  return !text.empty() && end == text.c_str() + text.size();
}

int Fail(const std::string& message) {
  std::fprintf(stderr, "tarvenix-simulate: %s\n", message.c_str());
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  SimOptions o;
  std::string output, chsel, truth;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--help" || arg == "-h") {
      std::fputs(kUsage, stdout);
      return 0;
    }
    if (arg == "--ipc") {
      o.ipc = true;
      continue;
    }
    if (arg.rfind("--", 0) != 0 || arg == "-") {
      if (!output.empty()) return Fail("more than one OUTPUT given");
      output = arg;
      continue;
    }
    if (i + 1 >= argc) return Fail(arg + " needs a value");
    const std::string value = argv[++i];
    bool ok = true;
    if (arg == "--channels") ok = ParseNumber(value, o.channels);
    else if (arg == "--first-channel") ok = ParseNumber(value, o.firstChannel);
    else if (arg == "--cycles") ok = ParseNumber(value, o.cycles);
    else if (arg == "--beta") ok = ParseDouble(value, o.beta);
    else if (arg == "--eta") ok = ParseDouble(value, o.eta);
    else if (arg == "--seed") ok = ParseNumber(value, o.seed);
    else if (arg == "--occurrences") ok = ParseNumber(value, o.occurrences);
    else if (arg == "--max-gap") ok = ParseNumber(value, o.maxGap);
    else if (arg == "--keep-reporting") ok = ParseNumber(value, o.keepReporting);
    else if (arg == "--data-per-cycle") ok = ParseNumber(value, o.dataPerCycle);
    else if (arg == "--ipc-noise") ok = ParseNumber(value, o.ipcNoise);
    else if (arg == "--first-cycle-failures") ok = ParseNumber(value, o.firstCycleFailures);
    else if (arg == "--noise") ok = ParseNumber(value, o.noise);
    else if (arg == "--wrap") ok = ParseNumber(value, o.wrap);
    else if (arg == "--start") ok = (o.startHeader = true, ParseNumber(value, o.start));
    else if (arg == "--tstart") ok = (o.tstartHeader = true, ParseNumber(value, o.tstart));
    else if (arg == "--chsel") chsel = value;
    else if (arg == "--truth") truth = value;
    else if (arg == "--cycle-lines") {
      if (value == "none") o.cycleLines = CycleLines::None;
      else if (value == "temp") o.cycleLines = CycleLines::Temperature;
      else if (value == "mech") o.cycleLines = CycleLines::Mechanical;
      else ok = false;
    } else if (arg == "--line-end") {
      if (value == "crlf") o.lineEnd = "\r\n";
      else if (value == "lf") o.lineEnd = "\n";
      else if (value == "cr") o.lineEnd = "\r";
      else ok = false;
    } else {
      return Fail("unknown option " + arg + " (see --help)");
    }
    if (!ok) return Fail("bad value for " + arg + ": " + value);
  }
  if (output.empty()) return Fail("no OUTPUT given (see --help)");
  if (std::string problem = tarvenix::sim::CheckOptions(o); !problem.empty()) return Fail(problem);
  if (o.ipc && (output == "-" || output.size() < 5)) return Fail("--ipc needs an OUTPUT file name of 5 characters or more");

  try {
    const tarvenix::sim::SimTest test = tarvenix::sim::PlanTest(o);
    tarvenix::sim::WriteHistoryFile(o, test, output);
    if (o.ipc) tarvenix::sim::WriteEventArrayFile(o, test, tarvenix::sim::EventArrayPath(output));
    if (!chsel.empty()) tarvenix::sim::WriteChannelSelectionFile(o, test, chsel);
    if (!truth.empty()) tarvenix::sim::WriteTruthFile(o, test, truth);
  } catch (const std::exception& e) {
    return Fail(e.what());
  }
  return 0;
}
