#include "output/text_cell.h"

#include <string>

#include "display/row_look.h"

namespace merivane {
namespace {

/// What stands for white space and for the cut, in UTF-8 and in ASCII.
struct Signs {
  std::string_view space, tab, lineEnd, cut;
};
constexpr char kUtf8Marks[] = {'\xC2', kSpaceMark, '\xC2', kTabMark, '\xC2', kLineEndMark};
constexpr Signs kUtf8Signs = {{kUtf8Marks, 2}, {kUtf8Marks + 2, 2}, {kUtf8Marks + 4, 2}, "\xE2\x80\xA6"};
constexpr Signs kAsciiSigns = {".", ">", "$", "~"};

bool isTrail(char c) { return (static_cast<uint8_t>(c) & 0xC0) == 0x80; }

/// The length of the well-formed UTF-8 sequence that a text starts with; 1 when there is none.
uint32_t sequenceLength(std::string_view text) {
  const uint8_t lead = static_cast<uint8_t>(text[0]);
  const uint32_t length = lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 1;
  if (length == 1 || text.size() < length) return 1;
  for (uint32_t i = 1; i < length; ++i) {
    if (!isTrail(text[i])) return 1;
  }
  // Neither longer than need be, nor a surrogate, nor beyond the last code point.
  const uint8_t second = static_cast<uint8_t>(text[1]);
  const bool malformed = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0) ||
                         (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
  return malformed ? 1 : length;
}

bool isControl(char c) { return static_cast<uint8_t>(c) < 0x20 || c == 0x7F; }

/// Steps through a line character by character as it is shown.
class Characters {
 public:
  Characters(std::string_view line, std::span<const uint8_t> marks, const CellStyle& style)
      : line_(line), marks_(marks), style_(style), signs_(style.utf8 ? kUtf8Signs : kAsciiSigns) {}

  bool atEnd() const { return at_ == line_.size(); }
  uint32_t column() const { return column_; }

  /// Measures the character at hand, which is not beyond the end.
  void measure() {
    const char c = line_[at_];
    length_ = style_.utf8 && static_cast<uint8_t>(c) >= 0x80 ? sequenceLength(line_.substr(at_)) : 1;
    columns_ = 1;
    if (c == '\t') {
      columns_ = tabColumns(column_, style_.tabStop);
    } else if (c == '\n') {
      columns_ = style_.showWhiteSpace || isMarked() ? 1 : 0;
    } else if (isControl(c)) {
      columns_ = 2;
    }
  }

  uint32_t columns() const { return columns_; }

  bool isMarked() const {
    if (marks_.empty()) return false;
    for (uint32_t i = 0; i < length_; ++i) {
      if (marks_[at_ + i] & kDiffersMark) return true;
    }
    return false;
  }

  void append(std::string& text) const {
    const char c = line_[at_];
    if (c == '\t') {
      const std::string_view sign = style_.showWhiteSpace ? signs_.tab : " ";
      text += sign;
      text.append(columns_ - 1, ' ');
    } else if (c == '\n') {
      if (columns_ > 0) text += signs_.lineEnd;
    } else if (c == ' ' && style_.showWhiteSpace) {
      text += signs_.space;
    } else if (isControl(c)) {
      text += '^';
      text += controlLetter(c);
    } else {
      text += line_.substr(at_, length_);
    }
  }

  void step() {
    at_ += length_;
    column_ += columns_;
  }

 private:
  std::string_view line_;
  std::span<const uint8_t> marks_;
  const CellStyle& style_;
  const Signs& signs_;
  size_t at_ = 0;
  uint32_t column_ = 0;
  uint32_t length_ = 0;
  uint32_t columns_ = 0;
};

bool fits(Characters characters, uint32_t width) {
  while (!characters.atEnd() && characters.column() <= width) {
    characters.measure();
    characters.step();
  }
  return characters.column() <= width;
}

}  // namespace

uint32_t appendCell(std::string& text, std::string_view line, std::span<const uint8_t> marks,
                    const CellStyle& style, uint32_t width) {
  Characters characters(line, marks, style);
  const bool whole = fits(characters, width);
  const uint32_t room = whole ? width : width - 1;
  bool highlighted = false;
  while (!characters.atEnd()) {
    characters.measure();
    if (characters.column() + characters.columns() > room) break;
    if (characters.isMarked() != highlighted) {
      text += highlighted ? style.markOff : style.markOn;
      highlighted = !highlighted;
    }
    characters.append(text);
    characters.step();
  }
  if (highlighted) text += style.markOff;
  if (whole) return characters.column();
  text.append(room - characters.column(), ' ');
  text += style.utf8 ? kUtf8Signs.cut : kAsciiSigns.cut;
  return width;
}

}  // namespace merivane
