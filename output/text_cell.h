#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "display/row_look.h"

namespace merivane {

/// How a terminal understands bytes.
struct TerminalBytes {
  bool utf8 = false;  // whether it knows UTF-8
  /// Where it does not: the characters of the bytes from 0x80 on, 0 where there is no telling.
  std::array<char16_t, 128> page = {};
};

/// How a terminal shows the characters of a line. A TAB fills up to the next tab stop, a control byte is "^"
/// and a letter, a control character from 0x80 on its number in "<" and ">", and every other character takes
/// the columns that it has (display/characters.h). A LF shows only when it is marked as different or white
/// space is to be seen.
///
/// What is UTF-8 in a line is that to a terminal of UTF-8; its other bytes are characters of the system's
/// code page. Another terminal gets bytes as they are, or of a text in UTF-8 the characters that it has, "?"
/// for those that it has not.
struct CellStyle {
  uint32_t tabStop = kDefaultTabStop;
  bool showWhiteSpace = false;
  TerminalBytes terminal;
  bool utf8 = false;        // the line is, whatever the terminal knows
  std::string_view markOn;  // written before and after marked characters; empty for no highlighting
  std::string_view markOff;
};

/// Appends a line, or as much of it as fits into `width` columns, at least 1; the last of these then tells
/// that it was cut. `marks` is empty or has a byte for every byte of the line. Returns the columns used.
/// Looks at no more of the line than it can show.
uint32_t appendCell(std::string& text, std::string_view line, std::span<const uint8_t> marks,
                    const CellStyle& style, uint32_t width);

/// The columns of all of a line.
uint32_t columnsOf(std::string_view line, const CellStyle& style);

/// A line without the characters at its start that are too many for a width.
std::string_view endOf(std::string_view line, const CellStyle& style, uint32_t width);

}  // namespace merivane
