#include <gtest/gtest.h>

#include <set>

#include "base/RuntimeError.h"
#include "plot/Chart.h"
#include "plot/ColorScheme.h"
#include "support/ErrorNumber.h"

namespace tarvenix {
namespace {

using test::ErrorNumberOf;

TEST(ColorSchemes, SelectingASchemePaintsPanelTitleAndAllFourAxes) {
  clsGrInfo info;
  ChartModel chart;
  info.SetColorScheme(5, chart);
  EXPECT_EQ(info.ClrScheme(), 5);
  EXPECT_EQ(chart.panelColor, 0xFFFFFFu);
  EXPECT_EQ(chart.titleColor, 0x804000u);
  for (const ChartAxis& axis : chart.axes) {
    EXPECT_EQ(axis.penColor, 0x804000u);
    EXPECT_EQ(axis.labelColor, 0x804000u);
    EXPECT_EQ(axis.titleColor, 0x804000u);
  }
  for (int bad : {0, 7, -1}) {
    EXPECT_EQ(ErrorNumberOf([&] { info.SetColorScheme(bad, chart); }), err::kSubscript) << bad;
    EXPECT_EQ(info.ClrScheme(), 5);
  }
}

TEST(ColorSchemes, PaletteIndexesWrapWithTheirSignAndComplementStaysIn24Bits) {
  clsColorScheme c;
  c.SetQBColorScheme(17, 31, -16, 16, 15);
  EXPECT_EQ(c.titleColor(), QBColor(1));
  EXPECT_EQ(c.axisPenColor(), QBColor(15));
  EXPECT_EQ(c.axisLblColor(), QBColor(0));  // -16 Mod 16 is 0
  EXPECT_EQ(c.axisTitleColor(), QBColor(0));
  EXPECT_EQ(ErrorNumberOf([&] { c.SetQBColorScheme(-1, 0, 0, 0, 0); }), err::kInvalidCall);

  c.SetColorScheme(0, 0xFF000000u, 0x123456, 0xFFFFFF, 0x804000);
  c.ComplementColorScheme();
  EXPECT_EQ(c.titleColor(), 0xFFFFFFu);
  EXPECT_EQ(c.axisPenColor(), 0xFFFFFFu);
  EXPECT_EQ(c.axisLblColor(), 0xEDCBA9u);
  EXPECT_EQ(c.axisTitleColor(), 0u);
  EXPECT_EQ(c.bkgColor(), 0x7FBFFFu);
}

TEST(ColorSchemes, DataSetsDifferOnScreenAndAreBlackInTheMonochromeScheme) {
  for (int scheme = 1; scheme <= 6; ++scheme) {
    std::set<OleColor> colours;
    for (int n = 1; n <= 5; ++n) colours.insert(QBColorFor(scheme, n + 8));
    EXPECT_EQ(colours.size(), scheme == 3 ? 1u : 5u) << scheme;
    if (scheme == 3) {
      EXPECT_EQ(*colours.begin(), 0u);
    }
  }
}

}  // namespace
}  // namespace tarvenix
