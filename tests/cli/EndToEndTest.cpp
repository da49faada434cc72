// tarvenix-cli as a user runs it, on data history files from the simulator.

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/TempDir.h"

namespace {

using tarvenix::test::ReadAll;
using tarvenix::test::TempDir;

std::string Quoted(const std::string& arg) {
  std::string q = "'";
  for (char c : arg) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return q + "'";
}

struct Outcome {
  int status = -1;
  std::string out, err;
};

// Runs a program of the build with its output kept in files of `dir`.
Outcome RunProgram(const TempDir& dir, const std::string& program, const std::vector<std::string>& args) {
  const char* build = std::getenv("TARVENIX_BUILD_DIR");
  std::string command = Quoted(std::string(build ? build : ".") + "/" + program);
  for (const std::string& a : args) command += " " + Quoted(a);
  const std::string out = dir.File("stdout"), err = dir.File("stderr");
  command += " >" + Quoted(out) + " 2>" + Quoted(err);
  const int raw = std::system(command.c_str());
  Outcome o;
  o.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  o.out = ReadAll(out);
  o.err = ReadAll(err);
  return o;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

bool Has(const std::vector<std::string>& lines, const std::string& line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

// The channels the simulator's truth file says reached their first event.
std::set<int> FailedChannels(const std::string& truthFile) {
  std::set<int> channels;
  std::istringstream in(ReadAll(truthFile));
  std::string line;
  std::getline(in, line);  // header
  while (std::getline(in, line)) {
    int channel = 0, occurrence = 0;
    char comma = 0;
    std::istringstream fields(line);
    if (fields >> channel >> comma >> occurrence && occurrence == 1) channels.insert(channel);
  }
  return channels;
}

TEST(CliEndToEnd, AnalysesSimulatedFilesAndWritesTheReport) {
  TempDir dir;
  const std::string history = dir.File("board.txt"), chsel = dir.File("board.chs"), truth = dir.File("truth.csv");
  ASSERT_EQ(RunProgram(dir, "tarvenix-simulate",
                       {"--channels", "40", "--cycles", "2000", "--eta", "600", "--beta", "2.2", "--seed", "11",
                        "--cycle-lines", "temp", "--chsel", chsel, "--truth", truth, history})
                .status,
            0);
  const std::string report = dir.File("analysis.txt");
  Outcome o = RunProgram(dir, "tarvenix-cli",
                         {"--fraction", "median", "--report", report, "--data", history, "--chsel", chsel, "--data",
                          history, "--channels", "1-40", "--cycles", "temp", "--id", "Temp"});
  EXPECT_EQ(o.status, 0) << o.err;
  const std::vector<std::string> out = LinesOf(o.out);
  // Every selected channel that failed is counted (the analysis then leaves the
  // last one out when all failed).
  const std::size_t failed = FailedChannels(truth).size();
  EXPECT_EQ(std::count(out.begin(), out.end(), "Number of analyzed events = " + std::to_string(failed)), 2)
      << o.out;
  EXPECT_TRUE(Has(out, "Temperature or mechanical cycle analysis selected."));
  EXPECT_EQ(LinesOf(o.err), (std::vector<std::string>{
                                "STATUS: Reading history data file ...", "STATUS: Working...",
                                "STATUS: Analysis complete.", "STATUS: Reading history data file ...",
                                "STATUS: Working...", "STATUS: Analysis complete."}));
  // The report repeats the result lines of the results box, with CR LF ends.
  const std::string text = ReadAll(report);
  for (const std::string& line : out) {
    if (line.rfind("BETA =", 0) == 0 || line.rfind("N50 =", 0) == 0 || line.rfind("R-squared =", 0) == 0) {
      EXPECT_NE(text.find("\r\n" + line + "\r\n"), std::string::npos) << line;
    }
  }
  EXPECT_NE(text.find("\r\nData Set #2 - 'Temp' \r\n"), std::string::npos);
  EXPECT_EQ(text.find('\n', 0), text.find("\r\n", 0) + 1);
}

TEST(CliEndToEnd, FailedAnalysesAndStops) {
  struct Case {
    const char* what;
    std::vector<std::string> simulate;
    std::vector<std::string> options;
    int status;
    const char* outLine;
    const char* errLine;
  } cases[] = {
      {"first-cycle failures not ignored", {"--first-cycle-failures", "2"}, {"--channels", "1-12"}, 1,
       "User has chosen not to ignore first data-cycle events. Analysis stopped.", "STATUS: Reading history data file ..."},
      {"first-cycle failures ignored", {"--first-cycle-failures", "2"}, {"--ignore-first-cycles", "yes", "--channels", "1-12"},
       0, "User has chosen to re-run analysis and ignore first data-cycle events.", "STATUS: Analysis complete."},
      {"temperature cycles in a file without them", {}, {"--channels", "1-12", "--cycles", "temp"}, 1,
       "Temperature or mechanical cycles are not available for analysis.", "STATUS: Reading history data file ..."},
  };
  for (const Case& c : cases) {
    TempDir dir;
    const std::string history = dir.File("h.txt");
    std::vector<std::string> simulate = {"--channels", "12", "--cycles", "400", "--eta", "150", "--seed", "5"};
    simulate.insert(simulate.end(), c.simulate.begin(), c.simulate.end());
    simulate.push_back(history);
    ASSERT_EQ(RunProgram(dir, "tarvenix-simulate", simulate).status, 0) << c.what;
    std::vector<std::string> args = {"--data", history};
    args.insert(args.end(), c.options.begin(), c.options.end());
    Outcome o = RunProgram(dir, "tarvenix-cli", args);
    EXPECT_EQ(o.status, c.status) << c.what << "\n" << o.out << o.err;
    EXPECT_TRUE(Has(LinesOf(o.out), c.outLine)) << c.what << "\n" << o.out;
    EXPECT_TRUE(Has(LinesOf(o.err), c.errLine)) << c.what << "\n" << o.err;
  }
}

}  // namespace
