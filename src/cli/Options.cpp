#include "Options.h"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <utility>

namespace tarvenix::cli {
namespace {

bool IsSignedDigits(const std::string& s) {
  std::size_t i = (!s.empty() && (s[0] == '+' || s[0] == '-')) ? 1 : 0;
  if (i == s.size()) return false;
  for (; i < s.size(); ++i)
    if (s[i] < '0' || s[i] > '9') return false;
  return true;
}

// FIRST-LAST split at the first "-" after the first character, so a first
// channel may carry a sign; without such a "-" the last channel stays empty.
void SplitChannels(const std::string& text, DataSetOptions& d) {
  const std::size_t dash = text.empty() ? std::string::npos : text.find('-', 1);
  d.firstCh = text.substr(0, dash);
  d.lastCh = dash == std::string::npos ? "" : text.substr(dash + 1);
}

// A choice among fixed words; sets `error` when the word is none of them.
template <typename T>
void Choose(const std::string& option, const std::string& word,
            std::initializer_list<std::pair<const char*, T>> choices, T& target, std::string& error) {
  std::string names;
  for (const auto& [name, value] : choices) {
    if (word == name) {
      target = value;
      return;
    }
    names += names.empty() ? name : std::string(" or ") + name;
  }
  error = option + " takes " + names + ", not '" + word + "'";
}

class Parser {
 public:
  explicit Parser(const std::vector<std::string>& args) : args_(args) {}

  ParseResult Run() {
    for (i_ = 0; i_ < args_.size() && r_.error.empty(); ++i_) {
      if (!Take(args_[i_])) break;
    }
    if (r_.error.empty() && !o().help && !o().version && o().dataSets.empty())
      r_.error = "no data history file given (--data FILE)";
    return std::move(r_);
  }

 private:
  Options& o() { return r_.options; }

  // Handles one argument; false ends the parse (--help, --version).
  bool Take(const std::string& arg) {
    name_ = arg;
    inline_.reset();
    const std::size_t eq = arg.find('=');
    if (arg.rfind("--", 0) == 0 && eq != std::string::npos) {
      name_ = arg.substr(0, eq);
      inline_ = arg.substr(eq + 1);
    }
    if (name_ == "--help" || name_ == "--version") {
      (name_ == "--help" ? o().help : o().version) = true;
      NoValue();
      return false;
    }
    if (TakeGlobal() || TakeDataSetOption() || TakePlotOption()) return true;
    r_.error = arg.rfind("-", 0) == 0 ? "unknown option '" + arg + "'" : "unexpected argument '" + arg + "'";
    return false;
  }

  bool TakeGlobal() {
    std::string v;
    if (name_ == "--n50" || name_ == "--n63") {
      o().nParamType = name_ == "--n63" ? NParam::N63 : NParam::N50;
      NoValue();
    } else if (name_ == "--fraction") {
      if (Value(v))
        Choose<FractionMethod>(name_, v,
                               {{"unadjusted", FractionMethod::Unadjusted},
                                {"mean", FractionMethod::Mean},
                                {"median", FractionMethod::Median}},
                               o().fractionType, r_.error);
    } else if (name_ == "--confidence") {
      if (Value(v))
        Choose<ConfLevel>(name_, v, {{"90", ConfLevel::Percent90}, {"95", ConfLevel::Percent95}}, o().confLevel,
                          r_.error);
    } else if (name_ == "--ignore-first-cycles") {
      if (Value(v)) Choose<bool>(name_, v, {{"yes", true}, {"no", false}}, o().ignoreFirstCycles, r_.error);
    } else if (name_ == "--report") {
      if (Value(v)) o().reportFile = v;
    } else if (name_ == "--plot-title") {
      Value(o().plotTitle);
    } else if (name_ == "--debug") {
      o().debug = true;
      NoValue();
    } else if (name_ == "--data") {
      if (o().dataSets.size() == kMaxDataSetGroups) {
        r_.error = "at most five data sets can be analysed (a sixth --data)";
      } else if (Value(v)) {
        o().dataSets.push_back(DataSetOptions{});
        o().dataSets.back().dataFile = v;
      }
    } else {
      return false;
    }
    return true;
  }

  bool TakeDataSetOption() {
    static const char* const kNames[] = {"--id", "--channels", "--chsel", "--cycles", "--limit", "--ipc"};
    if (std::find(std::begin(kNames), std::end(kNames), name_) == std::end(kNames)) return false;
    if (o().dataSets.empty()) {
      r_.error = name_ + " belongs to a data set and must follow --data";
      return true;
    }
    DataSetOptions& d = o().dataSets.back();
    std::string v;
    if (name_ == "--ipc") {
      d.ipc = true;
      NoValue();
    } else if (!Value(v)) {
    } else if (name_ == "--id") {
      d.id = v;
    } else if (name_ == "--channels") {
      SplitChannels(v, d);
    } else if (name_ == "--chsel") {
      d.chSelFile = v;
    } else if (name_ == "--cycles") {
      Choose<bool>(name_, v, {{"data", false}, {"temp", true}}, d.tempCycles, r_.error);
    } else if (IsSignedDigits(v)) {
      d.occurrenceLimit = v;
    } else {
      r_.error = "--limit takes a whole number, not '" + v + "'";
    }
    return true;
  }

  bool TakePlotOption() {
    return ParsePlotOption(name_, [this](std::string& v) { return Value(v); }, o().plot, r_.error);
  }

  // The option's value: after "=" or the next argument.
  bool Value(std::string& v) {
    if (inline_) {
      v = *inline_;
      inline_.reset();
      return true;
    }
    if (i_ + 1 >= args_.size()) {
      r_.error = name_ + " needs a value";
      return false;
    }
    v = args_[++i_];
    return true;
  }

  bool NoValue() {
    if (inline_) r_.error = name_ + " takes no value";
    return !inline_;
  }

  const std::vector<std::string>& args_;
  std::size_t i_ = 0;
  std::string name_;
  std::optional<std::string> inline_;
  ParseResult r_;
};

}  // namespace

ParseResult ParseArguments(const std::vector<std::string>& args) { return Parser(args).Run(); }

std::string UsageText() {
  return "Usage: tarvenix-cli [global options] --data FILE [data-set options] [--data FILE [data-set options]] ...\n"
         "\n"
         "Weibull analysis of data history files, without a screen. Each --data group is\n"
         "set up, read and analysed as Add Data Set and OK do in the desktop program, in\n"
         "order, at most five. The settings file is neither read nor written.\n"
         "\n"
         "Global options:\n"
         "  --n50 | --n63            report N50 (default) or N63\n"
         "  --fraction unadjusted|mean|median\n"
         "                           failure fraction j/n (default), j/(n+1) or (j-0.3)/(n+0.4)\n"
         "  --confidence 90|95       confidence level in percent (default 90)\n"
         "  --ignore-first-cycles yes|no\n"
         "                           the answer when channels failed in the first cycle\n"
         "                           (default no: that data set is not analysed)\n"
         "  --report FILE            write the analysis report of all loaded data sets\n"
         "  --plot-title TEXT        the plot title, also printed in the report\n" +
         PlotUsage() +
         "  --debug                  debug mode: trace lines on standard error\n"
         "  --help                   show this help and exit\n"
         "  --version                show the program's version and exit\n"
         "\n"
         "Data-set options (for the latest --data; each group starts from the defaults):\n"
         "  --data FILE              the data history file\n"
         "  --id TEXT                the data set's ID (default \"Data Set #\" and its number)\n"
         "  --channels FIRST-LAST    the range of channels to analyse\n"
         "  --chsel FILE             a channel selection file (chosen over --channels)\n"
         "  --cycles data|temp       count data cycles (default) or temperature/mechanical cycles\n"
         "  --limit N                a channel fails at its N-th event (default 1)\n"
         "  --ipc                    the IPC/JEDEC limit instead: failures from the event array\n"
         "                           file beside FILE (its last 4 characters give way to .ipc)\n"
         "\n"
         "Options take their value as the next argument or after \"=\" (--limit=3).\n"
         "\n"
         "Standard output: the lines of the results box. Standard error: message boxes\n"
         "(\"MESSAGE: \" before the first line), status lines (\"STATUS: \") and debug lines.\n"
         "A setup entry the dialog would refuse stops the run as Cancel would; a data set\n"
         "whose analysis fails stays loaded and the next one runs. The report is written\n"
         "after the run in every case but a usage error.\n"
         "\n"
         "Exit status: 0 when every data set was analysed (\"Analysis complete.\"), 1 when\n"
         "one was not or a file could not be written, 2 for a usage error.\n";
}

}  // namespace tarvenix::cli
