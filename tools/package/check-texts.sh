#!/usr/bin/env bash
# The package's texts, checked before `make package` packs them: the menu entry
# and the metainfo pass their validators without a single remark, the man pages
# format without a warning, and the batch tool's man page names every option
# its --help names. Usage: check-texts.sh BUILD_FOLDER
set -uo pipefail
build=${1:?usage: check-texts.sh BUILD_FOLDER}
files=$build/package
failed=0
complain() { echo "check-texts: $*" >&2; failed=1; }

for entry in "$files"/*.desktop; do
  out=$(desktop-file-validate "$entry" 2>&1) || complain "desktop-file-validate failed on $entry"
  [ -z "$out" ] || complain "desktop-file-validate on $entry: $out"
done

for meta in "$files"/*.metainfo.xml; do
  out=$(appstreamcli validate --no-net --pedantic "$meta" 2>&1) || complain "appstreamcli failed on $meta"
  remarks=$(grep -E '^[EWIP]: ' <<<"$out")
  [ -z "$remarks" ] || complain "appstreamcli on $meta: $remarks"
done

for page in "$files"/man/*.1; do
  out=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
  [ -z "$out" ] || complain "man page $page: $out"
done

# The options as --help lists them (two blanks, then the option), each in the
# man page as troff writes it (every "-" escaped), as a whole word: --plot in
# --plot-size does not count.
options=$("$build/tarvenix-cli" --help | grep -oE '^  --[a-z0-9-]+( \| --[a-z0-9-]+)?' | grep -oE -- '--[a-z0-9-]+')
[ -n "$options" ] || complain "tarvenix-cli --help lists no options"
for option in $options; do
  grep -qP -- "\\Q${option//-/\\-}\\E(?![a-z0-9]|\\\\-)" "$files/man/tarvenix-cli.1" ||
    complain "man page tarvenix-cli.1 does not name $option"
done

[ "$failed" = 0 ] && echo "check-texts: the menu entry, the metainfo and the man pages are clean"
exit "$failed"
