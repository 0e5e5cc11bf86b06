#include <gtest/gtest.h>

#include <vector>

#include "printing/page_geometry.h"
#include "printing/preview_view.h"
#include "printing/printed_lines.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

TEST(PageGeometry, FollowsTheDevice) {
  const std::tuple<const char*, PageDevice, int32_t, PageGeometry> cases[] = {
      {"A4, 96 dpi", {793, 1122, 96, 96}, 14, {48, 48, 697, 14, 69, 16, 28, 1010, 1012, 0}},
      {"A4, laser", {4760, 6814, 600, 600}, 83, {300, 300, 4160, 83, 70, 96, 166, 6118, 6131, 6}},
      {"A4 on its side", {6814, 4760, 600, 600}, 83, {300, 300, 6214, 83, 46, 96, 166, 4064, 4077, 6}},
      {"letter, 300 dpi", {2400, 3150, 300, 300}, 42, {150, 150, 2100, 42, 63, 48, 84, 2802, 2808, 3}},
      {"letter on its side, 25 %",
       {12600, 9600, 1200, 1200},
       42,
       {600, 600, 11400, 42, 196, 67, 84, 8333, 8358, 12}},
      {"letter, matrix", {2880, 1935, 360, 180}, 26, {180, 90, 2520, 26, 63, 30, 52, 1725, 1729, 3}},
      {"receipt", {384, 812, 203, 203}, 28, {101, 101, 182, 28, 17, 32, 56, 578, 582, 2}},
      {"lower than its lines", {600, 400, 300, 300}, 120, {150, 150, 300, 120, 1, 126, 240, -26, -20, 3}},
      {"narrower than its margins", {150, 3000, 300, 300}, 42, {150, 150, 1, 42, 60, 48, 84, 2652, 2658, 3}},
  };
  for (const auto& [name, device, lineHeight, page] : cases)
    EXPECT_EQ(pageGeometry(device, lineHeight), page) << name;
}

TEST(PageGeometry, CountsPagesClipsRangesAndScalesWhatIsTyped) {
  PageGeometry page = {};
  page.linesPerPage = 70;
  for (const auto& [lines, pages] :
       {std::pair(0u, 1u), {70, 1}, {71, 2}, {1'400'000, 20'000}, {0xFFFFFFFF, 61'356'676}}) {
    EXPECT_EQ(pageCount(lines, page), pages) << lines;
  }
  const std::pair<PageRange, PageRange> ranges[] = {
      {{1, 65535}, {1, 12}}, {{5, 3}, {3, 5}}, {{13, 99}, {12, 12}}, {{0, 0}, {1, 1}}};
  for (const auto& [wanted, printed] : ranges) EXPECT_EQ(clippedRange(wanted, 12), printed) << wanted.first;
  EXPECT_EQ(printedFontHeight(8, 600, 100), 67);
  EXPECT_EQ(printedFontHeight(8, 600, 75), 50);  // 50.25, toward zero
  const std::pair<const char*, int> scales[] = {{"80", 80}, {" 33 % ", 33}, {"24", 25},
                                                {"-5", 25}, {"101", 100},   {"99999999999999999999", 100},
                                                {"", 60},   {"80x", 60}};
  for (const auto& [typed, scale] : scales) EXPECT_EQ(typedScale(typed, 60), scale) << typed;
}

TEST(PageGeometry, PanesStandAsOnTheScreen) {
  FontMetrics font;
  font.resolutionX = 600;
  font.digitWidth = 40;
  ViewOptions options;
  const auto pane = [&](int side, int32_t width, float split) {
    return printedPane(side, width, split, options, 1234, font);
  };
  EXPECT_EQ(pane(0, 4160, 0.25f), (PaneEdges{0, 0, 977}));  // the text at the very edge
  EXPECT_EQ(pane(1, 4160, 0.25f), (PaneEdges{1103, 1103, 4160}));
  EXPECT_EQ(pane(0, 4160, 0.01f).paneRight, 537);  // an inch is left to it
  EXPECT_EQ(pane(1, 4160, 0.99f).paneLeft, 3623);
  EXPECT_EQ(pane(0, 1000, 0.9f).paneRight, 437);
  options.lineNumbers = LineNumbers::lines;
  EXPECT_EQ(pane(0, 4160, 0.5f).textLeft, 4 * 40 + 2 * 38);
  options = paperOptions(options, false);
  EXPECT_EQ(pane(0, 4160, 0.5f).textLeft, 5 * 40 + 2 * 38);
  options.lineNumbers = LineNumbers::none;
  EXPECT_EQ(pane(0, 4160, 0.5f).textLeft, 40 + 50);
}

TEST(PrintedLines, HoldTheSectionsOfAnExport) {
  using Stretches = std::vector<PrintedLines::Stretch>;
  const DiffModel model = modelOf("========<<==!=======>>");
  const PrintedLines all(model, ExportScope::everything), context(model, ExportScope::context),
      differences(model, ExportScope::differences);
  EXPECT_EQ(all.stretches(20, 40), (Stretches{{20, false, {20, 22}}}));
  EXPECT_EQ(context.stretches(10, 14),
            (Stretches{{10, false, {14, 16}}, {12, true, {17, 22}}, {13, false, {17, 18}}}));
  EXPECT_EQ(differences.stretches(4, 6), (Stretches{{4, false, {12, 13}}, {5, true, {20, 22}}}));
  EXPECT_EQ(PrintedLines(modelOf("===="), ExportScope::context).count(), 0u);

  // However the lines are divided into pages, together the pages have every row that is printed once.
  for (const PrintedLines* lines : {&all, &context, &differences}) {
    for (uint32_t perPage = 1; perPage < 9; ++perPage) {
      uint32_t next = 0;
      for (uint32_t begin = 0; begin < lines->count(); begin += perPage) {
        for (const auto& stretch : lines->stretches(begin, begin + perPage)) {
          ASSERT_EQ(stretch.line, next);
          next += stretch.title ? 1 : stretch.rows.size();
        }
        ASSERT_EQ(next, std::min(begin + perPage, lines->count()));
      }
    }
  }
}

/// The page's number, the sheet's left edge, size and scale, and how far it is scrolled.
std::string shown(const PreviewView& view) {
  std::string text = "page " + std::to_string(view.page()) + ":";
  for (const int32_t number :
       {view.sheetLeft(), view.sheetWidth(), view.sheetHeight(), view.percent(), view.horizontal().position,
        view.horizontal().max(), view.vertical().position, view.vertical().max()})
    text += " " + std::to_string(number);
  return text;
}

TEST(PreviewView, ShowsThePageInThePane) {
  PreviewView view;
  view.setPages({4760, 6814, 600, 600, 4960, 7016, 100, 100}, 20'000);  // A4
  view.resize(616, 858, 96);                                            // a border of 8 around the sheet
  EXPECT_FALSE(view.canGoBack());
  EXPECT_EQ(shown(view), "page 1: 10 595 842 75 0 0 0 0");
  view.goTo(1'000'000);
  EXPECT_FALSE(view.canGoOn());
  view.setZoom({ZoomKind::width});
  EXPECT_EQ(shown(view), "page 20000: 8 600 848 76 0 0 0 6");
  view.setZoom({ZoomKind::percent, 100});
  EXPECT_EQ(shown(view), "page 20000: -89 793 1122 100 97 193 0 280");
  view.pageUp();  // from its top to the page before, at its end
  EXPECT_EQ(shown(view), "page 19999: -89 793 1122 100 97 193 280 280");
  view.wheel(-100);
  EXPECT_EQ(shown(view), "page 19999: -89 793 1122 100 97 193 180 280");
  view.zoomIn();
  EXPECT_EQ(view.percent(), 125);
  for (int i = 0; i < 20; ++i) view.zoomOut();
  EXPECT_EQ(view.percent(), 10);

  // Fewer pages, on their sides: the page is the nearest there is.
  view.setZoom({});
  view.setPages({6814, 4760, 600, 600, 7016, 4960, 100, 100}, 7);
  EXPECT_EQ(shown(view), "page 7: 8 600 424 53 0 0 0 0");
  view.resize(0, 0, 144);
  EXPECT_EQ(view.percent(), 0);
}

}  // namespace
}  // namespace merivane
