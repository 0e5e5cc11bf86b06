#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "display/row_look.h"

namespace merivane {

/// A space that browsers neither drop nor break a line at.
constexpr std::string_view kHtmlBlank = "&nbsp;";

/// How a text is written into a page. Bytes from 0x80 on stay as they are in a page of single bytes; in one
/// of UTF-8 those that are no UTF-8 of the text become what they are in the system's code page.
struct HtmlStyle {
  uint32_t tabStop = kDefaultTabStop;  // at least 1
  bool showWhiteSpace = false;         // spaces, tabs and line ends show as marks
  bool utf8Page = false;
  bool utf8Text = false;  // the text is UTF-8; only in a page of UTF-8
};

/// Appends one line of a text, its LF included, as HTML that keeps its width. A control byte shows as "^" and
/// a letter, and counts as one column.
void appendHtmlText(std::string& html, std::string_view line, const HtmlStyle& style);

/// Appends a name or another text in UTF-8. Each character beyond ASCII goes by its number, so that it shows
/// whatever the encoding is that the page's texts are read in. Bytes that are no character stay as they are,
/// save in a page of UTF-8.
void appendHtmlName(std::string& html, std::string_view name, bool utf8Page);

}  // namespace merivane
