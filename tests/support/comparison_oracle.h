#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "engine/diff_model.h"
#include "engine/line_keys.h"

namespace merivane {

/// Returns the first fault of a comparison of two texts, or an empty string. The rows must rebuild both texts
/// line by line, their statuses agree with the lines' keys, marks fit the lines, and numbers and counts be
/// those of the rows. Marks may be missing, as when memory ran out for them.
inline std::string comparisonFault(const DiffModel& model, std::string_view left, std::string_view right,
                                   const CompareOptions& options) {
  const std::string_view texts[2] = {left, right};
  const bool empty = left.empty() && right.empty();
  if (empty && model.rowCount() != 1) return "not the one row of two empty texts";
  uint32_t end[2] = {0, 0}, number[2] = {0, 0}, blocks = 0, differing = 0;
  RowStatus previous = RowStatus::same;
  for (uint32_t row = 0; row < model.rowCount(); ++row) {
    const RowStatus status = model.status(row);
    const RowMarks& marks = model.marks(row);
    const auto fault = [row](const char* text) { return "row " + std::to_string(row) + ": " + text; };
    uint32_t keys[2];
    for (const int side : {0, 1}) {
      const uint32_t size = static_cast<uint32_t>(texts[side].size());
      const uint32_t start = model.position(side, row);
      if (start != end[side]) return fault("text left out or twice");
      end[side] = model.endPosition(side, row, size);
      if (end[side] < start || end[side] > size) return fault("a line beyond the text");
      const std::string_view line = texts[side].substr(start, end[side] - start);
      keys[side] = line.empty() ? 0 : tableLines(line, options).keys.at(0);
      if (fillerSide(status) == side) {
        if (!line.empty()) return fault("text on a filler");
        if (model.lineNumber(side, row) != kNoLine) return fault("a number on a filler");
      } else {
        // One LF, at the end; only the text's last line may lack it.
        const size_t length = std::min(line.find('\n'), line.size() - 1) + 1;
        if (!empty && (length != line.size() || line.empty())) return fault("not one line");
        if (!line.ends_with('\n') && end[side] != size) return fault("a line without its end");
        if (model.lineNumber(side, row) != number[side]++) return fault("a wrong line number");
      }
      if (marks.none()) continue;
      if (marks.side(side).size() != line.size()) return fault("marks that do not fit their line");
    }
    if (status == RowStatus::same && keys[0] != keys[1]) return fault("unequal lines as the same");
    if (status == RowStatus::changed && keys[0] == keys[1]) return fault("equal lines as changed");
    if (status == RowStatus::changed && !options.compareChanges) return fault("changed against the options");
    if (status != RowStatus::changed && !marks.none()) return fault("marks on a row that is not changed");
    differing += status != RowStatus::same;
    blocks += status != RowStatus::same && status != previous;
    previous = status;
  }
  if (end[0] != left.size() || end[1] != right.size()) return "text missing at the end";
  if (model.differingRows() != differing || model.differenceBlocks() != blocks) return "wrong counts";
  return {};
}

}  // namespace merivane
