#include "tests/support/comparison_oracle.h"

#include <algorithm>

#include "engine/line_keys.h"

namespace merivane {
namespace {

/// One LF, at the end; only the text's last line may lack it.
bool isLine(std::string_view line, bool isLast) {
  const size_t lineFeed = line.find('\n');
  return lineFeed == std::string_view::npos ? isLast && !line.empty() : lineFeed + 1 == line.size();
}

const char* marksFault(const DiffModel& model, uint32_t row, const std::string_view (&lines)[2]) {
  const RowMarks& marks = model.marks(row);
  if (marks.none()) return nullptr;
  if (model.status(row) != RowStatus::changed) return "marks on a row that is not changed";
  for (const int side : {0, 1}) {
    const auto bytes = marks.side(side);
    if (bytes.size() != lines[side].size()) return "marks that do not fit their line";
    if (!std::all_of(bytes.begin(), bytes.end(),
                     [](uint8_t mark) { return mark == 0 || mark == kDiffersMark; })) {
      return "an unknown mark";
    }
  }
  return nullptr;
}

const char* statusFault(RowStatus status, const std::string_view (&lines)[2], const CompareOptions& options) {
  if (fillerSide(status) >= 0) return nullptr;
  const bool equal = lineKey(lines[0], options) == lineKey(lines[1], options);
  if (status == RowStatus::same) return equal ? nullptr : "unequal lines as the same";
  if (!options.compareChanges) return "changed lines against the options";
  return equal ? "equal lines as changed" : nullptr;
}

}  // namespace

std::string comparisonFault(const DiffModel& model, std::string_view left, std::string_view right,
                            const CompareOptions& options) {
  const std::string_view texts[2] = {left, right};
  const bool empty = left.empty() && right.empty();
  if (empty && model.rowCount() != 1) return "not the one row of two empty texts";
  uint32_t end[2] = {0, 0}, number[2] = {0, 0}, blocks = 0, differing = 0;
  RowStatus previous = RowStatus::same;
  for (uint32_t row = 0; row < model.rowCount(); ++row) {
    const RowStatus status = model.status(row);
    const auto fault = [row](const char* text) { return "row " + std::to_string(row) + ": " + text; };
    std::string_view lines[2];
    for (const int side : {0, 1}) {
      const uint32_t size = static_cast<uint32_t>(texts[side].size());
      if (model.position(side, row) != end[side]) return fault("text left out or twice");
      end[side] = model.endPosition(side, row, size);
      if (end[side] < model.position(side, row) || end[side] > size) return fault("a line beyond the text");
      lines[side] = texts[side].substr(model.position(side, row), end[side] - model.position(side, row));
      if (fillerSide(status) == side) {
        if (!lines[side].empty()) return fault("text on a filler");
        if (model.lineNumber(side, row) != kNoLine) return fault("a number on a filler");
      } else {
        if (!empty && !isLine(lines[side], end[side] == size)) return fault("not one line");
        if (model.lineNumber(side, row) != number[side]++) return fault("a wrong line number");
      }
    }
    if (const char* text = statusFault(status, lines, options)) return fault(text);
    if (const char* text = marksFault(model, row, lines)) return fault(text);
    differing += status != RowStatus::same;
    blocks += status != RowStatus::same && status != previous;
    previous = status;
  }
  for (const int side : {0, 1}) {
    if (end[side] != texts[side].size()) return "text missing at the end";
  }
  if (model.differingRows() != differing || model.differenceBlocks() != blocks) return "wrong counts";
  return {};
}

}  // namespace merivane
