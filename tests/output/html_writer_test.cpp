#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "output/html_text.h"
#include "output/writers.h"
#include "tests/support/memory_files.h"
#include "tests/support/random.h"
#include "tests/support/row_pattern.h"

namespace merivane {
namespace {

std::string pageOf(const DiffModel& model, std::string_view left, std::string_view right,
                   WriterOptions options) {
  const WrittenComparison comparison = {
      model,
      {{"C:\\old & new\\a.txt", left, LineEndKind::crLf}, {"\xC5\x81.txt", right, LineEndKind::lf}},
      {}};
  options.time = "24/03/01, 9:05:00";
  MemoryFiles files;
  EXPECT_EQ(exportComparison(files, "page", writeHtml, comparison, options), 0u);
  return files.files["page"].contents;
}

/// The texts of a page's cells, each with a bar after it.
std::string cells(const std::string& page) {
  std::string found;
  for (size_t at = 0; (at = page.find("<CODE>", at)) != page.npos;) {
    at += 6;
    found += page.substr(at, page.find("</CODE>", at) - at) + '|';
  }
  return found;
}

TEST(HtmlWriter, PageByteForByte) {
  WriterOptions options;
  options.scope = ExportScope::differences;
  options.look.lineNumbers = LineNumbers::lines;
  std::string page = R"(<HTML>
<HEAD>
<TITLE>C:\old & new\a.txt, &#321;.txt</TITLE>
</HEAD>
<BODY BGCOLOR="#FFFFFF">
<TABLE BORDER="0" CELLSPACING="0" CELLPADDING="0">
<TR><TD ALIGN="center" COLSPAN="2"><B>Diffs: 2, Lines: 2</B> (24/03/01, 9:05:00)</TD></TR>

<TR><TD WIDTH="50%"><TABLE BORDER="1" WIDTH="100%"><TR><TD ALIGN="center">)"
                     R"(<A HREF="file:///C:\old & new\a.txt">C:\old & new\a.txt</A> (DOS))"
                     R"(</TD></TR></TABLE></TD>
<TD WIDTH="50%"><TABLE BORDER="1" WIDTH="100%"><TR><TD ALIGN="center">)"
                     R"(<A HREF="file:///&#321;.txt">&#321;.txt</A> (UNIX)</TD></TR></TABLE></TD></TR>

<TR><TD><TABLE BORDER="1" WIDTH="100%"><TR><TD ALIGN="center"><B>Line 2</B></TD></TR></TABLE></TD>
<TD><TABLE BORDER="1" WIDTH="100%"><TR><TD ALIGN="center"><B>Line 2</B></TD></TR></TABLE></TD></TR>
<TR><TD VALIGN="top" BGCOLOR="#F0CAA6"><CODE>2&nbsp;&lt;&nbsp;</CODE></TD>)"
                     R"(<TD VALIGN="top" BGCOLOR="#F0CAA6"><CODE>2&nbsp;&gt;&nbsp;</CODE></TD></TR>
<TR><TD><TABLE BORDER="1" WIDTH="100%"><TR><TD>&nbsp;</TD></TR></TABLE></TD>
<TD><TABLE BORDER="1" WIDTH="100%"><TR><TD ALIGN="center"><B>Line 3</B></TD></TR></TABLE></TD></TR>
<TR><TD VALIGN="top" BGCOLOR="#F4F4F4"><CODE>&nbsp;&nbsp;&nbsp;</CODE></TD>)"
                     R"(<TD VALIGN="top" BGCOLOR="#A6CAF0"><CODE>3&nbsp;&nbsp; &nbsp; c</CODE></TD></TR>
</TABLE>
</BODY>
</HTML>
)";
  for (size_t at = 0; (at = page.find('\n', at)) != page.npos; at += 2) page.insert(at, 1, '\r');
  EXPECT_EQ(pageOf(modelOf("=!>"), "s\n<\n", "s\n>\n\tc", options), page);
}

TEST(HtmlText, EveryKindOfCharacter) {
  // A line, its tab stop, its text, and the text with white space shown; '.', '>' and '$' stand for its
  // marks.
  const std::tuple<std::string_view, uint32_t, const char*, const char*> cases[] = {
      {"if (a && b<c) \"x\"->y;\n", 4, "if (a &amp;&amp; b&lt;c) \"x\"-&gt;y;&nbsp;",
       "if.(a.&amp;&amp;.b&lt;c).\"x\"-&gt;y;$"},
      // Single spaces at either end and beside a tab stay single spaces; runs alternate from their start.
      {" a ", 4, " a ", ".a."},
      {"  a   b    ", 4, "&nbsp; a&nbsp; &nbsp;b&nbsp; &nbsp; ", "..a...b...."},
      {" \t  \t", 4, " &nbsp; &nbsp;&nbsp; &nbsp; ", ".>&nbsp; ..>&nbsp;"},
      // Tabs from columns of a stop, and at stops of other widths.
      {"\tx", 4, "&nbsp; &nbsp; x", ">&nbsp; &nbsp;x"},
      {"abcd\t\tx", 4, "abcd&nbsp; &nbsp; &nbsp; &nbsp; x", "abcd>&nbsp; &nbsp;>&nbsp; &nbsp;x"},
      {"abcdefg\tx", 10, "abcdefg&nbsp; &nbsp;x", "abcdefg>&nbsp; x"},
      // What a character looks like in HTML or on the page has no say in how many columns it counts.
      {"&<\tx", 4, "&amp;&lt;&nbsp; x", "&amp;&lt;>&nbsp;x"},
      {"\r\x01\x1B\tx", 4, "^A^[&nbsp;x", "^A^[>x"},
      {std::string_view("\0\x1F\x7F\x80\xFF\t", 6), 4, "^@^_\x7F\x80\xFF&nbsp; &nbsp;",
       "^@^_\x7F\x80\xFF>&nbsp; "},
  };
  for (const auto& [line, tabStop, plain, marked] : cases) {
    std::string html = "\t";  // what is there already has no say either
    appendHtmlText(html, line, {tabStop, false});
    EXPECT_EQ(html, std::string("\t") + plain);
    html.clear();
    appendHtmlText(html, line, {tabStop, true});
    for (char& sign : html) sign = sign == '\xB7' ? '.' : sign == '\xBB' ? '>' : sign == '\xB6' ? '$' : sign;
    EXPECT_EQ(html, marked);
  }
}

TEST(HtmlText, InAPageOfUtf8) {
  const std::tuple<std::string, bool, std::string> cases[] = {
      {"\xC3\xA9\xC3<\t", true, "\xC3\xA9\xC3\x83&lt;&nbsp;"},
      {"\xC3\xA9\x80\t", false, "\xC3\x83\xC2\xA9\xE2\x82\xAC&nbsp;"},
      {"\xE4\xB8\xAD\xC3\x83\t", true, "\xE4\xB8\xAD\xC3\x83&nbsp;"},
      {"<\xCC\x81\xCC\x81g \xCC\x81\t", true, "&lt;\xCC\x81\xCC\x81g \xCC\x81&nbsp;"},
      {"\xCC\x81\tx", true, "\xCC\x81&nbsp; &nbsp;x"},
  };
  for (const auto& [line, utf8Text, expected] : cases) {
    std::string html;
    appendHtmlText(html, line, {4, false, true, utf8Text});
    EXPECT_EQ(html, expected) << line;
  }
  std::string html;
  appendHtmlText(html, " \t\n", {4, true, true, true});
  EXPECT_EQ(html, "\xC2\xB7\xC2\xBB&nbsp; \xC2\xB6");

  // One side in UTF-8 is enough, and only then the page says so.
  const DiffModel model = modelOf("=");
  using enum TextEncoding;
  for (const auto encoding : {ascii, singleByte, utf8, utf8Marked, utf16Be}) {
    MemoryFiles files;
    const WrittenComparison comparison = {
        model,
        {{"\xE9\xC3\xA9", "\xE9\n", LineEndKind::lf, singleByte}, {"r", "", LineEndKind::lf, encoding}},
        {}};
    EXPECT_EQ(exportComparison(files, "page", writeHtml, comparison, {}), 0u);
    const std::string& page = files.files["page"].contents;
    const bool unicode = isUnicode(encoding);
    EXPECT_EQ(page.find("charset=utf-8") != page.npos, unicode);
    EXPECT_EQ(page.find("<TITLE>\xC3\xA9&#233;") != page.npos, unicode);
    EXPECT_EQ(cells(page), unicode ? "\xC3\xA9&nbsp;|&nbsp;|" : "\xE9&nbsp;|&nbsp;|");
  }
}

TEST(Sections, ShowEveryDifferenceAloneOrWithThreeRowsAround) {
  Random random(1);
  for (int round = 0; round < 3000; ++round) {
    std::string pattern;
    while (pattern.size() < random.below(60))
      pattern += std::string(random.below(9), "==<>!"[random.below(5)]);
    // Sections end with a bar.
    const bool differs = pattern.find_first_not_of('=') != pattern.npos;
    static const std::regex longEqual("={6,}"), difference("=*(<+|>+|!+)=*");
    std::string context = differs ? std::regex_replace(pattern, longEqual, "===|===") + '|' : "";
    if (differs && pattern.starts_with("======")) context.erase(0, 4);
    if (differs && pattern.ends_with("======")) context.resize(context.size() - 4);
    const std::string differences = differs ? std::regex_replace(pattern, difference, "$1|") : "";
    const DiffModel model = modelOf(pattern);
    const auto shown = [&](ExportScope scope) {
      std::string sections;
      forEachSection(model, scope,
                     [&](RowRange rows) { sections += pattern.substr(rows.begin, rows.size()) + '|'; });
      return sections;
    };
    ASSERT_EQ(shown(ExportScope::context), context) << pattern;
    ASSERT_EQ(shown(ExportScope::differences), differences) << pattern;
    ASSERT_EQ(shown(ExportScope::everything), pattern + '|');
  }
}

}  // namespace
}  // namespace merivane
