#include "mergeview/row_layout.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/marked_view.h"

namespace merivane {
namespace {

/// A view of one row whose left line is `line`, changed against nothing like it.
class OneRow {
 public:
  explicit OneRow(std::string_view line, const ViewOptions& options = {}) : view_(host_) {
    view_.setOptions(options);
    view_.resize(2 * (8 + 320 + 10), 160);
    view_.take(comparisonOf(line, line), AfterComparison::top);
  }

  RowLayout layOut(const RowWindow& window) {
    RowLayout layout;
    layOutRow(view_.source(0), 0, window, layout);
    return layout;
  }

  ViewState& view() { return view_; }

 private:
  FakeHost host_;
  ViewState view_;
};

TEST(RowLayout, CharactersShowByColumns) {
  struct Case {
    const char* line;
    uint32_t tabStop;
    const char* plain;
    const char* whiteSpaceShown;
  };
  const Case cases[] = {
      {"a b\n", 4, "a b ",
       "a\xB7"
       "b\xB6"},
      {"a b", 4, "a b",
       "a\xB7"
       "b"},
      {"\tx\ty", 4, "    x   y", "\xBB   x\xBB  y"},
      {"abc\td", 4, "abc d",
       "abc\xBB"
       "d"},
      {"a\tb", 16, "a               b", "a\xBB              b"},
      {"\x1B[\x01\xE9\x7F", 4, "^[[^A\xE9\x7F", "^[[^A\xE9\x7F"},
      {"\r\tx", 8, "^M      x", "^M\xBB     x"},
      {"a\tb", 1, "a b",
       "a\xBB"
       "b"},
  };
  for (const Case& c : cases) {
    for (const bool shown : {false, true}) {
      ViewOptions options;
      options.tabStop = c.tabStop;
      options.showWhiteSpace = shown;
      OneRow row(c.line, options);
      const RowLayout layout = row.layOut({0, 320});
      EXPECT_EQ(layout.text, shown ? c.whiteSpaceShown : c.plain) << c.line;
      ASSERT_EQ(layout.runs.size(), 1u);
      EXPECT_EQ(layout.runs[0].right, 8 * static_cast<int32_t>(layout.text.size()));
      EXPECT_EQ(layout.textEnd, layout.runs[0].right);
    }
  }
}

TEST(RowLayout, ChangedCharactersAndSidesHaveTheirColours) {
  ViewOptions options;
  options.lineNumbers = LineNumbers::lines;
  MarkedView marked("|one two # one tow / same # same / - # xxxxxxxx / last # last");
  ViewState& view = marked.state();
  RowLayout layout;
  const auto layOut = [&](int side, uint32_t row) {
    view.setOptions(options);
    layOutRow(view.source(side), row, {0, 320}, layout);
  };
  layOut(0, 0);
  const Colour changed = 0xA6CAF0;
  ASSERT_EQ(layout.runs.size(), 3u);
  EXPECT_EQ(layout.runs[0], (TextRun{0, 5, 0, 40, 0, changed}));
  EXPECT_EQ(layout.runs[1], (TextRun{5, 6, 40, 48, 0xFFFFFF, 0x637990}));
  EXPECT_EQ(layout.runs[2], (TextRun{6, 8, 48, 64, 0, changed}));
  EXPECT_EQ(layout.background, changed);
  EXPECT_EQ(layout.number, "1");

  layOut(0, 2);
  EXPECT_TRUE(layout.runs.empty());
  EXPECT_EQ(layout.background, 0xF4F4F4u);
  EXPECT_EQ(layout.number, "");
  layOut(1, 2);
  EXPECT_EQ(layout.background, 0xF0CAA6u);
  EXPECT_EQ(layout.number, "3");
  layOut(0, 3);
  EXPECT_EQ(layout.background, 0xFFFFFFu);
  EXPECT_EQ(layout.number, "3");

  options.lineNumbers = LineNumbers::rows;
  options.highlightChanges = options.colours.drawArrows = false;
  view.documents().readOnly[0] = true;
  layOut(0, 0);
  EXPECT_EQ(layout.runs, std::vector<TextRun>({{0, 8, 0, 64, 0x606060, 0xF4F4F4}}));
  layOut(0, 3);
  EXPECT_EQ(layout.number, "4");
}

TEST(RowLayout, TheSelectionIsClippedToTheRowAndTheView) {
  OneRow row("abcdefgh\n");
  struct Case {
    uint32_t begin, end;
    int64_t scrollX;
    int32_t left, right;
  };
  const Case cases[] = {
      {0, 0, 0, 0, 0},  {2, 4, 0, 16, 32}, {0, 9, 0, 0, 40},   {3, 100, 0, 24, 40}, {1, 7, 16, 0, 40},
      {0, 1, 16, 0, 0}, {0, 3, 20, 0, 4},  {6, 9, 16, 32, 40}, {8, 9, 40, 24, 32},  {7, 8, 0, 40, 40},
  };
  for (const Case& c : cases) {
    const RowLayout layout = row.layOut({c.scrollX, 40, c.begin, c.end});
    EXPECT_EQ(layout.selectionLeft, c.left) << c.begin << ' ' << c.end << ' ' << c.scrollX;
    EXPECT_EQ(layout.selectionRight, c.right) << c.begin << ' ' << c.end << ' ' << c.scrollX;
  }
}

TEST(RowLayout, OnlyWhatIsInViewIsLaidOut) {
  OneRow row(
      "ab\tcd\x01"
      "efghij\n");
  const RowLayout layout = row.layOut({3 * 8 + 4, 4 * 8});
  EXPECT_EQ(layout.text, "  cd^A");  // the tab that began left of the view, and what ends right of it
  EXPECT_EQ(layout.runs, std::vector<TextRun>({{0, 6, -12, 36, 0, 0xFFFFFF}}));
  EXPECT_EQ(layout.textEnd, 32);
}

FontMetrics proportional() {
  FontMetrics font;
  font.fixedPitch = false;
  for (size_t c = 0; c < 256; ++c) font.widths[c] = static_cast<uint16_t>(3 + c * 7 % 11);
  return font;
}

TEST(LineRuler, PlacesAgreeWithStepsOneByOne) {
  std::mt19937 random(3);
  for (const FontMetrics& font : {FontMetrics(), proportional()}) {
    const LineRuler ruler(font, 4, true);
    std::string line(12000, 'x');
    for (char& c : line) {
      const char special[] = {'\t', '\x02', ' ', 'i', '\xFE'};
      if (random() % 3 == 0) c = special[random() % 5];
    }
    TextBuffer text;
    ASSERT_TRUE(text.insert(0, line.data(), static_cast<uint32_t>(line.size())));
    ASSERT_TRUE(text.insert(5000, "yy", 2));  // the gap lies within the line
    const uint32_t end = text.size();
    LinePlace place{100};
    while (place.position < end) {
      LinePlace next = place;
      ruler.step(next, text.charAt(place.position));
      if (place.position % 97 == 0 || next.position == end) {
        std::string glyphs;
        ruler.appendGlyphs(glyphs, text.charAt(place.position), place.column);
        int32_t width = 0;
        for (const char glyph : glyphs) width += font.widthOf(glyph);
        ASSERT_EQ(next.x - place.x, width);
        ASSERT_LE(width, ruler.widestCharacter());
        ASSERT_EQ(next.column - place.column, glyphs.size());
        const LinePlace found = ruler.placeAtPosition(text, 100, place.position);
        ASSERT_EQ(found.column, place.column);
        ASSERT_EQ(found.x, place.x);
        for (int64_t x = place.x; x < next.x; ++x) {
          ASSERT_EQ(ruler.placeBeforeX(text, 100, end, x).position, place.position);
          const bool left = x - place.x < next.x - x;
          ASSERT_EQ(ruler.placeNearestX(text, 100, end, x).position, left ? place.position : next.position);
        }
      }
      place = next;
    }
    EXPECT_EQ(ruler.placeNearestX(text, 100, end, place.x + 500).position, end);
    EXPECT_EQ(ruler.placeNearestX(text, 100, end, -5).position, 100u);
  }
}

}  // namespace
}  // namespace merivane
