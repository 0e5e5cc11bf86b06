#include "output/html_export.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class StringSink : public ByteSink {
 public:
  void write(std::string_view bytes) override { all += bytes; }
  std::string all;
};

std::string pageOf(const DiffModel& model, std::string_view left, std::string_view right,
                   const HtmlOptions& options) {
  const HtmlSide sides[2] = {{"C:\\old & new\\a.txt", left, LineEndKind::crLf},
                             {"b.txt", right, LineEndKind::lf}};
  StringSink sink;
  writeHtml(model, sides, options, "24/03/01, 9:05:00", sink);
  return sink.all;
}

/// The page of a pattern's model, every line of which is an "x".
std::string pageOf(std::string_view pattern, const HtmlOptions& options) {
  const DiffModel model = modelOf(pattern);
  std::string texts[2];
  for (uint32_t row = 0; row < model.rowCount(); ++row) {
    for (const int side : {0, 1}) texts[side] += model.lineNumber(side, row) == kNoLine ? "" : "x\n";
  }
  return pageOf(model, texts[0], texts[1], options);
}

/// What stands between each `before` and the `after` that follows it.
std::vector<std::string> allBetween(std::string_view page, std::string_view before, std::string_view after) {
  std::vector<std::string> found;
  for (size_t at = page.find(before); at != page.npos; at = page.find(before, at)) {
    at += before.size();
    found.emplace_back(page.substr(at, page.find(after, at) - at));
  }
  return found;
}

std::vector<std::string> cells(std::string_view page) { return allBetween(page, "<CODE>", "</CODE>"); }

TEST(HtmlExport, PageByteForByte) {
  DiffModel model;
  model.addRow(RowStatus::same, 0, 0);
  model.addRow(RowStatus::changed, 5, 5);
  model.addRow(RowStatus::rightOnly, 11, 12);
  model.numberLines();
  model.countDifferences();
  HtmlOptions options;
  options.scope = ExportScope::differences;
  options.lineNumbers = LineNumbers::lines;
  EXPECT_EQ(
      pageOf(model, "same\na < b\n", "same\na <= b\n\tc", options),
      "<HTML>\r\n<HEAD>\r\n<TITLE>C:\\old & new\\a.txt, b.txt</TITLE>\r\n</HEAD>\r\n"
      "<BODY BGCOLOR=\"#FFFFFF\">\r\n"
      "<TABLE BORDER=\"0\" CELLSPACING=\"0\" CELLPADDING=\"0\">\r\n"
      "<TR><TD ALIGN=\"center\" COLSPAN=\"2\"><B>Diffs: 2, Lines: 2</B> (24/03/01, 9:05:00)</TD></TR>\r\n\r\n"
      "<TR><TD WIDTH=\"50%\"><TABLE BORDER=\"1\" WIDTH=\"100%\"><TR><TD ALIGN=\"center\">"
      "<A HREF=\"file:///C:\\old & new\\a.txt\">C:\\old & new\\a.txt</A> (DOS)</TD></TR></TABLE></TD>\r\n"
      "<TD WIDTH=\"50%\"><TABLE BORDER=\"1\" WIDTH=\"100%\"><TR><TD ALIGN=\"center\">"
      "<A HREF=\"file:///b.txt\">b.txt</A> (UNIX)</TD></TR></TABLE></TD></TR>\r\n\r\n"
      "<TR><TD><TABLE BORDER=\"1\" WIDTH=\"100%\"><TR><TD ALIGN=\"center\"><B>Line 2</B></TD></TR>"
      "</TABLE></TD>\r\n"
      "<TD><TABLE BORDER=\"1\" WIDTH=\"100%\"><TR><TD ALIGN=\"center\"><B>Line 2</B></TD></TR></TABLE></TD>"
      "</TR>\r\n"
      "<TR><TD VALIGN=\"top\" BGCOLOR=\"#F0CAA6\"><CODE>2&nbsp;a &lt; b&nbsp;</CODE></TD>"
      "<TD VALIGN=\"top\" BGCOLOR=\"#F0CAA6\"><CODE>2&nbsp;a &lt;= b&nbsp;</CODE></TD></TR>\r\n"
      "<TR><TD><TABLE BORDER=\"1\" WIDTH=\"100%\"><TR><TD>&nbsp;</TD></TR></TABLE></TD>\r\n"
      "<TD><TABLE BORDER=\"1\" WIDTH=\"100%\"><TR><TD ALIGN=\"center\"><B>Line 3</B></TD></TR></TABLE></TD>"
      "</TR>\r\n"
      "<TR><TD VALIGN=\"top\" BGCOLOR=\"#F4F4F4\"><CODE>&nbsp;&nbsp;</CODE></TD>"
      "<TD VALIGN=\"top\" BGCOLOR=\"#A6CAF0\"><CODE>3&nbsp;&nbsp; &nbsp; c</CODE></TD></TR>\r\n"
      "</TABLE>\r\n</BODY>\r\n</HTML>\r\n");
}

TEST(HtmlExport, ColoursOfEveryStatus) {
  HtmlOptions options;
  options.colours = {.same = 0x030201,
                     .empty = 0x060504,
                     .left = 0x090807,
                     .right = 0x0C0B0A,
                     .changed = 0xEF0D0E,
                     .drawArrows = true};
  const auto colours = [&] { return allBetween(pageOf("=<>!", options), "\"top\" BGCOLOR=\"", "\""); };
  EXPECT_THAT(colours(), ElementsAre("#010203", "#010203", "#070809", "#040506", "#040506", "#0A0B0C",
                                     "#0E0DEF", "#0E0DEF"));
  options.colours.drawArrows = false;
  EXPECT_THAT(colours(), ElementsAre("#010203", "#010203", "#040506", "#040506", "#040506", "#040506",
                                     "#040506", "#040506"));
}

TEST(HtmlExport, NumberColumnIsAsWideAsTheRowCount) {
  struct Case {
    size_t rows;
    const char* first;
    const char* last;
  };
  const Case cases[] = {
      {1, "1&nbsp;", "1&nbsp;"},
      {9, "1&nbsp;", "9&nbsp;"},
      {10, "&nbsp;1&nbsp;", "10&nbsp;"},
      {100, "&nbsp;&nbsp;1&nbsp;", "100&nbsp;"},
  };
  for (const Case& c : cases) {
    for (const LineNumbers lineNumbers : {LineNumbers::rows, LineNumbers::lines}) {
      HtmlOptions options;
      options.lineNumbers = lineNumbers;
      const auto found = cells(pageOf(std::string(c.rows, '='), options));
      ASSERT_EQ(found.size(), 2 * c.rows);
      EXPECT_EQ(found.front(), std::string(c.first) + "x&nbsp;");
      EXPECT_EQ(found.back(), std::string(c.last) + "x&nbsp;");
    }
  }
}

TEST(HtmlExport, NumbersBesideFillers) {
  HtmlOptions options;
  options.lineNumbers = LineNumbers::rows;
  EXPECT_THAT(cells(pageOf("<>!", options)),
              ElementsAre("1&nbsp;x&nbsp;", "&nbsp;&nbsp;", "&nbsp;&nbsp;", "2&nbsp;x&nbsp;",
                          "3&nbsp;x&nbsp;", "3&nbsp;x&nbsp;"));
  options.lineNumbers = LineNumbers::lines;
  EXPECT_THAT(cells(pageOf("<>!", options)),
              ElementsAre("1&nbsp;x&nbsp;", "&nbsp;&nbsp;", "&nbsp;&nbsp;", "1&nbsp;x&nbsp;",
                          "2&nbsp;x&nbsp;", "2&nbsp;x&nbsp;"));
  options.lineNumbers = LineNumbers::none;
  EXPECT_THAT(cells(pageOf("<>!", options)), ElementsAre("x&nbsp;", "", "", "x&nbsp;", "x&nbsp;", "x&nbsp;"));
}

TEST(HtmlExport, EmptyTextsAndWhiteSpaceMarks) {
  HtmlOptions options;
  options.showWhiteSpace = true;
  options.tabStop = 2;
  const std::string empty = pageOf(modelOf("="), "", "", options);
  EXPECT_THAT(empty, HasSubstr("<B>No differences</B>"));
  EXPECT_THAT(cells(empty), ElementsAre("&nbsp;", "&nbsp;"));
  EXPECT_THAT(cells(pageOf(modelOf("=="), "a\n\t", " \n\n", options)),
              ElementsAre("a\xB6", "\xB7\xB6", "\xBB&nbsp;", "\xB6"));
}

TEST(HtmlExport, ScopesShowTheirRowsUnderTheirLines) {
  const std::string pattern = "=======<=====!=======>";
  HtmlOptions options;
  const auto lines = [&] { return allBetween(pageOf(pattern, options), "<B>Line ", "<"); };
  const auto rows = [&] { return cells(pageOf(pattern, options)).size() / 2; };
  EXPECT_THAT(lines(), ElementsAre());
  EXPECT_EQ(rows(), pattern.size());
  options.scope = ExportScope::context;
  EXPECT_THAT(lines(), ElementsAre("5", "5", "19", "18"));
  EXPECT_EQ(rows(), 17u);
  options.scope = ExportScope::differences;
  EXPECT_THAT(lines(), ElementsAre("8", "14", "13", "21"));
  EXPECT_EQ(rows(), 3u);
}

}  // namespace
}  // namespace merivane
