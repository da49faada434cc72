#!/usr/bin/env bash
# Runs a Windows program under Wine for the Windows build's tests, without a
# display: wine-run.sh PREFIX PROGRAM.exe [ARGUMENTS...]. PREFIX is the
# build's own Wine folder, made on first use (once, whoever comes first).
set -euo pipefail
prefix=$1
shift
export WINEPREFIX=$prefix WINEDEBUG=-all LC_ALL=C.UTF-8
# No .NET or browser engine to offer to install.
export WINEDLLOVERRIDES="mscoree,mshtml="
if [ ! -f "$prefix/system.reg" ]; then
  mkdir -p "$(dirname "$prefix")"
  (
    flock 9
    [ -f "$prefix/system.reg" ] || wine wineboot --init >"$prefix.log" 2>&1 || { cat "$prefix.log" >&2; exit 1; }
  ) 9>"$prefix.lock"
fi
exec wine "$@"
