#pragma once

#include <cstdint>
#include <string_view>

#include "base/byte_sink.h"
#include "display/line_numbers.h"
#include "display/row_colours.h"
#include "display/sections.h"
#include "engine/diff_model.h"
#include "engine/text_document.h"

namespace merivane {

struct HtmlSide {
  std::string_view path;  // written as it is
  std::string_view text;  // the whole in-memory text that the model's positions refer to
  LineEndKind lineEndKind = LineEndKind::crLf;
};

struct HtmlOptions {
  ExportScope scope = ExportScope::everything;
  LineNumbers lineNumbers = LineNumbers::none;
  bool showWhiteSpace = false;
  uint32_t tabStop = 4;  // 1 to 16
  RowColours colours;
};

/// Writes a comparison as one HTML page of two columns, in Windows-1252 bytes with CR LF line ends. `time` is
/// the export's date and time as the page shows it. Holds no more than a row in memory. Throws
/// std::bad_alloc.
void writeHtml(const DiffModel& model, const HtmlSide (&sides)[2], const HtmlOptions& options,
               std::string_view time, ByteSink& sink);

}  // namespace merivane
