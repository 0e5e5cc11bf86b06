#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "output/decimal.h"
#include "output/text_cell.h"
#include "output/writers.h"

namespace merivane {
namespace {

constexpr std::string_view kColourOff = "\x1b[m";
constexpr std::string_view kHeadColour = "\x1b[36m";
constexpr std::string_view kChangedColour = "\x1b[33m";
constexpr std::string_view kSideColours[2] = {"\x1b[31m", "\x1b[32m"};
constexpr std::string_view kMarkColours[2] = {"\x1b[7;31m", "\x1b[7;32m"};  // reversed, so that blanks show

constexpr uint32_t kMiddle = 3;         // the row's mark between two blanks
constexpr uint32_t kNarrowestCell = 4;  // a terminal too narrow for two of these gets lines that are longer

/// The mark between the sides of a row, by its status.
constexpr std::string_view kSigns[] = {" ", "<", ">", "|"};

class TextWriter {
 public:
  TextWriter(const WrittenComparison& comparison, const WriterOptions& options, ByteSink& sink)
      : model_(comparison.model), sides_(comparison.sides), options_(options), sink_(sink) {
    for (const int side : {0, 1}) {
      styles_[side] = {options.look.tabStop,
                       options.look.showWhiteSpace,
                       options.terminal,
                       isUnicode(sides_[side].encoding),
                       {},
                       {}};
      if (!options.coloured) continue;
      styles_[side].markOn = kMarkColours[side];
      styles_[side].markOff = kColourOff;
    }
    names_.terminal = options.terminal;
    // Row numbers are the same on both sides and are shown once.
    const uint32_t gutter = decimalDigits(model_.rowCount()) + 1;
    if (options.look.lineNumbers != LineNumbers::none) gutters_[0] = gutter;
    if (options.look.lineNumbers == LineNumbers::lines) gutters_[1] = gutter;
    const uint32_t besides = kMiddle + gutters_[0] + gutters_[1];
    cellWidth_ = std::max((options.width - std::min(options.width, besides)) / 2, kNarrowestCell);
  }

  void write() {
    writeHead(title(0), title(1));
    forEachSection(model_, options_.scope, [this](RowRange rows) {
      if (options_.scope != ExportScope::everything) writeSectionHead(rows.begin);
      for (uint32_t row = rows.begin; row < rows.end; ++row) writeRow(row);
    });
  }

 private:
  /// The path, without its beginning where it is too long, and the kind of line ends.
  std::string title(int side) const {
    constexpr std::string_view dots = "...";
    const WrittenSide& written = sides_[side];
    const std::string kind =
        " (" + withEncoding(lineEndKindName(written.lineEndKind), written.encoding) + ")";
    const auto room = static_cast<uint32_t>(gutters_[side] + cellWidth_);
    if (columnsOf(written.path, names_) + kind.size() <= room) return std::string(written.path) + kind;
    const auto besides = static_cast<uint32_t>(dots.size() + kind.size());
    const std::string_view end = endOf(written.path, names_, room - std::min(room, besides));
    return std::string(dots) + std::string(end) + kind;
  }

  void writeSectionHead(uint32_t row) {
    std::string heads[2];
    for (const int side : {0, 1}) {
      const uint32_t number = model_.lineNumber(side, row);
      if (number == kNoLine) continue;
      heads[side] = "-- Line ";
      appendDecimal(heads[side], number + 1);
      heads[side] += " --";
    }
    writeHead(heads[0], heads[1]);
  }

  /// Writes a line of two texts over the columns, each from the left edge of its gutter.
  void writeHead(std::string_view left, std::string_view right) {
    row_.clear();
    if (options_.coloured) row_ += kHeadColour;
    const uint32_t width = gutters_[0] + cellWidth_;
    const uint32_t used = appendCell(row_, left, {}, names_, width);
    if (!right.empty()) {
      row_.append(width - used + kMiddle, ' ');
      appendCell(row_, right, {}, names_, gutters_[1] + cellWidth_);
    }
    if (options_.coloured) row_ += kColourOff;
    row_ += '\n';
    sink_.write(row_);
  }

  /// Nothing is written after the last thing there is to see.
  void writeRow(uint32_t row) {
    const RowStatus status = model_.status(row);
    const int filler = fillerSide(status);
    row_.clear();
    appendGutter(0, row);
    uint32_t blanks = cellWidth_ - appendSide(0, row) + 1;
    if (status == RowStatus::same) {
      blanks += 2;
    } else {
      row_.append(blanks, ' ');
      appendColoured(filler < 0 ? kChangedColour : kSideColours[1 - filler],
                     kSigns[static_cast<size_t>(status)]);
      blanks = 1;
    }
    if (filler != 1) {
      row_.append(blanks, ' ');
      appendGutter(1, row);
      const size_t before = row_.size();
      if (appendSide(1, row) == 0) row_.resize(row_.find_last_not_of(' ', before - 1) + 1);
    }
    row_ += '\n';
    sink_.write(row_);
  }

  void appendColoured(std::string_view colour, std::string_view text) {
    if (options_.coloured) row_ += colour;
    row_ += text;
    if (options_.coloured) row_ += kColourOff;
  }

  void appendGutter(int side, uint32_t row) {
    if (gutters_[side] == 0) return;
    const uint32_t number = shownNumber(options_.look.lineNumbers, model_, side, row);
    const uint32_t digits = number == 0 ? 0 : decimalDigits(number);
    row_.append(gutters_[side] - 1 - digits, ' ');
    if (digits > 0) appendDecimal(row_, number);
    row_ += ' ';
  }

  /// Returns the columns used.
  uint32_t appendSide(int side, uint32_t row) {
    const RowStatus status = model_.status(row);
    if (fillerSide(status) == side) return 0;
    const std::string_view text = sides_[side].text;
    const uint32_t begin = model_.position(side, row);
    const uint32_t end = model_.endPosition(side, row, static_cast<uint32_t>(text.size()));
    const bool oneSided = options_.coloured && fillerSide(status) >= 0;
    if (oneSided) row_ += kSideColours[side];
    const uint32_t used = appendCell(row_, text.substr(begin, end - begin), model_.marks(row).side(side),
                                     styles_[side], cellWidth_);
    if (oneSided) row_ += kColourOff;
    return used;
  }

  const DiffModel& model_;
  const WrittenSide (&sides_)[2];
  const WriterOptions& options_;
  ByteSink& sink_;
  CellStyle styles_[2];
  CellStyle names_;
  uint32_t gutters_[2] = {0, 0};
  uint32_t cellWidth_ = 0;
  std::string row_;
};

}  // namespace

void writeText(const WrittenComparison& comparison, const WriterOptions& options, ByteSink& sink) {
  TextWriter(comparison, options, sink).write();
  writeSummary(comparison, options, sink);
}

}  // namespace merivane
