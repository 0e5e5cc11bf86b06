#include "output/text_cell.h"

#include <string>

#include "base/utf8.h"
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

bool isControl(char c) { return static_cast<uint8_t>(c) < 0x20 || c == 0x7F; }

/// Steps through a line character by character as it is shown.
class Characters {
 public:
  Characters(std::string_view line, std::span<const uint8_t> marks, const CellStyle& style)
      : line_(line), marks_(marks), style_(style), signs_(style.terminal.utf8 ? kUtf8Signs : kAsciiSigns) {}

  bool atEnd() const { return at_ == line_.size(); }
  uint32_t column() const { return column_; }

  /// Measures the character at hand, which is not beyond the end.
  void measure() {
    const char c = line_[at_];
    length_ = style_.terminal.utf8 ? utf8Length(line_.substr(at_)) : 1;
    columns_ = 1;
    control_ = style_.terminal.controlIn(line_.substr(at_, length_));
    if (control_ != 0) {
      columns_ = 4;
    } else if (c == '\t') {
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
    if (control_ != 0) {
      constexpr char hex[] = "0123456789ABCDEF";
      for (const char sign : {'<', hex[control_ >> 4], hex[control_ & 15], '>'}) text += sign;
    } else if (c == '\t') {
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
  uint8_t control_ = 0;  // the number of a control character from 0x80 on
};

bool fits(Characters characters, uint32_t width) {
  while (!characters.atEnd() && characters.column() <= width) {
    characters.measure();
    characters.step();
  }
  return characters.column() <= width;
}

}  // namespace

uint8_t TerminalBytes::controlIn(std::string_view character) const {
  const uint8_t last = static_cast<uint8_t>(character.back());
  if (last < 0x80 || last >= 0xA0) return 0;
  if (character.size() > 1) return isUtf8Control(character) ? last : 0;
  return controls >> (last - 0x80) & 1 ? last : 0;
}

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
  text += style.terminal.utf8 ? kUtf8Signs.cut : kAsciiSigns.cut;
  return width;
}

}  // namespace merivane
