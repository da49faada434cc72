#!/usr/bin/env bash
# make bench: the data history reader against the machine's own line counters.
#
# Generates once (cached in bench-data/, git-ignored) a simulated data history
# file of at least 1 GiB and one of about 10 MB, each with a channel selection
# file of all 1024 channels. With each file in the page cache it times wc -l,
# grep -c '::' and tarvenix-cli's full analysis (both passes and the fit),
# prints medians, ratios, throughput and peak memory against the goals, then
# runs the Google Benchmark binary for the reader's inner pieces.
#
# Environment:
#   BENCH_RUNS=N      timed runs per command, at least 5 (7)
#   BENCH_DATA=DIR    the cache folder (bench-data)
#   TARVENIX_CLI=F    the program timed (build/tarvenix-cli), e.g. an older build
#   BENCH_MICRO=0     skip the Google Benchmark binary
#   BENCH_LARGE=0     skip the 1 GiB file
set -euo pipefail
cd "$(dirname "$0")/.."
export LC_ALL=C  # grep's fastest matching, and "." in the times

build=build
cli=${TARVENIX_CLI:-$build/tarvenix-cli}
simulate=$build/tarvenix-simulate
data=${BENCH_DATA:-bench-data}
runs=${BENCH_RUNS:-7}
if ! [[ $runs =~ ^[0-9]+$ ]] || ((runs < 5)); then
  echo "BENCH_RUNS must be a number of at least 5" >&2
  exit 2
fi
for program in "$cli" "$simulate"; do
  [[ -x $program ]] || { echo "$program is missing: run make build first" >&2; exit 1; }
done

# A long temperature-cycling test of 1024 channels: lives spread over the
# test, each failed channel reporting an event on 90 % of the later cycles, so
# event and continuation lines make up most of the bytes.
large_options=(--channels 1024 --cycles 300000 --eta 150000 --beta 2 --keep-reporting 90 --cycle-lines temp)
small_options=(--channels 1024 --cycles 1800 --eta 900 --beta 2 --keep-reporting 90 --cycle-lines temp)
readonly GiB=1073741824
scratch=$(mktemp)
trap 'rm -f "$scratch"' EXIT

# Writes $data/NAME.txt and $data/NAME-chsel.txt unless the cached ones came
# from the same options and the same simulator sources.
generate() {
  local name=$1 min_bytes=$2
  shift 2
  local file=$data/$name.txt stamp=$data/$name.stamp
  local wanted
  wanted="$* $(cat tools/simulate/*.cpp tools/simulate/*.h | sha1sum | cut -d' ' -f1)"
  if [[ -f $file && -f $stamp && "$(cat "$stamp")" == "$wanted" ]]; then return; fi
  mkdir -p "$data"
  rm -f "$file" "$stamp"
  echo "Generating $file ($*) ..."
  "$simulate" "$@" --chsel "$data/$name-chsel.txt" "$file"
  local size
  size=$(stat -c %s "$file")
  if ((size < min_bytes)); then
    echo "$file has only $size bytes, fewer than $min_bytes" >&2
    exit 1
  fi
  echo "$wanted" >"$stamp"
}

# "median min" wall seconds of $runs runs of a command. Its output goes to a
# file, not /dev/null: GNU grep stops at the first match when it sees its
# output thrown away. Exit status 1 counts as success for grep (no match).
time_runs() {
  local -a times=()
  local i start end status
  for ((i = 0; i < runs; i++)); do
    start=$EPOCHREALTIME
    status=0
    "$@" >"$scratch" 2>&1 || status=$?
    end=$EPOCHREALTIME
    if ((status > 1)) || { ((status == 1)) && [[ $1 != grep ]]; }; then
      echo "failed (exit status $status): $*" >&2
      exit 1
    fi
    times+=("$(awk -v s="$start" -v e="$end" 'BEGIN { printf "%.4f", e - s }')")
  done
  printf '%s\n' "${times[@]}" | sort -g | awk '{ t[NR] = $1 } END { printf "%s %s\n", t[int((NR + 1) / 2)], t[1] }'
}

# Peak resident memory in KiB of one run (GNU time).
peak_kib() {
  local report
  /usr/bin/time -v -o "$scratch" "$@" >/dev/null 2>&1
  awk -F': ' '/Maximum resident set size/ { print $2 }' "$scratch"
}

verdict() { awk -v v="$1" -v goal="$2" 'BEGIN { print (v <= goal ? "met" : "MISSED") }'; }

# Times one file and prints its table; sets cli_median and cli_peak. The
# ratio goals are judged only for the large file (judge_ratios=yes).
bench_file() {
  local name=$1 judge_ratios=$2
  local file=$data/$name.txt chsel=$data/$name-chsel.txt
  local bytes lines
  cat "$file" >/dev/null  # into the page cache
  bytes=$(stat -c %s "$file")
  lines=$(wc -l <"$file")
  local -a cli_command=("$cli" --data "$file" --chsel "$chsel" --cycles temp --limit 3)
  echo
  echo "== $file: $bytes bytes, $lines lines, in the page cache; $runs runs each =="
  echo "load average before: $(cut -d' ' -f1-3 /proc/loadavg) ($(nproc) cores)"
  local wc_time grep_time cli_time
  wc_time=$(time_runs wc -l "$file")
  grep_time=$(time_runs grep -c '::' "$file")
  cli_time=$(time_runs "${cli_command[@]}")
  cli_peak=$(peak_kib "${cli_command[@]}")
  echo "load average after:  $(cut -d' ' -f1-3 /proc/loadavg)"
  printf '%-46s %9s %9s %8s\n' "command" "median s" "min s" "GB/s"
  local row label timing median
  for row in "wc -l|$wc_time" "grep -c '::'|$grep_time" "tarvenix-cli --cycles temp --limit 3|$cli_time"; do
    label=${row%%|*}
    timing=${row#*|}
    median=${timing% *}
    printf '%-46s %9s %9s %8s\n' "$label" "$median" "${timing#* }" \
      "$(awk -v b="$bytes" -v t="$median" 'BEGIN { printf "%.2f", b / t / 1e9 }')"
  done
  cli_median=${cli_time% *}
  local wc_ratio grep_ratio
  wc_ratio=$(awk -v a="$cli_median" -v b="${wc_time% *}" 'BEGIN { printf "%.2f", a / b }')
  grep_ratio=$(awk -v a="$cli_median" -v b="${grep_time% *}" 'BEGIN { printf "%.2f", a / b }')
  if [[ $judge_ratios == yes ]]; then
    printf '%-46s %9s   goal <= 5: %s, moonshot <= 3: %s\n' "tarvenix-cli / wc -l" "$wc_ratio" \
      "$(verdict "$wc_ratio" 5)" "$(verdict "$wc_ratio" 3)"
    printf '%-46s %9s   goal <= 1: %s\n' "tarvenix-cli / grep -c '::'" "$grep_ratio" "$(verdict "$grep_ratio" 1)"
  else
    printf '%-46s %9s   (start-up included)\n' "tarvenix-cli / wc -l" "$wc_ratio"
    printf '%-46s %9s\n' "tarvenix-cli / grep -c '::'" "$grep_ratio"
  fi
  printf '%-46s %9s   goal <= 64 MiB: %s\n' "tarvenix-cli peak resident memory (MiB)" \
    "$(awk -v k="$cli_peak" 'BEGIN { printf "%.1f", k / 1024 }')" "$(verdict "$cli_peak" 65536)"
}

echo "tarvenix-cli: $cli"
if [[ ${BENCH_LARGE:-1} != 0 ]]; then
  generate history-1g "$GiB" "${large_options[@]}"
fi
generate history-10m 9000000 "${small_options[@]}"

large_peak=""
if [[ ${BENCH_LARGE:-1} != 0 ]]; then
  bench_file history-1g yes
  large_peak=$cli_peak
fi
bench_file history-10m no
printf '%-46s %9s   goal <= 0.050 s: %s\n' "tarvenix-cli wall time, 10 MB file (s)" "$cli_median" \
  "$(verdict "$cli_median" 0.050)"
if [[ -n $large_peak ]]; then
  printf '%-46s %9s   goal within 10 %%: %s\n' "peak memory, 10 MB file / 1 GiB file" \
    "$(awk -v a="$cli_peak" -v b="$large_peak" 'BEGIN { printf "%.2f", a / b }')" \
    "$(awk -v a="$cli_peak" -v b="$large_peak" 'BEGIN { r = a / b; print (r >= 0.9 && r <= 1.1 ? "met" : "MISSED") }')"
fi

if [[ ${BENCH_MICRO:-1} != 0 ]]; then
  if [[ -x $build/tarvenix-bench-reader ]]; then
    echo
    echo "== the reader's inner pieces (Google Benchmark) =="
    "$build/tarvenix-bench-reader" --benchmark_min_time=0.2
  else
    echo "$build/tarvenix-bench-reader is missing (libbenchmark-dev: make deps)" >&2
  fi
fi
