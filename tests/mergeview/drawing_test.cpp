// What is drawn, and where: runs of characters and their colours, the ruler that measures lines, the arrows
// between the panes and the map in the summary bar.

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "mergeview/diff_arrows.h"
#include "mergeview/row_layout.h"
#include "mergeview/summary_map.h"
#include "shell/high_contrast.h"
#include "tests/support/edit_run.h"
#include "tests/support/random.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

/// One line as both sides have it.
RowLayout layOut(std::string_view line, const RowWindow& window, const ViewOptions& options = {}) {
  EditRun run(line, line);
  run.view().setOptions(options);
  RowLayout layout;
  layOutRow(run.view().source(0), 0, window, layout);
  return layout;
}

TEST(RowLayout, CharactersShowByColumns) {
  ViewOptions options;
  options.showWhiteSpace = true;
  const auto shown = [&options](std::string_view line) {
    const RowLayout layout = layOut(line, {0, 320}, options);
    EXPECT_EQ(layout.runs.size(), 1u);
    EXPECT_EQ(layout.runs[0].right,
              std::accumulate(layout.glyphs.advances.begin(), layout.glyphs.advances.end(), 0));
    EXPECT_EQ(layout.textEnd, layout.runs[0].right);
    return layout.glyphs.units;
  };
  EXPECT_EQ(shown("- -\n"), u"-\xB7-\xB6");
  EXPECT_EQ(shown("\tx\ty"), u"\xBB   x\xBB  y");
  EXPECT_EQ(shown("\x1B[\x01\xE9\x7F\r\tx"), u"^[[^A\xE9\x7F^M\xBB  x");
  EXPECT_EQ(shown("\x80\x81"), u"\u20AC\x81") << "of the code page";
  EXPECT_EQ(shown("\xC3\xA9\tx"), u"\xE9\xBB  x");
  EXPECT_EQ(shown("\xE4\xBD\xA0\te\xCC\x81\t"), u"\u4F60\xBB e\u0301\xBB  ");
  EXPECT_EQ(shown("\xCC\x81\xF0\x9F\x98\x80\n"), u"\u25CC\u0301\U0001F600\xB6") << "a mark on nothing";
  EXPECT_EQ(shown("x\xE2\x80\xAEy"), u"xy") << "what would show the text in another order";
  options.showWhiteSpace = false;
  options.tabStop = 16;
  EXPECT_EQ(shown("a\tb c\n"), u"a               b c ");
}

/// Two texts whose rows are laid out.
class RowLooks : public testing::Test {
 protected:
  void use(const ViewOptions& options) { run_.view().setOptions(options); }

  /// Expects a row's colours, its number and the mark of its kind.
  void expect(int side, uint32_t row, Colour background, Colour foreground, const std::string& number) {
    SCOPED_TRACE(testing::Message() << side << ' ' << row);
    layOutRow(run_.view().source(side), row, {0, 320}, layout_);
    EXPECT_EQ(layout_.background, background);
    EXPECT_EQ(layout_.foreground, foreground);
    EXPECT_EQ(layout_.number + layout_.mark, number);
  }

  EditRun run_{"one two\nsame\nleft\nlast\n", "one tow\nsame\nlast\nxxxxxxxx\n"};
  ViewOptions options_;
  RowLayout layout_;
};

TEST_F(RowLooks, ChangedCharactersAndSidesHaveTheirColours) {
  options_.lineNumbers = LineNumbers::lines;
  use(options_);
  using Runs = std::vector<TextRun>;
  const Colour changed = 0xA6CAF0, empty = 0xF4F4F4;
  expect(0, 0, changed, 0, "1");
  const TextRun same = {0, 5, 0, 40, 0, changed}, differs = {5, 6, 40, 48, 0xFFFFFF, 0x637990};
  EXPECT_EQ(layout_.runs, (Runs{same, differs, {6, 8, 48, 64, 0, changed}}));
  expect(1, 2, empty, 0, "");
  EXPECT_TRUE(layout_.runs.empty());
  expect(1, 4, 0xF0CAA6, 0, "4");

  options_.lineNumbers = LineNumbers::rows;
  options_.highlightChanges = options_.colours.drawArrows = false;
  use(options_);
  run_.view().file(0).readOnly = true;
  expect(0, 3, 0xFFFFFF, 0x606060, "4");
  expect(0, 0, empty, 0x606060, "1");
  EXPECT_EQ(layout_.runs, (Runs{{0, 8, 0, 64, 0x606060, empty}}));
}

TEST_F(RowLooks, HighContrastTakesTheSystemsPairsAndMarksTheRows) {
  const Colour window = 1, text = 2, highlight = 3, highlightText = 4, chosen = 0x123456;
  options_.colours.right = chosen;  // the user's own stays
  followHighContrast({window, text, highlight, highlightText}, options_);
  use(options_);
  expect(0, 1, window, text, "");
  expect(0, 2, highlight, highlightText, "<");
  expect(1, 2, window, text, "");
  expect(1, 4, chosen, text, ">");
  expect(0, 0, highlight, highlightText, "|");
  EXPECT_EQ(layout_.runs[1].foreground, text);
  EXPECT_EQ(layout_.runs[1].background, window);
  run_.view().file(0).readOnly = true;
  expect(0, 1, window, text, "");
  options_.colours.drawArrows = false;
  use(options_);
  expect(0, 0, window, text, "|");
  EXPECT_EQ(layout_.runs[1].foreground, highlightText);
  EXPECT_EQ(layout_.runs[1].background, highlight);
}

TEST(RowLayout, OnlyWhatIsInViewIsLaidOut) {
  const RowLayout cut = layOut("ab\tcd\1efghij\n", {3 * 8 + 4, 4 * 8});
  EXPECT_EQ(cut.glyphs.units, u"  cd^A");  // the tab that began left of the view, and what ends right of it
  EXPECT_EQ(cut.runs, (std::vector<TextRun>{{0, 6, -12, 36, 0, 0xFFFFFF}}));
  // From and to a character, scrolled by some pixels, and what of that shows.
  const std::tuple<uint32_t, uint32_t, int64_t, int32_t, int32_t> selections[] = {
      {2, 4, 0, 16, 32}, {0, 9, 0, 0, 40},   {1, 7, 16, 0, 40}, {0, 1, 16, 0, 0},
      {0, 3, 20, 0, 4},  {6, 9, 16, 32, 40}, {8, 9, 40, 24, 32}};
  for (const auto& [begin, end, scrollX, left, right] : selections) {
    const RowLayout layout = layOut("abcdefgh\n", {scrollX, 40, begin, end});
    const auto expected =
        left < right ? std::vector<SelectedPart>{{left, right}} : std::vector<SelectedPart>();
    EXPECT_EQ(layout.selected, expected) << begin << ' ' << scrollX;
  }
  // What cannot be scrolled to is told, unless it is no more than the line's end.
  for (const auto& [line, marked] : {std::pair("abcde\n", false), {"abcdef\n", true}, {"abcd\1", true}}) {
    EXPECT_EQ(layOut(line, {0, 40, 0, 0, true}).cut, marked) << line;
  }
}

TEST(RowLayout, WhatGoesFromRightToLeftShowsSo) {
  const std::string line = "ab \xD7\x90\xD7\x91 12 \xD7\x92 c\n";  // shows as "ab C 12 BA c"
  const RowLayout layout = layOut(line, {0, 320, 5, 10});
  std::string ends;
  for (const TextRun& run : layout.runs) ends += std::to_string(run.right) + (run.rightToLeft ? "< " : "> ");
  EXPECT_EQ(ends, "24> 40< 56> 80< 104> ");
  EXPECT_EQ(layout.selected, (std::vector<SelectedPart>{{40, 56}, {56, 72}}));

  // The caret stands where the character after it begins, and a click finds that character.
  const LineRuler ruler;
  const RowCharacters characters(std::string_view(line).substr(0, line.size() - 1), true);
  for (uint32_t at = 0; at < characters.size(); at = characters.next(at)) {
    const int64_t x = ruler.placeAtPosition(characters, at).x;
    const bool toLeft = (at >= 3 && at < 8) || (at >= 10 && at < 13);
    for (const int64_t inside : {0, 7}) {
      EXPECT_EQ(ruler.placeBeforeX(characters, toLeft ? x - 1 - inside : x + inside).position, at) << at;
    }
  }
}

TEST(LineRuler, PlacesAgreeWithStepsOneByOne) {
  Random random(3);
  FontMetrics proportional;
  proportional.fixedPitch = false;
  for (size_t c = 0; c < 256; ++c) proportional.widths[c] = static_cast<uint16_t>(3 + c * 7 % 11);
  for (const FontMetrics& font : {FontMetrics(), proportional}) {
    const LineRuler ruler(font, 4, true);
    for (const bool utf8 : {false, true}) {
      std::string text;
      while (text.size() < 12000) {
        constexpr std::string_view rare[] = {"\t",   "\2",       " ",        "i",
                                             "\xFE", "\xC3\xA9", "\xCC\x81", "\xE4\xBD\xA0"};
        text += random.below(3) > 0 ? "x" : rare[random.below(utf8 ? 8 : 5)];
      }
      // In two pieces, which a character may lie across.
      const RowCharacters line({std::string_view(text).substr(0, 5000), std::string_view(text).substr(5000)},
                               utf8);
      for (LinePlace place, next; place.position < line.size(); place = next) {
        const Character character = line.at(place.position);
        ruler.step(next, character);
        if (place.position % 397 > 3 && next.position < line.size()) continue;
        Glyphs glyphs;
        ruler.appendGlyphs(glyphs, line, place, character);
        const int32_t width = std::accumulate(glyphs.advances.begin(), glyphs.advances.end(), 0);
        ASSERT_EQ(next.x - place.x, width);
        ASSERT_LE(width, ruler.widestByte() * static_cast<int32_t>(character.length));
        for (uint32_t inside = place.position; inside < next.position; ++inside) {
          const LinePlace found = ruler.placeAtPosition(line, inside);
          ASSERT_EQ(found.position, place.position);
          ASSERT_EQ(found.column, place.column);
          ASSERT_EQ(found.x, place.x);
        }
        for (int64_t x = place.x; x < next.x; ++x) {
          ASSERT_EQ(ruler.placeBeforeX(line, x).position, place.position);
          const LinePlace& nearest = x - place.x < next.x - x ? place : next;
          ASSERT_EQ(ruler.placeNearestX(line, x).position, nearest.position);
        }
      }
      EXPECT_EQ(ruler.placeNearestX(line, 1 << 30).position, line.size());
      EXPECT_EQ(ruler.placeNearestX(line, -5).position, 0u);
    }
  }
}

TEST(DiffArrows, PointFromTheSideThatHasTheLines) {
  using Corners = std::vector<GapPoint>;
  GapWindow gap = {100, 120, 100, 10, 5};
  RowColours colours;
  // The view shows rows 5 to 14 of a difference in rows 2 to 21, and not the last one.
  const auto arrows = diffArrows(modelOf("==<<<<<<<<<<<<<<<<<<<<==<"), colours, gap);
  ASSERT_EQ(arrows.size(), 1u);
  EXPECT_EQ(arrows[0].corners, (Corners{{100, -30}, {110, -30}, {120, 70}, {110, 170}, {100, 170}}));
  EXPECT_EQ(arrows[0].colour, colours.left);
  gap.topRow = 20000;
  const int32_t top = diffArrows(modelOf(std::string(50000, '<')), colours, gap)[0].corners[0].y;
  EXPECT_LT(top, -5000) << "far off";
  EXPECT_GT(top, -100000) << "and in pixels that can be drawn";
}

std::string shown(const SummaryMap& map) {
  std::string bands;
  for (const RowStatus status : map.pixels()) bands += "=<>!"[static_cast<int>(status)];
  return bands;
}

TEST(SummaryMap, EveryDifferenceShowsAndIsFoundAgain) {
  Random random(5);
  for (int round = 0; round < 300; ++round) {
    std::string rows(1 + random.below(500), '=');
    for (char& row : rows) row = random.below(20) == 0 ? "<>!"[random.below(3)] : '=';
    SummaryMap map;
    map.update(modelOf(rows), {static_cast<int32_t>(40 + random.below(400)), 17, 16, random.below(30)});
    const int32_t top = map.mapTop(), height = map.mapHeight();
    std::string expected(static_cast<size_t>(height), '=');
    int32_t reached = 0;
    for (uint32_t row = 0; row < rows.size(); ++row) {
      const PixelRange lines = map.pixelsOf(row), marker = map.caretMarker(row);
      ASSERT_LT(lines.begin, lines.end);
      ASSERT_LE(lines.begin, reached);
      ASSERT_GE(lines.end, reached);
      if (rows[row] != '=') std::fill(&expected[lines.begin], &expected[lines.end], rows[row]);
      reached = lines.end;
      ASSERT_LE(marker.begin, lines.begin);
      ASSERT_GE(marker.end, lines.end);
      ASSERT_LE(marker.end, height);
      if (height < 5) continue;
      ASSERT_GE(marker.begin, 0);
      ASSERT_GE(marker.end - marker.begin, 5);
    }
    ASSERT_EQ(reached, height);
    ASSERT_EQ(shown(map), expected);
    for (int32_t y = -1; y <= height; ++y) {
      const PixelRange lines = map.pixelsOf(map.rowAt(top + y));
      ASSERT_LE(lines.begin, std::max(y, 0));
      ASSERT_LE(y, lines.end);
    }
  }
}

TEST(SummaryMap, BandsHaveEdges) {
  // The face is C0C0C0, a quarter of which is 30.
  const Colour face = 0xC0C0C0, left = 0x788678, changed = 0x6B7D90;
  const auto same = RowStatus::same, one = RowStatus::leftOnly, three = RowStatus::changed;
  const RowStatus pixels[] = {one, one, same, same, same, three, same, one, three};
  const std::vector<SummaryLine> lines = {{left, left},       {left, 0xC0DCC0},   {left, left},
                                          {face, face},       {changed, changed}, {changed, 0xA6CAF0},
                                          {changed, changed}, {left, 0xC0DCC0},   {changed, changed}};
  EXPECT_EQ(summaryLines(pixels, {}, face), lines);
  // Blue is halved after it was added, green and red before: 193 and 49, 221 and 49.
  RowColours odd;
  odd.left = 0xC1DDC1;
  EXPECT_EQ(summaryLines({&one, 1}, odd, 0xC4C4C4)[0].edge, 0x798678u);
  // The caret's frame shows on each of them, and on a dark face.
  for (const Colour light : {0xA6CAF0u, 0x00FF00u}) EXPECT_EQ(markerColour({{{0, light}}}), 0u) << light;
  for (const Colour dim : {0xFF0000u, 0x0000FFu}) EXPECT_EQ(markerColour({{{0, dim}}}), 0xFFFFFFu) << dim;
}

}  // namespace
}  // namespace merivane
