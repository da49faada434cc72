#!/usr/bin/env bash
# The batch analysis of the bundled example; `make demo` runs it.
set -euo pipefail
cd "$(dirname "$0")/.."
mkdir -p out
./build/tarvenix-cli --version
echo "The batch analysis of examples/ arrives with the data history reader."
