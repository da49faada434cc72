#include <gtest/gtest.h>

#include "analysis/RuntimeError.h"
#include "plot/Chart.h"
#include "plot/ColorScheme.h"
#include "support/ErrorNumber.h"

namespace tarvenix {
namespace {

using test::ErrorNumberOf;

TEST(ColorSchemes, SixSchemesHoldTheirFiveColours) {
  struct Row {
    OleColor title, pen, label, axisTitle, bkg;
  };
  const Row expected[7] = {
      {},
      {0x00FFFF, 0xFF00FF, 0x00FFFF, 0x00FFFF, 0x000000},  // light yellow / light magenta on black
      {0xFF0000, 0x00FF00, 0xFF0000, 0xFF0000, 0xFFFFFF},  // its negative: blue / green on white
      {0x000000, 0x000000, 0x000000, 0x000000, 0xFFFFFF},  // monochrome print
      {0x000000, 0x000000, 0x000000, 0x000000, 0x000000},  // all black, as listed
      {0x804000, 0x804000, 0x804000, 0x804000, 0xFFFFFF},  // dark blue on white
      {0x000000, 0x000000, 0x000000, 0x000000, 0xFFFFFF},  // the screen
  };
  clsGrInfo info;
  EXPECT_EQ(info.ClrScheme(), 1);
  for (int n = 1; n <= 6; ++n) {
    const clsColorScheme& c = info.Scheme(n);
    EXPECT_EQ(c.titleColor(), expected[n].title) << n;
    EXPECT_EQ(c.axisPenColor(), expected[n].pen) << n;
    EXPECT_EQ(c.axisLblColor(), expected[n].label) << n;
    EXPECT_EQ(c.axisTitleColor(), expected[n].axisTitle) << n;
    EXPECT_EQ(c.bkgColor(), expected[n].bkg) << n;
  }
}

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

TEST(ColorSchemes, DataSetColoursForEveryIndexUnderEveryScheme) {
  const OleColor kRose = 0xB48CF6;
  const OleColor kPaleBlue = 0xFFC0C0;
  // Indexes 0..15; schemes 1, 2 and 4 share a column, as do 5 and 6.
  const OleColor dark[16] = {0x000000, 0x800000, 0x00FF00, 0x808000, 0x000080, 0x800080, 0x008080, 0xFFFFFF,
                             kRose,    kPaleBlue, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
  const OleColor white[16] = {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
                              kRose,    0xFF0000, 0x00FF00, 0x808000, 0x0000FF, 0xFF00FF, 0x008000, 0x000000};
  for (int scheme = 1; scheme <= 6; ++scheme) {
    for (int index = 0; index < 16; ++index) {
      OleColor want = scheme == 3 ? 0 : (scheme == 5 || scheme == 6) ? white[index] : dark[index];
      EXPECT_EQ(QBColorFor(scheme, index), want) << "scheme " << scheme << " index " << index;
    }
    EXPECT_EQ(QBColorFor(scheme, -1), QBColorFor(scheme, 0)) << scheme;
  }
  // On the screen data sets 1..5 are light blue, light green, cyan, light red, light magenta.
  EXPECT_EQ(QBColorFor(6, 9), 0xFF0000u);
  EXPECT_EQ(QBColorFor(6, 11), 0x808000u);
}

}  // namespace
}  // namespace tarvenix
