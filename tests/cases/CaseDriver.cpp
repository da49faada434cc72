// Runs every case folder tests/cases/<area>/<case>/ through tarvenix-cli, in
// process, and compares what comes out with the folder's expectations.
//
// A case folder holds its input files, "args" (the command line, one argument
// a line; lines starting with "#" are comments) and "expected/": "stdout",
// "stderr", "exit" (the exit status) and one file for each file the run writes,
// under that file's name. The run happens in a scratch copy of the folder, so
// paths in "args" are relative to it. A line "----" in "args" starts another
// run in the same folder, for behaviours that each end a run (usage errors,
// refused files): their outputs follow one another, one exit status a line. The date in a report's first line reads
// "<date>". TARVENIX_UPDATE_CASES=1 rewrites the expectations from the run,
// for a change that was reviewed; git diff shows what changed. An empty file
// "needs-plots" marks a folder whose outputs are those of a build with plots:
// CTest does not run it in a build without Qt.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "Run.h"
#include "session/FileUtils.h"
#include "support/TempDir.h"

namespace fs = std::filesystem;

namespace tarvenix::test {
namespace {

const fs::path kCasesRoot = fs::path(TARVENIX_SOURCE_DIR) / "tests" / "cases";

std::vector<fs::path> FindCases() {
  std::vector<fs::path> cases;
  for (const auto& area : fs::directory_iterator(kCasesRoot)) {
    if (!area.is_directory()) continue;
    for (const auto& c : fs::directory_iterator(area.path()))
      if (c.is_directory()) cases.push_back(c.path());
  }
  std::sort(cases.begin(), cases.end());
  return cases;
}

std::string Slurp(const fs::path& p) { return ReadAll(modUtils::PathText(p)); }

void Spill(const fs::path& p, const std::string& bytes) {
  std::ofstream(p, std::ios::binary) << bytes;
}

// The command lines of the runs.
std::vector<std::vector<std::string>> Runs(const fs::path& argsFile) {
  std::vector<std::vector<std::string>> runs(1);
  std::istringstream in(Slurp(argsFile));
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line == "----") {
      runs.emplace_back();
    } else if (!line.empty() && line[0] != '#') {
      runs.back().push_back(line);
    }
  }
  return runs;
}

// Every file under a folder, by its path relative to the folder ("a/b.txt"),
// with its bytes; the case's own expectations are not among them.
std::map<std::string, std::string> FilesIn(const fs::path& dir) {
  std::map<std::string, std::string> files;
  for (auto it = fs::recursive_directory_iterator(dir); it != fs::recursive_directory_iterator(); ++it) {
    const fs::path rel = fs::relative(it->path(), dir);
    if (it.depth() == 0 && rel == "expected") {
      it.disable_recursion_pending();
    } else if (it->is_regular_file()) {
      files[modUtils::PathText(rel.generic_string<fs::path::value_type>())] = Slurp(it->path());
    }
  }
  return files;
}

// The report's first line carries the time of the run.
std::string WithoutDate(std::string text) {
  const std::string head = "Created using Tarvenix v";
  const std::size_t on = text.find(" on ");
  if (text.rfind(head, 0) == 0 && on < text.find_first_of("\r\n"))
    text.replace(on + 4, text.find_first_of("\r\n") - on - 4, "<date>");
  return text;
}

// A plot's pixels depend on the fonts of the machine and the date in its
// default title: what a case checks of an image is its kind and, where the
// header says, its size.
std::string Described(const std::string& name, std::string bytes) {
  auto u32 = [&](std::size_t at, bool bigEndian) {
    unsigned v = 0;
    for (int k = 0; k < 4; ++k)
      v |= static_cast<unsigned>(static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(k)]))
           << (bigEndian ? 8 * (3 - k) : 8 * k);
    return std::to_string(v);
  };
  const std::string ext = fs::path(name).extension().string();
  if (ext == ".png" && bytes.size() > 24) return "PNG image " + u32(16, true) + "x" + u32(20, true) + "\n";
  if (ext == ".bmp" && bytes.size() > 26) return "BMP image " + u32(18, false) + "x" + u32(22, false) + "\n";
  if (ext == ".jpg" || ext == ".svg" || ext == ".pdf") return ext.substr(1) + " file\n";
  return WithoutDate(std::move(bytes));
}

// What a case's runs give: "stdout", "stderr", "exit" and each file written.
using Outputs = std::map<std::string, std::string>;

Outputs RunCase(const fs::path& caseDir) {
  TempDir scratch;
  const std::map<std::string, std::string> inputs = FilesIn(caseDir);
  for (const auto& [name, bytes] : inputs) {
    if (name == "args") continue;
    fs::create_directories(modUtils::NativePath(scratch.File(name)).parent_path());
    scratch.Write(name, bytes);
  }
  const fs::path home = fs::current_path();
  fs::current_path(modUtils::NativePath(scratch.Path()));
  std::ostringstream out, err, statuses;
  for (const std::vector<std::string>& args : Runs(caseDir / "args")) statuses << cli::Run(args, out, err) << "\n";
  fs::current_path(home);

  Outputs o = {{"stdout", out.str()}, {"stderr", err.str()}, {"exit", statuses.str()}};
  for (const auto& [name, bytes] : FilesIn(modUtils::NativePath(scratch.Path()))) {
    auto in = inputs.find(name);
    if (in == inputs.end() || in->second != bytes) o[name] = Described(name, bytes);
  }
  return o;
}

class Case : public ::testing::TestWithParam<fs::path> {};

TEST_P(Case, GivesItsExpectedOutputs) {
  const fs::path dir = GetParam();
  ASSERT_TRUE(fs::is_regular_file(dir / "args")) << dir << " has no args file";
  const Outputs o = RunCase(dir);
  const fs::path expectedDir = dir / "expected";
  const char* update = std::getenv("TARVENIX_UPDATE_CASES");
  if (update && std::string(update) == "1") {
    fs::remove_all(expectedDir);
    for (const auto& [name, bytes] : o) {
      fs::create_directories((expectedDir / modUtils::NativePath(name)).parent_path());
      Spill(expectedDir / modUtils::NativePath(name), bytes);
    }
    return;
  }
  ASSERT_TRUE(fs::is_directory(expectedDir)) << dir << " has no expected/ folder";
  // Every output must be expected and every expectation met, stdout, stderr
  // and exit included.
  Outputs expected = FilesIn(expectedDir), actual = o;
  for (const auto& [name, bytes] : o) expected.try_emplace(name, "<not in expected/>");
  for (const auto& [name, bytes] : expected) actual.try_emplace(name, "<not written>");
  for (const auto& [name, bytes] : expected) EXPECT_EQ(actual[name], bytes) << "in " << name;
}

std::string CaseName(const ::testing::TestParamInfo<fs::path>& info) {
  std::string name = info.param.parent_path().filename().string() + "_" + info.param.filename().string();
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Folders, Case, ::testing::ValuesIn(FindCases()), CaseName);

}  // namespace
}  // namespace tarvenix::test
