#pragma once
// Lines of a data history file for tests, laid out at the positions the reader
// reads, so each test shows its file as the logger would write it.

#include <string>
#include <utility>
#include <vector>

namespace tarvenix::test {

// "Cycle # n".
std::string DataCycleLine(long long cycle);
// Occurrence number (three digits), "::", then one entry " CCC:O." a channel.
std::string EventLine(int occurrence, const std::vector<int>& channels);
// "T =" at positions 5 to 7 and the text `count` from position 34.
std::string TempLine(const std::string& count);
// "M =" at positions 5 to 7 and the text `count` from position 37.
std::string MechLine(const std::string& count);
// The lines joined, each ended by `eol`.
std::string Lines(const std::vector<std::string>& lines, const std::string& eol = "\r\n");

// {data cycle, channels failing in it}, in ascending order of cycle.
using Failures = std::vector<std::pair<int, std::vector<int>>>;
// A whole file for tests of what comes after the reader: a heading, then per
// entry a data cycle line and an event line of occurrence 1 naming the channels.
std::string FailureHistory(const Failures& failures);

}  // namespace tarvenix::test
