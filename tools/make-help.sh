#!/usr/bin/env bash
# Compiles the help pages in assets/help/ into assets/Vorlantic.chm (the help
# file the program opens). Needs chmcmd (Debian package fp-utils); run it after
# changing a page and commit the result.
set -euo pipefail
cd "$(dirname "$0")/../assets/help"
chmcmd tarvenix.hhp >/dev/null
mv Vorlantic.chm ..
echo "assets/Vorlantic.chm written"
