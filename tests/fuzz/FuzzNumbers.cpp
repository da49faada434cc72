// The number utilities on arbitrary text and doubles: nothing but the run-time
// error may leave them, and the texts they make read back as the numbers they
// stand for.
//
// Input: the first 8 bytes are a double, the next byte the decimals (byte % 8,
// so 6 and 7 lie outside 0..5), the next byte a pattern's length and the
// pattern; the rest is a text.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

#include "FuzzSupport.h"
#include "base/Basic.h"
#include "base/RuntimeError.h"
#include "session/Utils.h"

using namespace tarvenix;

namespace {

// Runs `body`; a run-time error is an answer, any other exception escapes and
// ends the run as a crash.
template <typename F>
bool Answers(F&& body) {
  try {
    body();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

bool HasBlankOrRadix(std::string_view s) {
  std::string_view trimmed = s.substr(0, s.find_last_not_of(" \t") + 1);
  trimmed.remove_prefix(std::min(trimmed.size(), trimmed.find_first_not_of(" \t")));
  return trimmed.find_first_of(" \t\n&") != std::string_view::npos;
}

void CheckText(std::string_view text) {
  double val = 0;
  const bool hasValue = Answers([&] { val = basic::Val(text); });
  if (hasValue) Answers([&] { basic::CLng(val); });
  double dbl = 0;
  const bool numeric = Answers([&] { dbl = basic::CDbl(text); });
  fuzz::Require(numeric == basic::IsNumeric(text), "CDbl takes the texts IsNumeric accepts", std::string(text));
  // A plain decimal number reads the same both ways.
  if (numeric && !HasBlankOrRadix(text))
    fuzz::Require(hasValue && val == dbl, "Val and CDbl agree on a number", std::string(text));
  Answers([&] { basic::CBool(text); });
}

void CheckDouble(double v, int16_t decimals) {
  std::string text;
  if (!Answers([&] { text = modUtils::ConvertDecimal(v, decimals); })) return;
  Answers([&] { modUtils::ConvertDecimalDbl(v, decimals); });
  if (!std::isfinite(v) || decimals < 0 || decimals > 5) return;
  const double m = std::pow(10.0, decimals);
  if (m * std::fabs(v) >= 2147483647.0) return;  // the plain form comes back instead
  fuzz::Require(text.size() >= 2 && (text[0] == ' ' || text[0] == '-'), "a sign column", text);
  fuzz::Require((text[0] == '-') == (v < 0), "the sign column shows the sign", text);
  const std::size_t point = text.find('.');
  fuzz::Require(decimals == 0 ? point == std::string::npos : text.size() - point - 1 == static_cast<std::size_t>(decimals),
                "as many decimals as asked", text);
  // The text is the value rounded to its decimals.
  const double shown = basic::Val(text);
  fuzz::Require(std::fabs(shown - v) <= 0.5 / m * (1 + 1e-5), "the text is the value rounded", text);
}

// Whether a double converts to a single without leaving its range.
bool FitsSingle(double v) { return std::fabs(v) <= std::numeric_limits<float>::max(); }

void CheckPlainForms(double v) {
  if (!std::isfinite(v)) return;
  const std::string plain = basic::CStr(v);
  double back = 0;
  // Fifteen digits round the largest doubles up past the largest double, which
  // reads back as an overflow.
  if (!Answers([&] { back = basic::Val(plain); })) {
    fuzz::Require(std::fabs(v) > 1.79769313486231e308, "CStr reads back", plain);
    return;
  }
  fuzz::Require(std::fabs(back - v) <= std::fabs(v) * 1e-14, "CStr keeps 15 digits", plain);
  if (FitsSingle(v)) basic::CStr(static_cast<float>(v));
  fuzz::Require(basic::Val(basic::Str(v)) == back, "Str and CStr show the same number", basic::Str(v));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::InputHeader in(data, size);
  double v = 0;
  const std::string_view raw = in.Bytes(sizeof v);
  std::memcpy(&v, raw.data(), raw.size());
  const int16_t decimals = static_cast<int16_t>(in.Byte() % 8);
  const std::string_view pattern = in.Bytes(in.Byte());
  const std::string_view text = in.Rest();

  CheckText(text);
  CheckDouble(v, decimals);
  CheckPlainForms(v);
  Answers([&] { basic::Format(v, pattern); });
  if (FitsSingle(v)) Answers([&] { basic::Format(static_cast<float>(v), pattern); });
  // Numbers that come as text, as they do from files and boxes.
  double fromText = 0;
  if (Answers([&] { fromText = basic::Val(text); })) {
    CheckDouble(fromText, decimals);
    CheckPlainForms(fromText);
  }
  return 0;
}
