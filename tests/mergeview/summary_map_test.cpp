#include "mergeview/summary_map.h"

#include <gtest/gtest.h>

#include <random>
#include <string_view>

namespace merivane {
namespace {

DiffModel modelOf(std::string_view statuses) {
  DiffModel model;
  for (const char status : statuses) model.addRow(static_cast<RowStatus>(status - '0'), 0, 0);
  return model;
}

std::string shown(const SummaryMap& map) {
  std::string digits;
  for (const RowStatus status : map.pixels()) digits += static_cast<char>('0' + static_cast<int>(status));
  return digits;
}

TEST(SummaryMap, RowsInViewKeepTheirLinesHeight) {
  SummaryMap map;
  map.update(modelOf("0130"), {500, 17, 3, 20});
  EXPECT_EQ(map.mapTop(), 0);
  EXPECT_EQ(shown(map), "000111333000");
  EXPECT_EQ(map.rowAt(-1), 0u);
  EXPECT_EQ(map.rowAt(5), 1u);
  EXPECT_EQ(map.rowAt(6), 2u);
  EXPECT_EQ(map.rowAt(12), 3u);
}

TEST(SummaryMap, MoreRowsThanInViewFillTheTrackAndLaterOnesWin) {
  SummaryMap map;
  const SummaryMap::Geometry geometry{38, 17, 16, 2};
  map.update(modelOf("01230120"), geometry);
  EXPECT_EQ(map.mapTop(), 17);
  EXPECT_EQ(map.mapHeight(), 4);
  EXPECT_EQ(shown(map), "0232");
  EXPECT_EQ(map.rowAt(17), 0u);
  EXPECT_EQ(map.rowAt(18), 2u);
  EXPECT_EQ(map.rowAt(20), 6u);
  EXPECT_EQ(map.rowAt(21), 7u);

  map.update(modelOf("00000000"), geometry);
  EXPECT_EQ(shown(map), "0232") << "kept until told";
  map.rowsChanged();
  map.update(modelOf("00000000"), geometry);
  EXPECT_EQ(shown(map), "0000");
  map.update(modelOf("01230120"), {20, 17, 16, 2});
  EXPECT_EQ(map.mapHeight(), 0);
  EXPECT_EQ(map.rowAt(18), 7u);
}

TEST(SummaryMap, EveryDifferingRowShowsAndTheMarkerStaysInside) {
  std::mt19937 random(5);
  for (int round = 0; round < 300; ++round) {
    const uint32_t rows = 1 + random() % 500;
    std::string statuses(rows, '0');
    for (char& status : statuses) status = random() % 20 == 0 ? static_cast<char>('1' + random() % 3) : '0';
    SummaryMap map;
    map.update(modelOf(statuses),
               {static_cast<int32_t>(40 + random() % 400), 17, 16, static_cast<uint32_t>(random() % 30)});
    const std::string pixels = shown(map);
    std::string expected(pixels.size(), '0');
    PixelRange before{0, 0};
    for (uint32_t row = 0; row < rows; ++row) {
      const PixelRange lines = map.pixelsOf(row);
      ASSERT_LT(lines.begin, lines.end);
      ASSERT_GE(lines.begin, before.begin);
      ASSERT_LE(lines.begin, before.end);  // no line is left out
      if (statuses[row] != '0') {
        std::fill(expected.begin() + lines.begin, expected.begin() + lines.end, statuses[row]);
      }
      before = lines;
      const PixelRange marker = map.caretMarker(row);
      ASSERT_LE(marker.begin, lines.begin);
      ASSERT_LE(marker.end, map.mapHeight());
      if (map.mapHeight() >= 5) {
        ASSERT_GE(marker.begin, 0);
        ASSERT_GE(marker.end - marker.begin, 5);
      }
    }
    ASSERT_EQ(before.end, map.mapHeight());
    ASSERT_EQ(pixels, expected);
  }
}

TEST(SummaryMap, TheMarkerGrowsToFiveLines) {
  SummaryMap map;
  map.update(modelOf(std::string(100, '0')), {134, 17, 16, 5});
  ASSERT_EQ(map.mapHeight(), 100);
  EXPECT_EQ(map.caretMarker(50), (PixelRange{48, 53}));
  EXPECT_EQ(map.caretMarker(0), (PixelRange{0, 5}));
  EXPECT_EQ(map.caretMarker(99), (PixelRange{95, 100}));
}

TEST(SummaryMap, BandsHaveEdges) {
  // The face is C0C0C0, a quarter of which is 30.
  const Colour left = 0xC0DCC0, leftEdge = 0x788678, changed = 0xA6CAF0, changedEdge = 0x6B7D90;
  const Colour face = 0xC0C0C0;
  const SummaryLine faceLine{face, face};
  const auto same = RowStatus::same, one = RowStatus::leftOnly, three = RowStatus::changed;
  const RowStatus pixels[] = {one, one, same, same, same, three, same, one, three};
  EXPECT_EQ(summaryLines(pixels, {}, face), std::vector<SummaryLine>({{leftEdge, leftEdge},
                                                                      {leftEdge, left},
                                                                      {leftEdge, leftEdge},
                                                                      faceLine,
                                                                      {changedEdge, changedEdge},
                                                                      {changedEdge, changed},
                                                                      {changedEdge, changedEdge},
                                                                      {leftEdge, left},
                                                                      {changedEdge, changedEdge}}));
  RowColours plain;
  plain.drawArrows = false;
  EXPECT_EQ(summaryLines(std::vector<RowStatus>{same, three, one}, plain, face)[1],
            (SummaryLine{0x929292, 0xF4F4F4}));
}

}  // namespace
}  // namespace merivane
