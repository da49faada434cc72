// The reader's inner pieces timed alone: the line classifier, the channel-entry
// decoder, the line-end marking and the line loop over a file in the page
// cache. The lines come from the simulator, shaped as in the whole-file
// benchmark (tools/bench.sh): 1024 channels, temperature cycle lines, failed
// channels that keep reporting, so most lines are event and continuation lines.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "HistorySimulator.h"
#include "input/HistoryLines.h"
#include "input/LineEnds.h"
#include "input/LineReader.h"

namespace {

using namespace tarvenix;

// A simulated history file of about 12 MB, written once, and its lines.
class Sample {
 public:
  static const Sample& Get() {
    static const Sample sample;
    return sample;
  }
  const std::string& Path() const { return path_; }
  const std::string& Text() const { return text_; }
  const std::vector<std::string_view>& Lines() const { return lines_; }
  // The lines that carry channel entries: event and continuation lines.
  const std::vector<std::string_view>& EntryLines() const { return entryLines_; }

  ~Sample() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  Sample(const Sample&) = delete;
  Sample& operator=(const Sample&) = delete;

 private:
  Sample() {
    sim::SimOptions o;
    o.channels = 1024;
    o.cycles = 3000;
    o.eta = 1500;
    o.beta = 2;
    o.keepReporting = 90;
    o.cycleLines = sim::CycleLines::Temperature;
    path_ = (std::filesystem::temp_directory_path() / ("tarvenix-bench-" + std::to_string(std::random_device{}()) + ".txt"))
                .string();
    sim::WriteHistoryFile(o, sim::PlanTest(o), path_);
    std::ifstream in(path_, std::ios::binary);
    text_.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    std::size_t start = 0;
    for (std::size_t i = 0; i < text_.size(); ++i) {
      if (text_[i] != '\n') continue;
      std::string_view line(text_.data() + start, i - start);
      if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
      lines_.push_back(line);
      const auto kind = input::ClassifyHistoryLine(line);
      if (kind == input::HistoryLineKind::Event || input::IsContinuationLine(line)) entryLines_.push_back(line);
      start = i + 1;
    }
  }

  std::string path_;
  std::string text_;
  std::vector<std::string_view> lines_;
  std::vector<std::string_view> entryLines_;
};

void SetBytes(benchmark::State& state, std::size_t bytesPerIteration) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytesPerIteration));
}

void BM_ClassifyHistoryLine(benchmark::State& state) {
  const auto& lines = Sample::Get().Lines();
  for (auto _ : state) {
    int events = 0;
    for (std::string_view line : lines) events += input::ClassifyHistoryLine(line) == input::HistoryLineKind::Event;
    benchmark::DoNotOptimize(events);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * lines.size()));
}
BENCHMARK(BM_ClassifyHistoryLine);

void BM_OccurrenceOf(benchmark::State& state) {
  const auto& lines = Sample::Get().EntryLines();
  for (auto _ : state) {
    double sum = 0;
    for (std::string_view line : lines) sum += input::OccurrenceOf(line);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * lines.size()));
}
BENCHMARK(BM_OccurrenceOf);

// The channel-entry decoder: every entry of an event or continuation line, in
// the order the reader records them.
void BM_EntryScanner(benchmark::State& state) {
  const auto& lines = Sample::Get().EntryLines();
  std::size_t bytes = 0;
  for (std::string_view line : lines) bytes += line.size();
  input::EntryScanner scanner;
  for (auto _ : state) {
    std::size_t channels = 0;
    for (std::string_view line : lines) {
      scanner.Begin();
      scanner.Feed(line);
      scanner.End();
      channels += scanner.Channels().size();
    }
    benchmark::DoNotOptimize(channels);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * lines.size()));
  SetBytes(state, bytes);
}
BENCHMARK(BM_EntryScanner);

void BM_DecodeChannel(benchmark::State& state) {
  static const char kTriples[][4] = {"005", "017", "123", "999", "024", "000", " 12", "1 2"};
  for (auto _ : state) {
    int sum = 0;
    for (const char* t : kTriples) {
      int16_t channel = 0;
      sum += input::DecodeChannel(t[0], t[1], t[2], channel) + channel;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * std::size(kTriples)));
}
BENCHMARK(BM_DecodeChannel);

template <void (*Mark)(const char*, std::size_t, uint64_t*)>
void BM_MarkLineEnds(benchmark::State& state) {
  // One reader buffer's worth of the file, as the reader marks it.
  const std::string& text = Sample::Get().Text();
  const std::size_t size = std::min(text.size(), input::LineReader::kDefaultBufferSize);
  std::string buffer = text.substr(0, size) + std::string(input::kLineEndBlock, '\0');
  std::vector<uint64_t> masks(size / input::kLineEndBlock + 1);
  for (auto _ : state) {
    Mark(buffer.data(), size, masks.data());
    benchmark::ClobberMemory();
  }
  SetBytes(state, size);
}
BENCHMARK(BM_MarkLineEnds<input::MarkLineEnds>)->Name("BM_MarkLineEnds");
BENCHMARK(BM_MarkLineEnds<input::MarkLineEndsPortable>)->Name("BM_MarkLineEndsPortable");

// Reading the whole sample file line by line and classifying each line: what
// one pass of the reader costs when no line is decoded.
void BM_ReadAndClassifyFile(benchmark::State& state) {
  const Sample& sample = Sample::Get();
  input::LineReader reader;
  for (auto _ : state) {
    reader.Open(sample.Path());
    std::string_view line;
    bool complete = false;
    int events = 0;
    while (reader.NextLine(line, complete)) events += input::ClassifyHistoryLine(line) == input::HistoryLineKind::Event;
    reader.Close();
    benchmark::DoNotOptimize(events);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * sample.Lines().size()));
  SetBytes(state, sample.Text().size());
}
BENCHMARK(BM_ReadAndClassifyFile)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
