#include "session/Utils.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>

#include "base/Basic.h"
#include "session/Sound.h"
#include "session/Session.h"
#include "session/UiPort.h"

namespace tarvenix::modUtils {
namespace {

// Steps 3 to 6 shared by both converters: digits of r placed around the point,
// the sign column, and no point when no decimals are asked for.
std::string PlaceDecimals(const std::string& digits, bool rAtLeastM, int16_t decimals, bool negative) {
  std::string s;
  if (rAtLeastM) {
    s = basic::Left(digits, static_cast<long long>(digits.size()) - decimals) + "." +
        basic::Right(digits, decimals);
  } else {
    s = "0." + basic::Right("00000" + digits, decimals);
  }
  s = (negative ? "-" : " ") + s;
  if (decimals == 0) s.pop_back();
  return s;
}

int32_t PowerOfTen(int16_t decimals) {
  if (decimals < 0) Raise(err::kInvalidCall);
  return basic::CLng(std::pow(10.0, decimals));
}

}  // namespace

std::string ConvertDecimal(double value, int16_t decimals) {
  int32_t m = PowerOfTen(decimals);
  int32_t r = 0;
  try {
    r = basic::CLng(static_cast<double>(m) * std::fabs(value));
  } catch (const RuntimeError& e) {
    if (e.Number() != err::kOverflow) throw;
    return basic::CStr(value);
  }
  return PlaceDecimals(std::to_string(r), r >= m, decimals, value < 0);
}

std::string ConvertDecimalDbl(double value, int16_t decimals) {
  int32_t m = PowerOfTen(decimals);
  double scaled = static_cast<double>(m) * std::fabs(value);
  double r = std::trunc(scaled);
  if (scaled - r >= 0.5) r += 1;
  char buf[400];
  std::snprintf(buf, sizeof buf, "%.0f", r);
  return PlaceDecimals(buf, r >= m, decimals, value < 0);
}

std::string ErrorBoxText(std::string_view label, const RuntimeError& e, std::string_view text) {
  return "Error in " + std::string(label) + " - Error #" + std::to_string(e.Number()) + "  " + e.Description() +
         "\r" + std::string(text);
}

void ShowMessage(Session& s, UiPort& ui, int16_t type, std::string_view label, std::string_view text,
                 const RuntimeError& e) {
  if (type == kMsgConfirmation) {
    ui.ShowMessageBox(std::string(text), kMessageTitle, MessageIcon::Information);
    return;
  }
  modSound::PlaySound(s, ui, modSound::Sound::Attention);
  if (type == kMsgNotice) {
    ui.ShowMessageBox(std::string(text), kMessageTitle, MessageIcon::Exclamation);
  } else if (type == kMsgError) {
    modSound::PlaySound(s, ui, modSound::Sound::Attention);
    ui.ShowMessageBox(label.empty() ? std::string(text) : ErrorBoxText(label, e, text), kMessageTitle,
                      MessageIcon::Critical);
  }
}

bool Trapped(Session& s, UiPort& ui, std::string_view label, const std::function<void()>& body) {
  try {
    body();
    return true;
  } catch (const std::exception&) {
    RuntimeError e = CurrentError();
    ShowMessage(s, ui, kMsgError, label, "", e);
    return false;
  }
}

void DebugPrint(UiPort& ui, const std::string& line) { ui.DebugPrint(line); }

void ShellExec(Session& s, UiPort& ui, const std::string& document) {
  if (!ui.OpenDocument(document)) ShowMessage(s, ui, kMsgNotice, "", "Could not open the file " + document);
}

double SystemTimeOfDay() {
  using namespace std::chrono;
  std::tm t = basic::Now();
  auto now = system_clock::now();
  double fraction = static_cast<double>(duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000) / 1000.0;
  return t.tm_hour * 3600.0 + t.tm_min * 60.0 + t.tm_sec + fraction;
}

double Stopwatch::Elapsed() const {
  double d = clock_() - start_;
  if (d < 0) d += 86400.0;
  return d;
}

void Wait(UiPort& ui, double seconds, const TimeOfDaySource& clock, const std::function<void()>& pause) {
  const double end = clock() + seconds;
  for (;;) {
    double remaining = end - clock();
    // The clock passed midnight: the end lies a day earlier on its scale.
    if (remaining >= 70000) remaining -= 86400;
    if (remaining <= 0) return;
    ui.DoEvents();
    if (pause) {
      pause();
    } else {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
}

}  // namespace tarvenix::modUtils
