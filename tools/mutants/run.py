#!/usr/bin/env python3
"""Planted faults: proves that the tests catch each fault of faults.txt.

Builds build-mutants/ once unmodified and checks that the tests pass; then,
for each fault alone, plants it, rebuilds incrementally, runs the tests until
the first failure, and puts the file back byte for byte. A fault no test
catches "survived"; one whose text no longer occurs exactly once is "stale";
one that breaks the build "does not compile". Each of the three fails the run.

  tools/mutants/run.py              every fault
  tools/mutants/run.py ID [ID...]   only these
  tools/mutants/run.py --list       the faults, and whether each still applies
"""

import argparse
import os
import shutil
import signal
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FAULTS = Path(__file__).with_name("faults.txt")
BUILD = ROOT / "build-mutants"
LOGS = BUILD / "mutants-logs"
# The original of a file while a fault is planted in it: a run that was killed
# outright leaves it here, and the next run puts it back first.
SAFEKEEPING = BUILD / "mutants-original"
JOBS = os.environ.get("JOBS", "2")
TEST_TIMEOUT = "60"  # seconds per test (the slowest takes about 1): a planted fault may make one hang
STOP_SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)


@dataclass
class Fault:
    id: str
    what: str
    file: str
    find: str
    replace: str


def read_faults(path):
    """The blocks of faults.txt: "key: value" lines, blank lines between."""
    faults, entry = [], {}
    for number, line in enumerate(path.read_text().splitlines() + [""], 1):
        if line.startswith("#"):
            continue
        if not line.strip():
            if entry:
                missing = {"id", "what", "file", "find", "replace"} - entry.keys()
                if missing:
                    sys.exit(f"{path}:{number - 1}: entry {entry.get('id', '?')} lacks {', '.join(sorted(missing))}")
                faults.append(Fault(**entry))
                entry = {}
            continue
        key, colon, value = line.partition(":")
        if not colon or key not in Fault.__dataclass_fields__ or key in entry:
            sys.exit(f"{path}:{number}: expected one of id/what/file/find/replace once per entry: {line!r}")
        entry[key] = value[1:] if value.startswith(" ") else value
    ids = [f.id for f in faults]
    if len(set(ids)) != len(ids):
        sys.exit(f"{path}: an id is used twice")
    return faults


def occurrences(fault):
    path = ROOT / fault.file
    return path.read_bytes().count(fault.find.encode()) if path.is_file() else 0


def run(command, log):
    """Runs a command with its output in the log file; True when it succeeded."""
    with open(log, "w") as out:
        return subprocess.run(command, cwd=ROOT, stdout=out, stderr=subprocess.STDOUT).returncode == 0


def build(log):
    return run(["cmake", "--build", str(BUILD), "-j", JOBS], log)


def tests_pass(log):
    return run(["ctest", "--test-dir", str(BUILD), "-j", JOBS, "--stop-on-failure", "--timeout", TEST_TIMEOUT], log)


def put_back(path, original):
    """Writes the original bytes back, uninterrupted, newer than the planted
    fault's objects so that the next build compiles the file again."""
    handlers = {s: signal.signal(s, signal.SIG_IGN) for s in STOP_SIGNALS}
    try:
        path.write_bytes(original)
        os.utime(path)
    finally:
        for s, h in handlers.items():
            signal.signal(s, h)


def restore_leftovers():
    """Puts back a file a killed run left planted, unless it was edited since."""
    for kept in list(SAFEKEEPING.rglob("*.original")) if SAFEKEEPING.is_dir() else []:
        planted = kept.with_suffix(".planted")
        target = ROOT / kept.relative_to(SAFEKEEPING).with_suffix("")
        name = target.relative_to(ROOT)
        if planted.is_file() and target.is_file() and target.read_bytes() == planted.read_bytes():
            put_back(target, kept.read_bytes())
            print(f"put back {name}, left planted by an interrupted run")
        else:
            print(f"{name} was left planted by an interrupted run but has changed since: left as it is")
        kept.unlink()
        planted.unlink(missing_ok=True)


def try_fault(fault):
    """Plants one fault, rebuilds and tests; the result's name."""
    if occurrences(fault) != 1:
        return "stale"
    path = ROOT / fault.file
    original = path.read_bytes()
    planted = original.replace(fault.find.encode(), fault.replace.encode())
    kept = SAFEKEEPING / (fault.file + ".original")
    kept.parent.mkdir(parents=True, exist_ok=True)
    kept.with_suffix(".planted").write_bytes(planted)
    kept.write_bytes(original)
    try:
        path.write_bytes(planted)
        if not build(LOGS / f"{fault.id}.build.log"):
            return "does not compile"
        return "survived" if tests_pass(LOGS / f"{fault.id}.test.log") else "caught"
    finally:
        put_back(path, original)
        kept.unlink()
        kept.with_suffix(".planted").unlink()


def configure():
    options = ["-DCMAKE_BUILD_TYPE=Release", "-DTARVENIX_BUILD_TESTS=ON", "-DTARVENIX_BUILD_GUI=ON"]
    if shutil.which("ccache"):
        options += ["-DCMAKE_C_COMPILER_LAUNCHER=ccache", "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"]
    LOGS.mkdir(parents=True, exist_ok=True)
    return run(["cmake", "-S", str(ROOT), "-B", str(BUILD), *options], LOGS / "configure.log")


def minutes(seconds):
    return f"{int(seconds) // 60}m {int(seconds) % 60:02d}s"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("ids", nargs="*", help="run only these faults")
    parser.add_argument("--list", action="store_true", help="list the faults and whether each still applies")
    args = parser.parse_args()
    faults = read_faults(FAULTS)
    unknown = set(args.ids) - {f.id for f in faults}
    if unknown:
        sys.exit(f"no such fault: {' '.join(sorted(unknown))} (see --list)")
    chosen = [f for f in faults if not args.ids or f.id in args.ids]
    restore_leftovers()
    if args.list:
        for f in chosen:
            print(f"{f.id:28} {'applies' if occurrences(f) == 1 else 'STALE':8} {f.file:40} {f.what}")
        return 0 if all(occurrences(f) == 1 for f in chosen) else 1

    # SIGTERM and SIGHUP end the run as Ctrl-C does: through the finally blocks.
    for s in STOP_SIGNALS[1:]:
        signal.signal(s, signal.default_int_handler)
    started = time.monotonic()
    LOGS.mkdir(parents=True, exist_ok=True)
    print(f"Building {BUILD.relative_to(ROOT)} unmodified and running the tests ...", flush=True)
    if not (configure() and build(LOGS / "baseline.build.log") and tests_pass(LOGS / "baseline.test.log")):
        print(f"The unmodified build fails or its tests do: see {LOGS.relative_to(ROOT)}/baseline.*.log")
        return 1

    results = []
    print(f"\n{'id':28} {'file':40} {'result':17} seconds", flush=True)
    for f in chosen:
        t0 = time.monotonic()
        result = try_fault(f)
        results.append(result)
        print(f"{f.id:28} {f.file:40} {result:17} {time.monotonic() - t0:7.0f}", flush=True)
    # Leave the build matching the sources again.
    build(LOGS / "final.build.log")

    counts = {r: results.count(r) for r in ("caught", "survived", "stale", "does not compile")}
    print(f"\n{len(results)} faults: " + ", ".join(f"{n} {r}" for r, n in counts.items()) +
          f"; {minutes(time.monotonic() - started)} in all. Logs: {LOGS.relative_to(ROOT)}/")
    return 0 if counts["caught"] == len(results) else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit("\nInterrupted; every planted fault has been put back.")
