#include <algorithm>
#include <cstdint>
#include <string>

#include "output/decimal.h"
#include "output/patch_name.h"
#include "output/writers.h"

namespace merivane {
namespace {

/// A name as patch programs read it back after "---": blanks in it are followed by a TAB, which ends it.
std::string headerName(std::string_view path) {
  std::string name = patchName(path);
  if (name.front() != '"' && name.find(' ') != std::string::npos) name += '\t';
  return name;
}

class UnifiedWriter {
 public:
  UnifiedWriter(const WrittenComparison& comparison, uint32_t contextLines, ByteSink& sink)
      : model_(comparison.model),
        sides_(comparison.sides),
        equalRowsAreContext_(!comparison.compare.comparesBytes()),
        contextLines_(contextLines),
        sink_(sink) {}

  void write() {
    uint32_t difference = nextDifference(0);
    if (difference == model_.rowCount()) return;
    sink_.write("--- " + headerName(sides_[0].path) + "\n+++ " + headerName(sides_[1].path) + "\n");
    while (difference < model_.rowCount()) {
      RowRange hunk{difference - std::min(difference, contextLines_), 0};
      uint32_t end;
      do {
        end = endOfDifference(difference);
        difference = nextDifference(end);
      } while (difference < model_.rowCount() && difference - end <= 2 * uint64_t{contextLines_});
      hunk.end = end + std::min(model_.rowCount() - end, contextLines_);
      writeHunk(hunk);
    }
  }

 private:
  bool has(int side, uint32_t row) const { return fillerSide(model_.status(row)) != side; }

  std::string_view line(int side, uint32_t row) const {
    const uint32_t begin = model_.position(side, row);
    const uint32_t end = model_.endPosition(side, row, static_cast<uint32_t>(sides_[side].text.size()));
    return sides_[side].text.substr(begin, end - begin);
  }

  bool differs(uint32_t row) const {
    if (model_.status(row) != RowStatus::same) return true;
    return !equalRowsAreContext_ && line(0, row) != line(1, row);
  }

  uint32_t nextDifference(uint32_t row) const {
    while (row < model_.rowCount() && !differs(row)) ++row;
    return row;
  }

  uint32_t endOfDifference(uint32_t row) const {
    while (row < model_.rowCount() && differs(row)) ++row;
    return row;
  }

  void writeHunk(RowRange hunk) {
    std::string header = "@@ -";
    appendLines(header, 0, hunk);
    header += " +";
    appendLines(header, 1, hunk);
    header += " @@\n";
    sink_.write(header);
    for (uint32_t row = hunk.begin; row < hunk.end;) {
      if (!differs(row)) {
        writeLine(" ", line(0, row++));
        continue;
      }
      const RowRange difference{row, std::min(endOfDifference(row), hunk.end)};
      writeSide("-", 0, difference);
      writeSide("+", 1, difference);
      row = difference.end;
    }
  }

  /// "first,count" of a side's lines in a hunk. Without a count it is one line, and without lines the first
  /// is the one before.
  void appendLines(std::string& header, int side, RowRange hunk) const {
    uint32_t count = 0;
    for (uint32_t row = hunk.begin; row < hunk.end; ++row) count += has(side, row);
    // A hunk starts the text or follows a row of context, which has a line on both sides.
    const uint32_t before = hunk.begin == 0 ? 0 : model_.lineNumber(side, hunk.begin - 1) + 1;
    appendDecimal(header, count == 0 ? before : before + 1);
    if (count == 1) return;
    header += ',';
    appendDecimal(header, count);
  }

  void writeSide(std::string_view sign, int side, RowRange rows) {
    for (uint32_t row = rows.begin; row < rows.end; ++row) {
      if (has(side, row)) writeLine(sign, line(side, row));
    }
  }

  void writeLine(std::string_view sign, std::string_view line) {
    sink_.write(sign);
    sink_.write(line);
    if (line.empty() || line.back() != '\n') sink_.write("\n\\ No newline at end of file\n");
  }

  const DiffModel& model_;
  const WrittenSide (&sides_)[2];
  const bool equalRowsAreContext_;
  const uint32_t contextLines_;
  ByteSink& sink_;
};

}  // namespace

void writeUnified(const WrittenComparison& comparison, const WriterOptions& options, ByteSink& sink) {
  UnifiedWriter(comparison, options.contextLines, sink).write();
}

}  // namespace merivane
