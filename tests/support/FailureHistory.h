#pragma once
// A small data history file for tests of what comes after the reader: each
// listed channel reaches its first event at the listed data cycle.

#include <string>
#include <utility>
#include <vector>

namespace tarvenix::test {

// {data cycle, channels failing in it}, in ascending order of cycle.
using Failures = std::vector<std::pair<int, std::vector<int>>>;

// The file's text: a heading, then per entry a "Cycle # n" line and an event
// line of occurrence 1 naming the channels (1..999).
std::string FailureHistory(const Failures& failures);

}  // namespace tarvenix::test
