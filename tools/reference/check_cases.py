#!/usr/bin/python3
"""Checks the figures of every case folder's expected report against the
independent reference (weibull_reference.analyse_single).

For each tests/cases/<area>/<case>/expected/ file that is an analysis report,
every data set whose analysis completed is checked: the channel count N must
be one whose fractions (by the method the case's args choose) and Weibull
ordinates give its whole "Failure Fraction" and "Weibull Ordinate" columns.
For each such N the reference recomputes the BETA, N50 or N63, R-squared and
confidence lines from the table's points. A data set that did not complete
must show no numbers at all.

    /usr/bin/python3 tools/reference/check_cases.py [tests/cases]

Prints one line per checked report and every disagreement; exits 1 on any.
"""
import math
import os
import re
import sys

import numpy as np

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from weibull_reference import analyse_single, survival  # noqa: E402

ROW = re.compile(r"^\s*(\d+),\s+(-?\d+),\s+(-?[\d.]+),\s+(-?[\d.]+)\s*$")
BETA = re.compile(r"^BETA = *(-?[\d.]+) +\((\d+)% confidence level: \+/- *(-?[\d.]+)%\)$")
# The range is left out when it cannot be computed.
LIFE = re.compile(r"^(N50|N63) = *(-?[\d.]+) +(?:\(\d+% confidence range: *(-?\d+) to *(-?\d+)\))?$")
RSQ = re.compile(r"^R-squared = *(-?[\d.]+)$")


def scaled(v, decimals):
    """A value as printed with `decimals` places, as a whole number of the last place."""
    return int(round(v * 10 ** decimals))


def fraction_option(args_text, report_name):
    """The --fraction of the last run that writes the report (runs are split at "----")."""
    fraction = "unadjusted"
    for run in args_text.split("\n----\n"):
        args = [l for l in run.splitlines() if l and not l.startswith("#")]
        pairs = [a.split("=", 1) if a.startswith("--") and "=" in a else [a, args[i + 1] if i + 1 < len(args) else ""]
                 for i, a in enumerate(args)]
        if ["--report", report_name] in pairs:
            fraction = next((v for k, v in reversed(pairs) if k == "--fraction"), "unadjusted")
    return fraction


def data_sets(report):
    """The lines of each data set's block."""
    lines = report.replace("\r\n", "\n").split("\n")
    starts = [i for i, l in enumerate(lines) if re.match(r"^Data Set #\d+", l)]
    return [lines[a:b] for a, b in zip(starts, starts[1:] + [len(lines)])]


def ordinate(j, N, method):
    """ln(-ln S), S stored in single precision."""
    return float(np.float32(math.log(-math.log(float(np.float32(survival(j, N, method)))))))


def group_sizes(points, fractions, ordinates, method):
    """Every N whose fractions and ordinates give the printed columns."""
    return [N for N in range(max(j for _, j in points), 1025)
            if all(scaled(1 - survival(j, N, method), 4) == scaled(f, 4) and
                   scaled(ordinate(j, N, method), 4) == scaled(y, 4)
                   for (_, j), f, y in zip(points, fractions, ordinates))]


def check_data_set(name, lines, args_text, report_name):
    """The disagreements of one data set's block with the reference."""
    if "Analysis did not complete successfully." in lines:
        numbers = [l for l in lines if ROW.match(l) or BETA.match(l) or LIFE.match(l) or RSQ.match(l)]
        return [f"{name}: an unfinished analysis shows numbers: {numbers}"] if numbers else []
    rows = [m.groups() for m in map(ROW.match, lines) if m]
    beta = next((m for m in map(BETA.match, lines) if m), None)
    life = next((m for m in map(LIFE.match, lines) if m), None)
    rsq = next((m for m in map(RSQ.match, lines) if m), None)
    if not (rows and beta and life and rsq):
        return [f"{name}: a data set has neither results nor the unfinished-analysis line"]
    points = [(int(c), int(j)) for j, c, _, _ in rows]
    fractions = [float(f) for _, _, f, _ in rows]
    ordinates = [float(y) for _, _, _, y in rows]
    method = fraction_option(args_text, report_name)
    level = int(beta.group(2))
    sizes = group_sizes(points, fractions, ordinates, method)
    if not sizes:
        return [f"{name}: no channel count gives the Failure Fraction and Weibull Ordinate columns ({method})"]
    problems = []
    printed = (scaled(float(beta.group(1)), 2), scaled(float(beta.group(3)), 1), scaled(float(life.group(2)), 0),
               life.group(3) and int(life.group(3)), life.group(4) and int(life.group(4)), scaled(float(rsq.group(1)), 2))
    for N in sizes:
        b, n, r2, conf, lower, upper = analyse_single(N, points, method, life.group(1), level)
        expected = (scaled(b, 2), scaled(conf, 1), scaled(n, 0), lower, upper, scaled(r2, 2))
        if expected != printed:
            problems.append(f"{name}: N={N} {method} {life.group(1)} {level}%: reference (beta, conf, life, lower,"
                            f" upper, r2) {expected}, report {printed}")
    return problems


def main(root):
    problems, checked = [], 0
    for area in sorted(os.listdir(root)):
        for case in sorted(os.listdir(os.path.join(root, area))) if os.path.isdir(os.path.join(root, area)) else []:
            folder = os.path.join(root, area, case)
            expected = os.path.join(folder, "expected")
            if not os.path.isdir(expected) or not os.path.isfile(os.path.join(folder, "args")):
                continue
            with open(os.path.join(folder, "args"), encoding="latin-1") as f:
                args_text = f.read().replace("\r\n", "\n")
            for file in sorted(os.listdir(expected)):
                with open(os.path.join(expected, file), "rb") as f:
                    text = f.read().decode("latin-1")
                if not text.startswith("Created using Tarvenix") or not data_sets(text):
                    continue  # not a report, or one of no data set
                found = [p for k, block in enumerate(data_sets(text), 1)
                         for p in check_data_set(f"{area}/{case}/{file} data set {k}", block, args_text, file)]
                checked += 1
                problems += found
                print(f"{'FAIL' if found else 'ok  '} {area}/{case}/{file}")
    for p in problems:
        print(p)
    print(f"{checked} reports checked, {len(problems)} disagreements")
    return 1 if problems or not checked else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else
                  os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "cases")))
