#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "display/row_look.h"

namespace merivane {

/// How a terminal shows the bytes of a line. A TAB fills up to the next tab stop, a control byte is "^" and a
/// letter, a well-formed UTF-8 sequence takes one column where the terminal knows them, and every other byte
/// is itself. A LF shows only when it is marked as different or white space is to be seen.
struct CellStyle {
  uint32_t tabStop = kDefaultTabStop;
  bool showWhiteSpace = false;
  bool utf8 = false;
  std::string_view markOn;  // written before and after marked characters; empty for no highlighting
  std::string_view markOff;
};

/// Appends a line, or as much of it as fits into `width` columns, at least 1; the last of these then tells
/// that it was cut. `marks` is empty or has a byte for every byte of the line. Returns the columns used.
/// Looks at no more of the line than it can show.
uint32_t appendCell(std::string& text, std::string_view line, std::span<const uint8_t> marks,
                    const CellStyle& style, uint32_t width);

}  // namespace merivane
