#!/usr/bin/env bash
# Writes the seed corpora of the fuzz targets (tests/fuzz/corpus/<target>/):
# small data history and channel selection files from the simulator, and the
# files the tests write by hand, each behind the header of settings its target
# reads first (see the comment at the top of each Fuzz*.cpp). Needs the normal
# build's simulator (make build). Inputs the fuzzers found that crashed stay in
# the corpora as they are; this script only adds and replaces its own seeds.
set -euo pipefail
cd "$(dirname "$0")/../.."
simulate=build/tarvenix-simulate
corpus=tests/fuzz/corpus
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Little-endian bytes of a number.
le16() { printf "$(printf '\\%03o\\%03o' $(($1 & 255)) $((($1 >> 8) & 255)))"; }
le32() { le16 $(($1 & 65535)); le16 $((($1 >> 16) & 65535)); }
byte() { printf "$(printf '\\%03o' $(($1 & 255)))"; }

# seed TARGET NAME: the header on standard input's front is the caller's; the
# whole of standard input becomes the seed.
seed() { mkdir -p "$corpus/$1"; cat >"$corpus/$1/$2"; }

# --- the readers: flags number start tstart first last minfailures, file ---
# flags: 1 data cycles, 2 debug, 4 answer yes, 8 answer no, 16 standing yes,
# 32 (event array files) complete the file with empty channel lines from
# `number` on; number: the occurrence limit, or where the completion starts.
reader() {  # TARGET NAME FLAGS NUMBER START TSTART FIRST LAST FILE
  { byte "$3"; le16 "$4"; le32 "$5"; le32 "$6"; le16 "$7"; le16 "$8"; byte 4; cat "$9"; } | seed "$1" "$2"
}
history() { reader data_history "$@"; }
sim() {  # FILE simulator options...
  local out=$1
  shift
  "$simulate" "$@" "$out" >/dev/null
}
sim "$scratch/plain.txt" --channels 12 --cycles 80 --eta 40 --seed 3
history sim-data-crlf 3 1 0 0 1 12 "$scratch/plain.txt"
history sim-data-limit2 1 2 0 0 1 12 "$scratch/plain.txt"
sim "$scratch/temp.txt" --channels 10 --cycles 60 --eta 30 --cycle-lines temp --data-per-cycle 2 --seed 5
history sim-temp 2 1 0 0 1 10 "$scratch/temp.txt"
history sim-temp-as-data 1 1 0 0 1 10 "$scratch/temp.txt"
sim "$scratch/mech.txt" --channels 10 --cycles 60 --eta 30 --cycle-lines mech --line-end lf --seed 6
history sim-mech-lf 2 1 0 0 1 10 "$scratch/mech.txt"
sim "$scratch/cr.txt" --channels 16 --cycles 50 --eta 25 --line-end cr --wrap 30 --occurrences 4 --seed 7
history sim-cr-wrapped 3 3 0 0 1 16 "$scratch/cr.txt"
sim "$scratch/first.txt" --channels 12 --cycles 60 --eta 30 --first-cycle-failures 3 --cycle-lines temp --seed 8
history sim-first-cycle-yes 5 1 0 0 1 12 "$scratch/first.txt"
history sim-first-cycle-no 10 1 0 0 1 12 "$scratch/first.txt"
history sim-first-cycle-temp 6 1 0 0 1 12 "$scratch/first.txt"
sim "$scratch/noise.txt" --channels 8 --first-channel 1017 --cycles 40 --eta 20 --noise 2 --seed 9
history sim-high-channels 1 1 0 0 1017 1024 "$scratch/noise.txt"
sim "$scratch/start.txt" --channels 10 --cycles 60 --eta 30 --cycle-lines temp --start 20 --tstart 10 --seed 4
history sim-initial-cycles 2 1 20 10 1 10 "$scratch/start.txt"
history sim-before-initial 1 1 500 0 1 10 "$scratch/start.txt"
printf 'Cycle # 3\r\n1. ::   5:O.\r\n' >"$scratch/h1"
history dot-in-position-2 1 1 0 0 1 10 "$scratch/h1"
printf 'Cycle # 3\r\n001::   4:O.\r\n  .  .\r\n' >"$scratch/h2"
history continuation-dot-in-position-3 1 1 0 0 1 10 "$scratch/h2"
printf 'Cycle # 3\r\n001:: 099:O.   5:O. 024:O.\r\n     .   7:O.\r\n' >"$scratch/h3"
history continuation-and-1024 1 1 0 0 1 1024 "$scratch/h3"
printf 'Cycle # 3000000000\r\n001::   1:O.\r\n' >"$scratch/h4"
history data-cycle-past-32-bits 1 1 0 0 1 10 "$scratch/h4"
printf 'Cycle # 4\r\n001::   1:O.   2:O.\r\n    T =  125.0 C  Cycle count:   4.0 junk\r\n    M =  load        cycle count:   9\r\n' >"$scratch/h5"
history cycle-lines-with-junk 2 1 0 0 1 10 "$scratch/h5"
printf 'Cycle #\r\nab:: 005:O.\r\n' >"$scratch/h6"
history cycle-without-number 1 1 0 0 1 10 "$scratch/h6"
printf 'C\0y\0c\0l\0e\0 \0#\0 \0003\0\r\0\n\0' >"$scratch/h7"
history utf16 1 1 0 0 1 10 "$scratch/h7"
: >"$scratch/empty"
history empty 1 1 0 0 1 10 "$scratch/empty"

# --- event array files ---
ipc() {  # NAME FLAGS FIRST LAST FILL-FROM FILE
  reader ipc_events "$1" "$2" "$5" 0 0 "$3" "$4" "$6"
}
sim "$scratch/ipct.txt" --channels 16 --cycles 400 --eta 120 --cycle-lines temp --ipc --ipc-noise 1 --seed 11
head -n 19 "$scratch/ipct.ipc" >"$scratch/ipct-head"  # the comment lines and channels 1..16
ipc sim-temp-completed 34 1 16 17 "$scratch/ipct-head"
ipc sim-temp-data-cycles 33 1 16 17 "$scratch/ipct-head"
ipc sim-temp-cut-short 2 1 16 17 "$scratch/ipct-head"
sim "$scratch/ipcm.txt" --channels 12 --cycles 300 --eta 80 --cycle-lines mech --ipc --ipc-noise 3 --line-end lf --seed 12
head -n 15 "$scratch/ipcm.ipc" >"$scratch/ipcm-head"
ipc sim-mech-completed 34 1 12 13 "$scratch/ipcm-head"
sim "$scratch/ipcf.txt" --channels 10 --cycles 200 --eta 60 --cycle-lines temp --ipc --first-cycle-failures 2 --seed 13
head -n 13 "$scratch/ipcf.ipc" >"$scratch/ipcf-head"
ipc sim-first-cycle-yes 36 1 10 11 "$scratch/ipcf-head"
ipc sim-first-cycle-no 40 1 10 11 "$scratch/ipcf-head"
printf "' comment\r\n5:1,2,,T,1,2,,\r\n7:3,T,3,\r\n5:4,T,4,\r\n" >"$scratch/ipc1"
ipc channel-twice 32 1 10 8 "$scratch/ipc1"
printf ':1,T,1,\r\n' >"$scratch/ipc2"
ipc no-channel-number 32 1 10 2 "$scratch/ipc2"
printf '3:1,T,1,2,\r\n' >"$scratch/ipc3"
ipc counts-differ 32 1 10 4 "$scratch/ipc3"
printf '3:1,x,T,1,2,\r\n4:9E99,T,1,\r\n' >"$scratch/ipc4"
ipc not-a-count 32 1 10 5 "$scratch/ipc4"

# --- channel selection: flags set first last limit, file ---
# flags: 1 a range too, 2 data cycles, 4 count limit; set is data set + 1.
channels() {  # NAME FLAGS FIRST LAST FILE
  { byte "$2"; byte 2; le16 "$3"; le16 "$4"; le16 1; cat "$5"; } | seed channel_selection "$1"
}
sim "$scratch/x.txt" --channels 20 --first-channel 5 --cycles 10 --chsel "$scratch/c1" --seed 2
channels sim-plain 6 0 0 "$scratch/c1"
sim "$scratch/x.txt" --channels 8 --cycles 10 --chsel "$scratch/c2" --start 120 --tstart 7 --line-end lf --seed 2
channels sim-headers-lf 6 0 0 "$scratch/c2"
channels sim-headers-and-range 7 10 12 "$scratch/c2"
printf 'START: 120\r\nTSTART:\r\n5\r\n7,9\r\n' >"$scratch/c3"
channels headers-and-list 6 0 0 "$scratch/c3"
printf 'start: 1E20\r\n5\r\n' >"$scratch/c4"
channels start-1e20 6 0 0 "$scratch/c4"
printf '5\r\n6\r\n5\r\n' >"$scratch/c5"
channels duplicate 6 0 0 "$scratch/c5"
printf '3\r\n-4\r\n' >"$scratch/c6"
channels negative 6 0 0 "$scratch/c6"
printf '3.0\r\n12.5\r\n' >"$scratch/c7"
channels fraction 6 0 0 "$scratch/c7"
printf '1, "2" ,3\r\nabc.\r\n' >"$scratch/c8"
channels quoted-then-text 6 0 0 "$scratch/c8"
printf '1024\r\n1025\r\n' >"$scratch/c9"
channels past-1024 6 0 0 "$scratch/c9"
: >"$scratch/c10"
channels empty 6 0 0 "$scratch/c10"
printf '\r\n\r\n\r\n' >"$scratch/c11"
channels blank-lines 6 0 0 "$scratch/c11"

# --- settings files: section key value, file ---
ini() {  # NAME SECTION KEY VALUE FILE
  { byte "$2"; byte 0; byte "$3"; byte 0; byte ${#4}; printf '%s' "$4"; cat "$5"; } | seed ini_files "$1"
}
printf '[General]\r\nN50/N63 Parameter=0\r\nFailure Fraction=0\r\nConfidence Level=0\r\nSound Status=True\r\n' >"$scratch/i1"
ini written 0 1 2 "$scratch/i1"
printf '; kept\n[Window]\nTop=10\n\n[general]\n  failure fraction = "2.6"  \nSound Status=False\n[General]\nFailure Fraction=1\n' >"$scratch/i2"
ini comments-cases-duplicates 1 1 1 "$scratch/i2"
printf 'N50/N63 Parameter=1\r[Other]\rKey3=x' >"$scratch/i3"
ini no-header-cr 0 0 True "$scratch/i3"
printf '[General' >"$scratch/i4"
ini open-bracket 3 5 value "$scratch/i4"
: >"$scratch/i5"
ini empty 0 3 False "$scratch/i5"

# --- numbers: a double, decimals, a pattern, a text ---
number() {  # NAME DOUBLE-BYTES DECIMALS PATTERN TEXT
  { printf "$2"; byte "$3"; byte ${#4}; printf '%s' "$4"; printf '%s' "$5"; } | seed numbers "$1"
}
number half-even '\0\0\0\0\0\200\002\100' 2 '0.##' '2.345'
number large '\000\000\300\377\377\377\337\101' 0 '0' '2147483647.5'
number hex '\0\0\0\0\0\0\0\0' 5 '000' '&HFFFF'
number exponent '\0\0\0\0\0\0\360\177' 3 '0.0000' '1.5D+3'
number blanks '\001\0\0\0\0\0\0\0' 1 '#' ' - 1 2 . 5 E 1'
number overflow '\377\377\377\377\377\377\357\177' 4 '0.##' '1E400'
echo "Seeds written to $corpus"
