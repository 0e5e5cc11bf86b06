#include "output/html_text.h"

#include <gtest/gtest.h>

namespace merivane {
namespace {

TEST(HtmlText, EveryKindOfCharacter) {
  struct Case {
    std::string_view line;
    uint32_t tabStop;
    const char* plain;
    const char* marked;  // with white space shown
  };
  const Case cases[] = {
      {"", 4, "", ""},
      {"if (a && b < c) x->y;\n", 4, "if (a &amp;&amp; b &lt; c) x-&gt;y;&nbsp;",
       "if\xB7(a\xB7&amp;&amp;\xB7"
       "b\xB7&lt;\xB7"
       "c)\xB7x-&gt;y;\xB6"},
      {"\"quoted\"", 4, "\"quoted\"", "\"quoted\""},
      {"\r\n", 4, "&nbsp;", "\xB6"},
      // Single spaces at either end and beside a tab stay single spaces; runs alternate from their start.
      {" a ", 4, " a ",
       "\xB7"
       "a\xB7"},
      {"  a   b    ", 4, "&nbsp; a&nbsp; &nbsp;b&nbsp; &nbsp; ",
       "\xB7\xB7"
       "a\xB7\xB7\xB7"
       "b\xB7\xB7\xB7\xB7"},
      {" \t  \t", 4, " &nbsp; &nbsp;&nbsp; &nbsp; ", "\xB7\xBB&nbsp; \xB7\xB7\xBB&nbsp;"},
      // Tabs from each column of a stop, and at stops of other widths.
      {"\tx", 4, "&nbsp; &nbsp; x", "\xBB&nbsp; &nbsp;x"},
      {"a\tx", 4, "a&nbsp; &nbsp;x", "a\xBB&nbsp; x"},
      {"ab\tx", 4, "ab&nbsp; x", "ab\xBB&nbsp;x"},
      {"abc\tx", 4, "abc&nbsp;x", "abc\xBBx"},
      {"abcd\t\tx", 4, "abcd&nbsp; &nbsp; &nbsp; &nbsp; x", "abcd\xBB&nbsp; &nbsp;\xBB&nbsp; &nbsp;x"},
      {"abc\tx", 1, "abc&nbsp;x", "abc\xBBx"},
      {"abcdefg\tx", 10, "abcdefg&nbsp; &nbsp;x", "abcdefg\xBB&nbsp; x"},
      // What a character looks like in HTML or on the page has no say in how many columns it counts.
      {"&<\tx", 4, "&amp;&lt;&nbsp; x", "&amp;&lt;\xBB&nbsp;x"},
      {"\r\x01\x1B\tx", 4, "^A^[&nbsp;x", "^A^[\xBBx"},
      {std::string_view("\0\x0B\x1F\x20\x7F", 5), 4, "^@^K^_ \x7F", "^@^K^_\xB7\x7F"},
      {"\x80\xA0\xFF\t", 4, "\x80\xA0\xFF&nbsp;", "\x80\xA0\xFF\xBB"},
  };
  for (const Case& c : cases) {
    std::string plain = "before ";
    std::string marked = "before ";
    appendHtmlText(plain, c.line, c.tabStop, false);
    appendHtmlText(marked, c.line, c.tabStop, true);
    EXPECT_EQ(plain, std::string("before ") + c.plain) << testing::PrintToString(c.line);
    EXPECT_EQ(marked, std::string("before ") + c.marked) << testing::PrintToString(c.line);
  }
}

}  // namespace
}  // namespace merivane
