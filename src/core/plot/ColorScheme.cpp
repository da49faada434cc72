#include "plot/ColorScheme.h"

#include "base/RuntimeError.h"
#include "plot/Chart.h"

namespace tarvenix {
namespace {

constexpr std::array<OleColor, 16> kPalette = {
    0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
    0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
};

// Rose for palette grey (8): grey data would disappear in the silver grid.
constexpr OleColor kRose = 0xB48CF6;
// Pale blue for palette light blue (9) on dark panels.
constexpr OleColor kPaleBlue = 0xFFC0C0;

void CheckSchemeNumber(int32_t eType) {
  if (eType < 1 || eType > 6) Raise(err::kSubscript);
}

}  // namespace

OleColor QBColor(int index) {
  if (index < 0 || index > 15) Raise(err::kInvalidCall);
  return kPalette[static_cast<std::size_t>(index)];
}

void clsColorScheme::SetColorScheme(OleColor clrTitle, OleColor clrAxisPen, OleColor clrAxisLabel,
                                    OleColor clrAxisTitle, OleColor clrBkg) {
  colors_ = {clrTitle, clrAxisPen, clrAxisLabel, clrAxisTitle, clrBkg};
}

void clsColorScheme::SetQBColorScheme(int clrTitle, int clrAxisPen, int clrAxisLabel, int clrAxisTitle,
                                      int clrBkg) {
  // C++ % keeps the dividend's sign, exactly as the classic Mod does.
  SetColorScheme(QBColor(clrTitle % 16), QBColor(clrAxisPen % 16), QBColor(clrAxisLabel % 16),
                 QBColor(clrAxisTitle % 16), QBColor(clrBkg % 16));
}

void clsColorScheme::ComplementColorScheme() {
  for (OleColor& c : colors_) c = ~c & 0xFFFFFFu;
}

clsGrInfo::clsGrInfo() {
  schemes_[1].SetQBColorScheme(14, 13, 14, 14, 0);
  schemes_[2].SetQBColorScheme(14, 13, 14, 14, 0);
  schemes_[2].ComplementColorScheme();
  schemes_[3].SetQBColorScheme(0, 0, 0, 0, 15);
  schemes_[4].SetColorScheme(0, 0, 0, 0, 0);
  schemes_[5].SetColorScheme(0x804000, 0x804000, 0x804000, 0x804000, 0xFFFFFF);
  schemes_[6].SetColorScheme(0, 0, 0, 0, 0xFFFFFF);
}

const clsColorScheme& clsGrInfo::Scheme(int32_t eType) const {
  CheckSchemeNumber(eType);
  return schemes_[static_cast<std::size_t>(eType)];
}

void clsGrInfo::SetColorScheme(int32_t eType, ChartModel& oChart) {
  const clsColorScheme& scheme = Scheme(eType);
  current_ = eType;
  oChart.panelColor = scheme.bkgColor();
  oChart.titleColor = scheme.titleColor();
  for (ChartAxis& axis : oChart.axes) {
    axis.penColor = scheme.axisPenColor();
    axis.labelColor = scheme.axisLblColor();
    axis.titleColor = scheme.axisTitleColor();
  }
}

OleColor QBColorFor(int32_t scheme, int index) {
  if (index == -1) index = 0;
  if (scheme == 3) return QBColor(0);
  if (scheme == 5 || scheme == 6) {
    switch (index) {
      case 8: return kRose;
      case 11: return QBColor(3);
      case 14: return QBColor(2);
      case 15: return QBColor(0);
      default: return QBColor(index);
    }
  }
  switch (index) {
    case 2: return QBColor(10);
    case 7: return QBColor(15);
    case 8: return kRose;
    case 9: return kPaleBlue;
    default: return QBColor(index);
  }
}

}  // namespace tarvenix
