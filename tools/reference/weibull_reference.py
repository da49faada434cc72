#!/usr/bin/python3
"""Independent reference figures for the Weibull analysis tests.

Computes, in double precision with NumPy/SciPy/SymPy (Debian's python3-numpy,
python3-scipy, python3-sympy), what the analysis must print for a few data sets:
rank regression of ln(-ln S) on ln(cycles) (numpy.polyfit), the slope's
standard error (scipy.stats.linregress), and the N life's range from the
inverse of the observed information matrix of the Weibull log-likelihood,
differentiated symbolically by SymPy at the regression estimates.

Run it by hand when a figure is in doubt:
    /usr/bin/python3 tools/reference/weibull_reference.py
check_cases.py (the test reference.cases) checks the case folders' reports
with analyse_single.
"""
import math

import numpy as np
import sympy as sp
from scipy import stats

LN2 = 0.69314718          # ln 2 as the program holds it
MINUS_LN_LN2 = 0.366513   # -ln(ln 2) as the program holds it
Z = {90: 1.645, 95: 1.96}

DATA_SETS = {
    # Ten failures, all channels failed; the published rank-regression example.
    "published": (10, [(c, j) for j, c in enumerate([25, 43, 53, 65, 76, 86, 95, 115, 132, 150], 1)]),
    # Eight of twenty channels failed; twelve suspended units.
    "suspended": (20, [(36, 1), (44, 2), (55, 3), (64, 4), (76, 5), (85, 6), (87, 7), (102, 8)]),
    # Tied failures: the cumulative count steps by two at three cycles.
    "tied": (12, [(12, 1), (26, 3), (27, 4), (47, 6), (48, 7), (58, 9)]),
    # The published failures among eleven channels, read from a data history file.
    "eleven": (11, [(c, j) for j, c in enumerate([25, 43, 53, 65, 76, 86, 95, 115, 132, 150], 1)]),
}

# Lives in the thousands, where storing in single precision moves a bound across
# a rounding boundary: the double-precision figure and the stored one differ.
SINGLE_PRECISION_SETS = {
    "thousands": (20, [(312, 1), (455, 2), (520, 3), (610, 4), (744, 5), (801, 6), (930, 7), (1105, 8)]),
}


def t_value(n, level):
    for limit, t90, t95 in ((10, 1.9, 2.45), (20, 1.75, 2.13), (30, 1.71, 2.06), (60, 1.684, 2.02)):
        if n < limit:
            return t90 if level == 90 else t95
    if n >= 120:
        return 1.648 if level == 90 else 1.96
    return 1.66 if level == 90 else 1.99


def survival(j, N, fraction):
    return {"unadjusted": 1 - j / N, "mean": 1 - j / (N + 1), "median": 1 - (j - 0.3) / (N + 0.4)}[fraction]


def round_even(v):
    return int(round(v))  # Python rounds halves to even, as the program does


def loglik_hessian(times, beta, eta):
    b, e = sp.symbols("b e", positive=True)
    ll = 0
    for t in times:
        tt = abs(t)
        ll -= (sp.Integer(tt) / e) ** b
        if t > 0:
            ll += sp.log(b) - sp.log(e) + (b - 1) * sp.log(sp.Integer(tt) / e)
    h = sp.hessian(ll, (e, b))
    return np.array(h.subs({b: beta, e: eta}).evalf(30), dtype=float)


def analyse(N, points, fraction, nparam, level):
    cycles = np.array([c for c, _ in points], dtype=float)
    x = np.log(cycles)
    y = np.array([math.log(-math.log(survival(j, N, fraction))) for _, j in points])
    beta, a = np.polyfit(x, y, 1)
    n63 = math.exp(-a / beta)
    n50 = math.exp((-a - MINUS_LN_LN2) / beta)
    life = n63 if nparam == "N63" else n50
    fit = stats.linregress(x, y)
    r2 = fit.rvalue ** 2
    conf = t_value(len(points), level) * fit.stderr / beta * 100
    # Range of the characteristic life; N50 goes through its whole number.
    last = points[-1][0]
    suspended = round_even(last * 1.1)
    times = [c for c, _ in points] + [-suspended] * (N - len(points))
    eta = round_even(n50) / LN2 ** (1 / beta) if nparam == "N50" else n63
    cov = np.linalg.inv(-loglik_hessian(times, beta, eta))
    w = math.exp(Z[level] * math.sqrt(cov[0, 0]) / eta)
    lower, upper = round_even(eta / w), round_even(eta * w)
    if nparam == "N50":
        upper = round_even(upper * LN2 ** (1 / beta))
        lower = round_even(lower * LN2 ** (1 / beta))
    boundaries = [(beta, 100), (life, 1), (r2, 100), (conf, 10), (eta / w, 1), (eta * w, 1)]
    if nparam == "N50":
        boundaries += [(round_even(eta / w) * LN2 ** (1 / beta), 1), (round_even(eta * w) * LN2 ** (1 / beta), 1)]
    return beta, life, r2, conf, lower, upper, eta, w, min(rounding_margin(v, m) for v, m in boundaries)


def analyse_single(N, points, fraction, nparam, level):
    """The same figures with every kept value stored in single precision and the
    arithmetic between stores in double, the way the program keeps them."""
    f32 = np.float32
    n = len(points)
    xs, ys = [], []
    sx = sxx = sxy = sy = f32(0)
    for c, j in points:
        S = f32(survival(j, N, fraction))
        y = f32(math.log(-math.log(float(S))))
        x = f32(math.log(c))
        xs.append(float(x))
        ys.append(float(y))
        sx = f32(float(sx) + float(x))
        sxx = f32(float(sxx) + float(x) * float(x))
        sxy = f32(float(sxy) + float(x) * float(y))
        sy = f32(float(sy) + float(y))
    D = n * float(sxx) - float(sx) * float(sx)
    xbar, ybar = f32(float(sx) / n), f32(float(sy) / n)
    beta = float(f32((n * float(sxy) - float(sx) * float(sy)) / D))
    a = float(f32(float(ybar) - float(xbar) * beta))
    life = float(f32(math.exp(-a / beta) if nparam == "N63" else math.exp((-a - MINUS_LN_LN2) / beta)))
    sst = sse = sse2 = sxxd = f32(0)
    for x, y in zip(xs, ys):
        sst = f32(float(sst) + (y - float(ybar)) ** 2)
        sse = f32(float(sse) + (y - a - x * beta) ** 2)
    for x, y in zip(xs, ys):
        sse2 = f32(float(sse2) + (y - (x * beta + a)) ** 2)
        sxxd = f32(float(sxxd) + (x - float(xbar)) ** 2)
    r2 = float(f32((float(sst) - float(sse)) / float(sst)))
    s2, vx = float(sse2) / (n - 2), float(sxxd) / (n - 1)
    se = (s2 / ((n - 1) * vx)) ** 0.5
    conf = float(f32(t_value(n, level) * se / beta * 100))
    suspended = round_even(points[-1][0] * 1.1)
    times = [c for c, _ in points] + [-suspended] * (N - n)
    eta = round_even(life) / LN2 ** (1 / beta) if nparam == "N50" else life
    cov = np.linalg.inv(-loglik_hessian(times, beta, eta))
    # No range (None, None) when a variance comes out negative or a bound leaves
    # the 32-bit whole numbers: the report then prints the life alone.
    if min(cov[0, 0], cov[1, 1]) < 0:
        return beta, life, r2, conf, None, None
    w = math.exp(float(f32(Z[level])) * math.sqrt(cov[0, 0]) / eta)
    bounds = [eta / w, eta * w]
    if nparam == "N50":
        bounds += [round_even(b) * LN2 ** (1 / beta) for b in bounds if abs(b) < 2 ** 31]
    if any(abs(b) >= 2 ** 31 - 0.5 for b in bounds):
        return beta, life, r2, conf, None, None
    return (beta, life, r2, conf) + tuple(round_even(b) for b in bounds[-2:])


def rounding_margin(v, scale):
    """How far (relative) a value lies from the nearest halfway point of its printed digits."""
    scaled = abs(v) * scale
    return abs(scaled - math.floor(scaled) - 0.5) / scaled


def fixed(v, decimals):
    m = 10 ** decimals
    r = round_even(m * abs(v))
    s = str(r)
    s = (s[:-decimals] + "." + s[-decimals:]) if decimals and r >= m else ("0." + ("00000" + s)[-decimals:] if decimals else s)
    return ("-" if v < 0 else " ") + s


def print_single_precision_figures():
    for name, (N, points) in SINGLE_PRECISION_SETS.items():
        for nparam in ("N50", "N63"):
            for level in (90, 95):
                double = analyse(N, points, "unadjusted", nparam, level)
                single = analyse_single(N, points, "unadjusted", nparam, level)
                print(f"// {name} unadjusted {nparam} {level}: range in double {double[4]} to {double[5]}, "
                      f"stored in single {single[4]} to {single[5]}")


if __name__ == "__main__":
    print_single_precision_figures()
    for name, (N, points) in DATA_SETS.items():
        for fraction in ("unadjusted", "mean", "median"):
            if fraction == "unadjusted" and points[-1][1] == N:
                continue  # S = 0 at the last point: no logarithm
            for nparam in ("N50", "N63"):
                for level in (90, 95):
                    beta, life, r2, conf, lo, up, eta, w, margin = analyse(N, points, fraction, nparam, level)
                    # Single-precision storage moves results by up to about 1e-4 relative;
                    # figures closer than that to a rounding boundary are not a fair test.
                    flag = "  CLOSE TO A ROUNDING BOUNDARY" if margin < 2e-4 else ""
                    print(f'{{"{name}", {fraction}, {nparam}, {level}, "{fixed(beta, 2)}", "{fixed(conf, 1)}", '
                          f'"{fixed(life, 0)}", {lo}, {up}, "{fixed(r2, 2)}"}},'
                          f'  // beta={beta:.6f} life={life:.4f} r2={r2:.6f} conf={conf:.4f} '
                          f'eta/w={eta / w:.4f} eta*w={eta * w:.4f}{flag}')
