#include "base/Basic.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>

#include "base/RuntimeError.h"

namespace tarvenix::basic {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsValSkipped(char c) { return c == ' ' || c == '\t' || c == '\n'; }

// Significant digits kept when a number is parsed; longer digit runs only move
// the exponent, so a huge line never makes a huge buffer.
constexpr std::size_t kMaxDigits = 40;
constexpr long long kExponentLimit = 100000;

// A parsed decimal number before conversion: sign, significant digits and the
// power of ten that scales them (value = digits * 10^exponent).
struct ParsedNumber {
  bool negative = false;
  std::string digits;
  long long exponent = 0;
  bool anyDigit = false;
};

double ToDouble(const ParsedNumber& p) {
  if (!p.anyDigit || p.digits.empty()) return 0.0;
  long long e = p.exponent;
  if (e > kExponentLimit) e = kExponentLimit;
  if (e < -kExponentLimit) e = -kExponentLimit;
  std::string text = (p.negative ? "-" : "") + p.digits + "e" + std::to_string(e);
  double v = std::strtod(text.c_str(), nullptr);
  if (std::isinf(v)) Raise(err::kOverflow);
  return v;
}

// Adds one mantissa digit; afterPoint says whether it stands after the point.
void AddDigit(ParsedNumber& p, char c, bool afterPoint) {
  p.anyDigit = true;
  if (p.digits.empty() && c == '0') {
    if (afterPoint) --p.exponent;
    return;
  }
  if (p.digits.size() < kMaxDigits) {
    p.digits.push_back(c);
    if (afterPoint) --p.exponent;
  } else if (!afterPoint) {
    ++p.exponent;
  }
}

void AddExponentDigit(long long& e, char c) {
  if (e < kExponentLimit * 10) e = e * 10 + (c - '0');
}

// "&H"/"&O" numbers: up to 16 bits they are Integers (so &HFFFF is -1), up to 32
// bits Longs; more is an overflow.
double RadixValue(unsigned long long v) {
  if (v <= 0xFFFFull) return static_cast<int16_t>(static_cast<uint16_t>(v));
  if (v <= 0xFFFFFFFFull) return static_cast<int32_t>(static_cast<uint32_t>(v));
  Raise(err::kOverflow);
}

int HexDigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Accumulates radix digits, saturating past 32 bits so the result overflows.
void AddRadixDigit(unsigned long long& v, int digit, int radix) {
  if (v <= 0xFFFFFFFFull) v = v * static_cast<unsigned>(radix) + static_cast<unsigned>(digit);
}

// What one scan of a number read. Val takes whatever number leads the text;
// IsNumeric and CDbl take a scan that read the whole text with nothing missing.
struct NumberScan {
  bool radix = false;                 // a "&H"/"&O" number
  unsigned long long radixValue = 0;  // its digits, saturated past 32 bits
  int radixDigits = 0;
  ParsedNumber decimal;               // otherwise the decimal number
  bool exponentMark = false;          // an E or D was read ...
  bool exponentDigits = false;        // ... and digits after it
  std::size_t end = 0;                // where the scan stopped
};

// Reads the number at the start of `s`: an "&H"/"&O" prefix and its digits, or
// an optional sign, digits with at most one point and an optional exponent (E or
// D, a sign, digits), each part up to the first character that does not fit.
// With blanksInside, blanks, tabs and line feeds are skipped wherever they stand
// (Val's way); without, the number has none.
NumberScan ScanNumber(std::string_view s, bool blanksInside) {
  NumberScan scan;
  std::size_t i = 0;
  auto skip = [&] {
    while (blanksInside && i < s.size() && IsValSkipped(s[i])) ++i;
  };
  auto at = [&](std::string_view chars) { return i < s.size() && chars.find(s[i]) != std::string_view::npos; };
  skip();
  if (at("&")) {
    const std::size_t amp = i++;
    skip();
    if (at("HhOo")) {
      const int radix = at("Hh") ? 16 : 8;
      scan.radix = true;
      for (++i; i < s.size(); ++i) {
        if (blanksInside && IsValSkipped(s[i])) continue;
        const int d = HexDigitValue(s[i]);
        if (d < 0 || d >= radix) break;
        AddRadixDigit(scan.radixValue, d, radix);
        ++scan.radixDigits;
      }
      scan.end = i;
      return scan;
    }
    i = amp;  // a lone "&" is no number: the decimal scan stops at it
  }
  ParsedNumber& p = scan.decimal;
  if (at("+-")) p.negative = s[i++] == '-';
  bool afterPoint = false;
  for (; i < s.size(); ++i) {
    if (blanksInside && IsValSkipped(s[i])) continue;
    if (IsDigit(s[i])) {
      AddDigit(p, s[i], afterPoint);
    } else if (s[i] == '.' && !afterPoint) {
      afterPoint = true;
    } else {
      break;
    }
  }
  if (at("eEdD")) {
    scan.exponentMark = true;
    ++i;
    skip();
    bool negExp = false;
    if (at("+-")) negExp = s[i++] == '-';
    long long ev = 0;
    for (; i < s.size(); ++i) {
      if (blanksInside && IsValSkipped(s[i])) continue;
      if (!IsDigit(s[i])) break;
      AddExponentDigit(ev, s[i]);
      scan.exponentDigits = true;
    }
    p.exponent += negExp ? -ev : ev;
  }
  scan.end = i;
  return scan;
}

// Strict parse for IsNumeric/CDbl: the whole text (blanks and tabs around it)
// must be one number.
std::optional<double> ParseStrict(std::string_view s) {
  std::size_t b = 0, e = s.size();
  while (b < e && (s[b] == ' ' || s[b] == '\t')) ++b;
  while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t')) --e;
  s = s.substr(b, e - b);
  if (s.empty()) return std::nullopt;
  const NumberScan scan = ScanNumber(s, false);
  if (scan.end != s.size()) return std::nullopt;
  if (scan.radix) {
    if (scan.radixDigits == 0 || scan.radixValue > 0xFFFFFFFFull) return std::nullopt;
    return RadixValue(scan.radixValue);
  }
  if (!scan.decimal.anyDigit || (scan.exponentMark && !scan.exponentDigits)) return std::nullopt;
  try {
    return ToDouble(scan.decimal);
  } catch (const RuntimeError&) {
    return std::nullopt;  // too large for a double: not a number we can hold
  }
}

// A number's decimal form: digits without leading zeros (or "0") and the count of
// digits before the point (may be negative or exceed the digit count).
struct DecimalForm {
  bool negative = false;
  std::string digits = "0";
  int pointPos = 1;
};

DecimalForm ToDecimalForm(double v, int significant) {
  DecimalForm d;
  d.negative = std::signbit(v) && v != 0.0;
  double a = std::fabs(v);
  if (a == 0.0) return d;
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*e", significant - 1, a);
  std::string text(buf);
  std::size_t ePos = text.find('e');
  std::string mant = text.substr(0, ePos);
  int exp10 = std::atoi(text.c_str() + ePos + 1);
  d.digits.clear();
  for (char c : mant)
    if (IsDigit(c)) d.digits.push_back(c);
  while (d.digits.size() > 1 && d.digits.back() == '0') d.digits.pop_back();
  d.pointPos = exp10 + 1;
  return d;
}

// Rounds half away from zero to `decimals` places after the point.
DecimalForm RoundDecimal(DecimalForm d, int decimals) {
  long long keep = static_cast<long long>(d.pointPos) + decimals;
  if (keep >= static_cast<long long>(d.digits.size())) return d;
  if (keep < 0) {
    d.digits = "0";
    d.pointPos = 1;
    return d;
  }
  bool roundUp = d.digits[static_cast<std::size_t>(keep)] >= '5';
  std::string kept = d.digits.substr(0, static_cast<std::size_t>(keep));
  if (roundUp) {
    int i = static_cast<int>(kept.size()) - 1;
    while (i >= 0 && kept[static_cast<std::size_t>(i)] == '9') kept[static_cast<std::size_t>(i--)] = '0';
    if (i >= 0) {
      ++kept[static_cast<std::size_t>(i)];
    } else {
      kept.insert(kept.begin(), '1');
      ++d.pointPos;
    }
  }
  std::size_t firstNonZero = kept.find_first_not_of('0');
  if (firstNonZero == std::string::npos) {
    d.digits = "0";
    d.pointPos = 1;
    return d;
  }
  // Leading zeros can only appear when nothing was kept before rounding; drop them.
  d.pointPos -= static_cast<int>(firstNonZero);
  d.digits = kept.substr(firstNonZero);
  while (d.digits.size() > 1 && d.digits.back() == '0') d.digits.pop_back();
  return d;
}

// The digits before and after the point of a decimal form.
std::string IntegerDigits(const DecimalForm& d) {
  if (d.digits == "0" || d.pointPos <= 0) return "";
  std::string s = d.digits.substr(0, std::min<std::size_t>(d.digits.size(), static_cast<std::size_t>(d.pointPos)));
  if (static_cast<std::size_t>(d.pointPos) > d.digits.size())
    s.append(static_cast<std::size_t>(d.pointPos) - d.digits.size(), '0');
  return s;
}

std::string FractionDigits(const DecimalForm& d) {
  if (d.digits == "0") return "";
  if (d.pointPos >= static_cast<int>(d.digits.size())) return "";
  if (d.pointPos <= 0) return std::string(static_cast<std::size_t>(-d.pointPos), '0') + d.digits;
  return d.digits.substr(static_cast<std::size_t>(d.pointPos));
}

// The plain text form shared by CStr and Str: fixed notation for decimal
// exponents from -5 (exclusive) up to the precision, scientific beyond.
std::string PlainForm(double v, int significant, bool leadingZero) {
  if (std::isnan(v)) return "NaN";
  if (std::isinf(v)) return v < 0 ? "-Infinity" : "Infinity";
  DecimalForm d = ToDecimalForm(v, significant);
  std::string sign = d.negative ? "-" : "";
  if (d.digits == "0") return "0";
  int exp10 = d.pointPos - 1;
  if (exp10 >= significant || exp10 <= -5) {
    std::string s = sign + d.digits.substr(0, 1);
    if (d.digits.size() > 1) s += "." + d.digits.substr(1);
    char buf[16];
    std::snprintf(buf, sizeof buf, "E%c%02d", exp10 < 0 ? '-' : '+', std::abs(exp10));
    return s + buf;
  }
  std::string intPart = IntegerDigits(d);
  std::string frac = FractionDigits(d);
  if (intPart.empty()) intPart = leadingZero ? "0" : "";
  return sign + intPart + (frac.empty() ? "" : "." + frac);
}

std::string StrForm(double v, int significant) {
  std::string s = PlainForm(v, significant, false);
  return (v >= 0 || std::isnan(v)) ? " " + s : s;
}

std::string FormatWithPattern(double v, int significant, std::string_view pattern) {
  std::size_t point = pattern.find('.');
  std::string_view intPat = pattern.substr(0, point);
  std::string_view fracPat = point == std::string_view::npos ? std::string_view{} : pattern.substr(point + 1);
  std::size_t intZeros = 0, fracZeros = 0, fracHashes = 0;
  for (char c : intPat)
    if (c == '0') ++intZeros;
  for (char c : fracPat) {
    if (c == '0') ++fracZeros;
    if (c == '#') ++fracHashes;
  }
  if (std::isnan(v) || std::isinf(v)) return PlainForm(v, significant, true);
  DecimalForm d = RoundDecimal(ToDecimalForm(v, significant), static_cast<int>(fracZeros + fracHashes));
  std::string intPart = IntegerDigits(d);
  if (intPart.size() < intZeros) intPart.insert(0, intZeros - intPart.size(), '0');
  std::string frac = FractionDigits(d);
  frac.resize(std::max(frac.size(), fracZeros), '0');
  while (frac.size() > fracZeros && frac.back() == '0') frac.pop_back();
  std::string s = (v < 0 ? "-" : "") + intPart;
  if (point != std::string_view::npos) s += "." + frac;
  return s;
}

constexpr std::array<const char*, 12> kMonthNames = {"January", "February", "March",     "April",
                                                     "May",     "June",     "July",      "August",
                                                     "September", "October", "November", "December"};

long long ClampLength(std::string_view s, long long n) {
  if (n < 0) Raise(err::kInvalidCall);
  return std::min<long long>(n, static_cast<long long>(s.size()));
}

}  // namespace

double Val(std::string_view s) {
  const NumberScan scan = ScanNumber(s, true);
  return scan.radix ? RadixValue(scan.radixValue) : ToDouble(scan.decimal);
}

bool IsNumeric(std::string_view s) { return ParseStrict(s).has_value(); }

double CDbl(std::string_view s) {
  std::optional<double> v = ParseStrict(s);
  if (!v) Raise(err::kTypeMismatch);
  return *v;
}

int16_t CInt(double v) {
  double r = std::nearbyint(v);
  if (!(r >= -32768.0 && r <= 32767.0)) Raise(err::kOverflow);
  return static_cast<int16_t>(r);
}

int32_t CLng(double v) {
  double r = std::nearbyint(v);
  if (!(r >= -2147483648.0 && r <= 2147483647.0)) Raise(err::kOverflow);
  return static_cast<int32_t>(r);
}

bool CBool(std::string_view s) {
  std::string t = UCase(Trim(s));
  if (t == "TRUE") return true;
  if (t == "FALSE") return false;
  return CDbl(s) != 0.0;
}

std::string BoolText(bool b) { return b ? "True" : "False"; }

double Fix(double v) { return std::trunc(v); }
double Int(double v) { return std::floor(v); }

std::string CStr(double v) { return PlainForm(v, 15, true); }
std::string CStr(float v) { return PlainForm(static_cast<double>(v), 7, true); }
std::string Str(double v) { return StrForm(v, 15); }
std::string Str(float v) { return StrForm(static_cast<double>(v), 7); }

double Checked(double v) {
  if (!std::isfinite(v)) Raise(err::kOverflow);
  return v;
}

double Log(double v) {
  if (!(v > 0)) Raise(err::kInvalidCall);
  return std::log(v);
}

double Exp(double v) { return Checked(std::exp(v)); }

double Sqr(double v) {
  if (v < 0) Raise(err::kInvalidCall);
  return std::sqrt(v);
}

double Power(double base, double exponent) {
  if (base < 0 && exponent != std::trunc(exponent)) Raise(err::kInvalidCall);
  if (base == 0 && exponent < 0) Raise(err::kInvalidCall);
  return Checked(std::pow(base, exponent));
}

double Divide(double a, double b) {
  if (b == 0) Raise(a == 0 ? err::kOverflow : err::kDivisionByZero);
  return Checked(a / b);
}

float CSng(double v) {
  Checked(v);
  if (std::fabs(v) > static_cast<double>(std::numeric_limits<float>::max())) Raise(err::kOverflow);
  return static_cast<float>(v);
}

std::string Format(double v, std::string_view pattern) { return FormatWithPattern(v, 15, pattern); }
std::string Format(float v, std::string_view pattern) {
  return FormatWithPattern(static_cast<double>(v), 7, pattern);
}

std::string FormatDate(const std::tm& t, std::string_view pattern) {
  std::string out;
  std::size_t i = 0;
  auto run = [&](char c) {
    std::size_t n = 0;
    while (i + n < pattern.size() && (pattern[i + n] == c || pattern[i + n] == c - 32)) ++n;
    return n;
  };
  const int month = (t.tm_mon % 12 + 12) % 12;
  while (i < pattern.size()) {
    char c = pattern[i];
    char lower = (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c;
    std::size_t n = (lower == 'd' || lower == 'm' || lower == 'y') ? run(lower) : 0;
    if (lower == 'd' && n > 0) {
      out += n >= 2 ? (t.tm_mday < 10 ? "0" : "") + std::to_string(t.tm_mday) : std::to_string(t.tm_mday);
    } else if (lower == 'm' && n > 0) {
      if (n >= 4) out += kMonthNames[static_cast<std::size_t>(month)];
      else if (n == 3) out += std::string(kMonthNames[static_cast<std::size_t>(month)]).substr(0, 3);
      else if (n == 2) out += (month + 1 < 10 ? "0" : "") + std::to_string(month + 1);
      else out += std::to_string(month + 1);
    } else if (lower == 'y' && n > 0) {
      int year = t.tm_year + 1900;
      if (n >= 3) {
        out += std::to_string(year);
      } else {
        int yy = ((year % 100) + 100) % 100;
        out += (yy < 10 ? "0" : "") + std::to_string(yy);
      }
    } else {
      out += c;
      n = 1;
    }
    i += n;
  }
  return out;
}

std::string GeneralDate(const std::tm& t) {
  std::string s = FormatDate(t, "m/d/yyyy");
  if (t.tm_hour == 0 && t.tm_min == 0 && t.tm_sec == 0) return s;
  int hour12 = t.tm_hour % 12 == 0 ? 12 : t.tm_hour % 12;
  char buf[32];
  std::snprintf(buf, sizeof buf, " %d:%02d:%02d %s", hour12, t.tm_min, t.tm_sec, t.tm_hour < 12 ? "AM" : "PM");
  return s + buf;
}

std::tm Now() {
  std::time_t now = std::time(nullptr);
  std::tm t{};
#ifdef _WIN32
  localtime_s(&t, &now);
#else
  localtime_r(&now, &t);
#endif
  return t;
}

std::string Left(std::string_view s, long long n) {
  return std::string(s.substr(0, static_cast<std::size_t>(ClampLength(s, n))));
}

std::string Right(std::string_view s, long long n) {
  long long k = ClampLength(s, n);
  return std::string(s.substr(s.size() - static_cast<std::size_t>(k)));
}

std::string Mid(std::string_view s, long long start1) {
  if (start1 < 1) Raise(err::kInvalidCall);
  if (start1 > static_cast<long long>(s.size())) return "";
  return std::string(s.substr(static_cast<std::size_t>(start1 - 1)));
}

std::string Mid(std::string_view s, long long start1, long long n) {
  std::string rest = Mid(s, start1);
  return Left(rest, n);
}

std::string LTrim(std::string_view s) {
  std::size_t b = s.find_first_not_of(' ');
  return b == std::string_view::npos ? "" : std::string(s.substr(b));
}

std::string RTrim(std::string_view s) {
  std::size_t e = s.find_last_not_of(' ');
  return e == std::string_view::npos ? "" : std::string(s.substr(0, e + 1));
}

std::string Trim(std::string_view s) { return LTrim(RTrim(s)); }

std::string UCase(std::string_view s) {
  std::string r(s);
  for (char& c : r)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return r;
}

std::string LCase(std::string_view s) {
  std::string r(s);
  for (char& c : r)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return r;
}

}  // namespace tarvenix::basic
