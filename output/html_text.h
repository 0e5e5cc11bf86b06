#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace merivane {

/// A space that browsers neither drop nor break a line at.
constexpr std::string_view kHtmlBlank = "&nbsp;";

/// Appends one line of a text, its LF included, as HTML that keeps its width. Bytes from 0x80 on stay as they
/// are; a control byte shows as "^" and a letter, and counts as one column. `tabStop` is at least 1. With
/// `showWhiteSpace` spaces, tabs and the line end show as marks, single Windows-1252 bytes.
void appendHtmlText(std::string& html, std::string_view line, uint32_t tabStop, bool showWhiteSpace);

/// Appends a name or another text in UTF-8. Each character beyond ASCII goes by its number, so that it shows
/// whatever the encoding is that the page's texts are read in; bytes that are no character stay as they are.
void appendHtmlName(std::string& html, std::string_view name);

}  // namespace merivane
