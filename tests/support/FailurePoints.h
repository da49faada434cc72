#pragma once
// Failure data as the reader leaves it, for tests of the analysis and of what
// shows its results.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "session/Session.h"
#include "session/UiPort.h"

namespace tarvenix::test {

// {data cycle, channels failed so far}, one per failure point.
using FailurePoints = std::vector<std::pair<int32_t, int32_t>>;

// One point per cycle, the count going 1, 2, 3...
FailurePoints Ranked(const std::vector<int32_t>& cycles);

// The published rank-regression example: ten failures, every channel failed.
const FailurePoints& PublishedExample();
// Twelve channels; the count steps by two at three of the cycles.
const FailurePoints& TiedExample();

// Makes data set d current, with `channels` in its group and the points as its rows.
void LoadFailurePoints(Session& s, int16_t d, int16_t channels, const FailurePoints& points);

// The setup of a data set read with channels 1..10, occurrence limit 1, data cycles.
DataSetSettings RangeSetup(const std::string& id, const std::string& dataFile);

// Adds the next data set with its setup and points, and analyses it.
void AddAnalysedDataSet(Session& s, UiPort& ui, const DataSetSettings& setup, int16_t channels,
                        const FailurePoints& points);

}  // namespace tarvenix::test
