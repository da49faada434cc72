#!/usr/bin/env bash
# Runs each fuzz target in turn for a set time; `make fuzz` calls it.
#   tools/fuzz.sh SECONDS TARGET...
# Each target first replays its seed corpus (tests/fuzz/corpus/<target>) and
# what earlier runs found (build-fuzz/corpus/<target>), then fuzzes for the rest
# of its time. An input that crashes, leaks, trips a sanitizer or takes more than
# a second fails the run; it is kept in build-fuzz/artifacts/<target>/.
# Ends with one line per target (executions, coverage in edges, features) and
# the count of targets that passed and failed.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=$1
shift
mkdir -p build-fuzz/logs
summary=()
passed=0
failed=0
for target in "$@"; do
  binary=build-fuzz/fuzz/fuzz_$target
  found=build-fuzz/corpus/$target
  artifacts=build-fuzz/artifacts/$target/
  log=build-fuzz/logs/$target.log
  mkdir -p "$found" "$artifacts"
  dict=()
  [ -f "tests/fuzz/$target.dict" ] && dict=(-dict="tests/fuzz/$target.dict")
  echo "== fuzz_$target: ${seconds} s"
  if ! "$binary" "$found" "tests/fuzz/corpus/$target" "${dict[@]}" \
      -max_total_time="$seconds" -timeout=1 -rss_limit_mb=2048 -max_len=8192 \
      -artifact_prefix="$artifacts" -print_final_stats=1 >"$log" 2>&1; then
    failed=$((failed + 1))
    echo "fuzz_$target FAILED; the log is $log, the input in $artifacts" >&2
    grep -E "ERROR|Property failed|SUMMARY|Test unit written" "$log" >&2 || tail -20 "$log" >&2
  else
    passed=$((passed + 1))
  fi
  execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  last=$(grep -E '^#[0-9]+' "$log" | tail -1)
  cov=$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' <<<"$last")
  ft=$(sed -n 's/.* ft: \([0-9]*\).*/\1/p' <<<"$last")
  summary+=("$(printf '%-18s executions %10s  coverage %5s edges  features %6s' "$target" "${execs:-?}" "${cov:-?}" "${ft:-?}")")
done
echo "== fuzz summary (${seconds} s per target)"
printf '%s\n' "${summary[@]}"
echo "fuzz: $passed passed, $failed failed"
[ "$failed" = 0 ]
