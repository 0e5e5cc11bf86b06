#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "display/row_look.h"

namespace merivane {

/// How a terminal understands bytes.
struct TerminalBytes {
  bool utf8 = false;  // whether it knows UTF-8
  /// Those from 0x80 to 0x9F that, standing alone, are control characters there, a bit each.
  uint32_t controls = 0xFFFFFFFF;

  /// The number of the control character from 0x80 to 0x9F that a byte or a well-formed sequence is; else 0.
  uint8_t controlIn(std::string_view character) const;
};

/// How a terminal shows the bytes of a line. A TAB fills up to the next tab stop, a control byte is "^" and a
/// letter, a control character from 0x80 on its number in "<" and ">", a well-formed UTF-8 sequence takes one
/// column where the terminal knows them, and every other byte is itself. A LF shows only when it is marked as
/// different or white space is to be seen.
struct CellStyle {
  uint32_t tabStop = kDefaultTabStop;
  bool showWhiteSpace = false;
  TerminalBytes terminal;
  std::string_view markOn;  // written before and after marked characters; empty for no highlighting
  std::string_view markOff;
};

/// Appends a line, or as much of it as fits into `width` columns, at least 1; the last of these then tells
/// that it was cut. `marks` is empty or has a byte for every byte of the line. Returns the columns used.
/// Looks at no more of the line than it can show.
uint32_t appendCell(std::string& text, std::string_view line, std::span<const uint8_t> marks,
                    const CellStyle& style, uint32_t width);

}  // namespace merivane
