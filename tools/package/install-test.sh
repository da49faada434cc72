#!/usr/bin/env bash
# The package as a user gets it, on this machine (CI's is disposable): install
# build/tarvenix_*.deb with apt-get, run the installed programs, analyse the
# bundled example from the installed files, find the man pages, then remove
# and purge the package and check that it left nothing behind. Needs root, and
# refuses to run where tarvenix is installed already (it would be removed).
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD

fail() { echo "install-test: $*" >&2; exit 1; }
[ "$(id -u)" = 0 ] || fail "needs root (apt-get install)"
debs=(build/tarvenix_*.deb)
[ ${#debs[@]} = 1 ] && [ -f "${debs[0]}" ] || fail "expected one build/tarvenix_*.deb (make package)"
deb=${debs[0]}
if dpkg-query -W -f='${Status}' tarvenix 2>/dev/null | grep -q 'ok installed'; then
  fail "tarvenix is installed on this machine already; remove it first"
fi

depends=$(dpkg-deb -f "$deb" Depends)
grep -q 'libqt6widgets6' <<<"$depends" || fail "Depends lacks the Qt libraries: $depends"

# Every place a package may put something, listed before and after; the
# user's home and the temporary folders are not among them.
snapshot() {
  find /usr /etc /opt /srv /var/lib /var/opt -xdev \
    \( -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/lib/ucf \) -prune -o -print 2>/dev/null | sort
}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
snapshot >"$scratch/before"

echo "install-test: installing $deb"
DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 "./$deb" >"$scratch/apt.log" 2>&1 ||
  { cat "$scratch/apt.log"; fail "apt-get install failed"; }

# Whatever fails from here on, the package goes again.
remove() { DEBIAN_FRONTEND=noninteractive apt-get remove --purge -y -qq -o DPkg::Lock::Timeout=300 tarvenix >"$scratch/apt.log" 2>&1; }
trap 'remove || cat "$scratch/apt.log"; rm -rf "$scratch"' EXIT

check() { "$@" || fail "failed: $*"; }
[ "$(command -v tarvenix-cli)" = /usr/bin/tarvenix-cli ] || fail "tarvenix-cli is not in /usr/bin"
check test "$(tarvenix-cli --version)" = "$("$root/build/tarvenix-cli" --version)"
check test "$(QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$scratch tarvenix --version)" = "Tarvenix $(dpkg-deb -f "$deb" Version)"
check test -x /usr/bin/tarvenix-simulate

# The desktop program finds its files in the folder its link leads to, laid
# out as the build folder the tests run in.
folder=$(dirname "$(readlink -f /usr/bin/tarvenix)")
shipped=$(cd "$root/build" && ls Sounds/*.wav help/*.html Vorlantic.chm readme.txt)
for file in $shipped; do
  cmp -s "$root/build/$file" "$folder/$file" || fail "$folder/$file is not the build's $file"
done
check test "$(man -w tarvenix-cli)" = /usr/share/man/man1/tarvenix-cli.1.gz
check test "$(man -w tarvenix)" = /usr/share/man/man1/tarvenix.1.gz
for icon in 48x48/apps/com.quorvane.tarvenix.png 128x128/apps/com.quorvane.tarvenix.png \
  256x256/apps/com.quorvane.tarvenix.png scalable/apps/com.quorvane.tarvenix.svg; do
  check test -f "/usr/share/icons/hicolor/$icon"
done
check test -f /usr/share/applications/com.quorvane.tarvenix.desktop
check test -f /usr/share/metainfo/com.quorvane.tarvenix.metainfo.xml

# The bundled example, analysed as its case folder does, must give the case's
# results box.
case_folder=$root/tests/cases/cli/example
mkdir "$scratch/example"
cp /usr/share/doc/tarvenix/examples/* "$scratch/example/"
mapfile -t args < <(grep -v '^#' "$case_folder/args")
(cd "$scratch/example" && tarvenix-cli "${args[@]}" >stdout 2>stderr) || fail "the example's analysis failed"
diff -u "$case_folder/expected/stdout" "$scratch/example/stdout" || fail "the example's results differ"
check test -s "$scratch/example/analysis.txt"
echo "install-test: the installed programs run and analyse the example"

trap 'rm -rf "$scratch"' EXIT
remove || { cat "$scratch/apt.log"; fail "apt-get remove --purge failed"; }
dpkg-query -W -f='${Status}' tarvenix 2>/dev/null | grep -q 'ok installed' && fail "tarvenix is still installed"
snapshot >"$scratch/after"
diff -u "$scratch/before" "$scratch/after" || fail "removing the package left the files above behind"
echo "install-test: installed, checked and removed; nothing left behind"
