#pragma once
// tarvenix-cli from its arguments to its exit status.

#include <ostream>
#include <string>
#include <vector>

namespace tarvenix::cli {

inline constexpr int kExitComplete = 0;    // every data set reached "Analysis complete."
inline constexpr int kExitIncomplete = 1;  // one did not, or a file could not be written
inline constexpr int kExitUsage = 2;       // the command line was wrong

// Runs the arguments after the program name, writing the results box to `out`
// and messages, status and debug lines to `err`.
int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace tarvenix::cli
