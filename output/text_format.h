#pragma once

#include <cstdint>
#include <string>

#include "base/byte_sink.h"
#include "display/line_numbers.h"
#include "display/sections.h"
#include "engine/comparison.h"

namespace merivane {

struct TextOptions {
  ExportScope scope = ExportScope::everything;
  LineNumbers lineNumbers = LineNumbers::lines;
  uint32_t width = 130;  // columns of a whole line
  uint32_t tabStop = 4;  // 1 to 16
  bool showWhiteSpace = false;
  bool coloured = false;
  bool utf8 = false;  // whether the terminal shows UTF-8
};

/// Writes a comparison as aligned rows in two columns for a terminal of fixed width characters: a heading
/// with the paths, the rows of the scope with a mark between their sides ("<" left only, ">" right only,
/// "|" changed), and the summary. Holds no more than a row in memory. Throws nothing but std::bad_alloc.
void writeText(const FileComparison& comparison, const std::string (&paths)[2], const TextOptions& options,
               ByteSink& sink);

}  // namespace merivane
