#pragma once
// The six colour schemes a plot is drawn in, and the colour of each data set
// under the active scheme. Colours are Windows colour values, 0x00BBGGRR.

#include <array>
#include <cstdint>

namespace tarvenix {

using OleColor = uint32_t;  // 0x00BBGGRR

struct ChartModel;

// The standard 16-colour palette: 0 black ... 15 bright white. An index outside
// 0..15 is run-time error 5.
OleColor QBColor(int index);

// One scheme: the colours of the title, axis lines, axis labels, axis titles
// and the chart panel.
class clsColorScheme {
 public:
  void SetColorScheme(OleColor clrTitle, OleColor clrAxisPen, OleColor clrAxisLabel, OleColor clrAxisTitle,
                      OleColor clrBkg);
  // Each argument is a palette index taken modulo 16 with the sign kept (as the
  // classic Mod), so 17 is colour 1 and -1 is an invalid index (error 5).
  void SetQBColorScheme(int clrTitle, int clrAxisPen, int clrAxisLabel, int clrAxisTitle, int clrBkg);
  // Every colour c becomes (NOT c) AND 0xFFFFFF: a negative of the scheme.
  void ComplementColorScheme();

  OleColor titleColor() const { return colors_[0]; }
  OleColor axisPenColor() const { return colors_[1]; }
  OleColor axisLblColor() const { return colors_[2]; }
  OleColor axisTitleColor() const { return colors_[3]; }
  OleColor bkgColor() const { return colors_[4]; }

 private:
  std::array<OleColor, 5> colors_{};
};

// The scheme numbers the plot window uses.
inline constexpr int32_t kSchemeMonochromePrint = 3;
inline constexpr int32_t kSchemeColourPrint = 5;  // also the negative-image export
inline constexpr int32_t kSchemeScreen = 6;

// The table of schemes 1..6 and the current one (1 after creation).
class clsGrInfo {
 public:
  clsGrInfo();

  int32_t ClrScheme() const { return current_; }
  // The scheme with that number; outside 1..6 is run-time error 9.
  const clsColorScheme& Scheme(int32_t eType) const;
  // Makes scheme eType current and paints the chart's panel, title and its
  // four axes in it. Outside 1..6 is run-time error 9 and nothing changes.
  void SetColorScheme(int32_t eType, ChartModel& oChart);

 private:
  std::array<clsColorScheme, 7> schemes_;  // index 0 holds no scheme
  int32_t current_ = 1;
};

// The colour of a data set or histogram series with palette index `index`
// under scheme `scheme`: monochrome output is all black, the white-background
// schemes trade the colours that vanish on white for darker ones.
OleColor QBColorFor(int32_t scheme, int index);

}  // namespace tarvenix
