#!/usr/bin/env bash
# Rewrites the bundled example from the simulator; the same seed gives the same files.
set -euo pipefail
cd "$(dirname "$0")/.."
./build/tarvenix-simulate --channels 32 --cycles 1000 --beta 2.5 --eta 800 --seed 7 \
  --cycle-lines temp --data-per-cycle 2 --noise 1 --start 0 --tstart 0 \
  --chsel examples/board-32ch-channels.txt examples/board-32ch.txt
