#!/usr/bin/env bash
# The batch analysis of the bundled example; `make demo` runs it. Writes the
# report to out/analysis.txt, the Weibull plot to out/weibull.png and the log
# (results box, messages, status lines) to out/analysis.log, and prints the
# log and the report.
set -euo pipefail
cd "$(dirname "$0")/.."
mkdir -p out
rm -f out/analysis.txt out/analysis.log out/weibull.png

status=0
./build/tarvenix-cli \
  --fraction median --plot-title "Example board, 32 channels" \
  --report out/analysis.txt --plot out/weibull.png \
  --data examples/board-32ch.txt --chsel examples/board-32ch-channels.txt \
    --id "32 channels, data cycles" \
  --data examples/board-32ch.txt --channels 1-32 --cycles temp --limit 2 \
    --id "32 channels, temperature cycles, 2nd event" \
  >out/analysis.log 2>&1 || status=$?

echo "== tarvenix-cli log (out/analysis.log) =="
cat out/analysis.log
echo
echo "== report (out/analysis.txt) =="
tr -d '\r' <out/analysis.txt
echo
[ -f out/weibull.png ] && echo "== plot: out/weibull.png =="
echo "tarvenix-cli exit status: $status"
exit "$status"
