#include "output/text_cell.h"

#include <algorithm>
#include <string>

#include "base/code_page.h"
#include "base/utf16.h"
#include "display/characters.h"
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

/// What a mark is written into that has nothing before it.
constexpr std::string_view kDottedCircle = "\xE2\x97\x8C";

/// Steps through a line character by character as it is shown.
class Characters {
 public:
  Characters(std::string_view line, std::span<const uint8_t> marks, const CellStyle& style)
      : line_(line),
        characters_(line, style.terminal.utf8 || style.utf8),
        marks_(marks),
        style_(style),
        signs_(style.terminal.utf8 ? kUtf8Signs : kAsciiSigns) {}

  bool atEnd() const { return at_ == line_.size(); }
  uint32_t at() const { return at_; }
  uint32_t column() const { return column_; }

  /// Measures the character at hand, which is not beyond the end.
  void measure() {
    if (isPlain()) {
      character_ = {byte(), 1, 1, false};
      shown_ = byte();
      columns_ = 1;
      return;
    }
    character_ = characters_.at(at_);
    shown_ = shownAs(character_);
    columns_ = shown_ == kUnknown ? 1 : character_.columns;
    if (shown_ == '\t') {
      columns_ = tabColumns(column_, style_.tabStop);
    } else if (shown_ == '\n') {
      columns_ = style_.showWhiteSpace || isMarked() ? 1 : 0;
    } else if (isControl(shown_)) {
      columns_ = shown_ < 0x80 ? 2 : 4;
    }
  }

  uint32_t columns() const { return columns_; }

  bool isMarked() const {
    if (marks_.empty()) return false;
    const auto marks = marks_.subspan(at_, character_.length);
    return std::ranges::any_of(marks, [](uint8_t mark) { return (mark & kDiffersMark) != 0; });
  }

  void append(std::string& text) const {
    if (shown_ > ' ' && shown_ < 0x7F && character_.length == 1) {
      text += line_[at_];
    } else if (shown_ == '\t') {
      const std::string_view sign = style_.showWhiteSpace ? signs_.tab : " ";
      text += sign;
      text.append(columns_ - 1, ' ');
    } else if (shown_ == '\n') {
      if (columns_ > 0) text += signs_.lineEnd;
    } else if (shown_ < 0x80 && isControl(shown_)) {
      text += '^';
      text += controlLetter(static_cast<char>(shown_));
    } else if (isControl(shown_)) {
      constexpr char hex[] = "0123456789ABCDEF";
      for (const char sign : {'<', hex[shown_ >> 4], hex[shown_ & 15], '>'}) text += sign;
    } else {
      appendPlain(text);
    }
  }

  void step() {
    at_ += character_.length;
    column_ += columns_;
  }

 private:
  static constexpr char32_t kUnknown = kNoCodePoint;

  /// Whether the character at hand is a letter or sign of ASCII without marks, as nearly all are.
  bool isPlain() const {
    const auto isAscii = [](char c) { return static_cast<signed char>(c) >= 0; };
    const char c = line_[at_];
    return c >= ' ' && c != 0x7F && (at_ + 1 == line_.size() || isAscii(line_[at_ + 1]));
  }

  /// The byte that is no character of UTF-8 and starts the character at hand.
  uint8_t byte() const { return static_cast<uint8_t>(line_[at_]); }
  bool isByte(const Character& character) const {
    return character.base == kNoCodePoint || (!style_.terminal.utf8 && !style_.utf8);
  }

  /// The code point that the terminal shows of a character, its first one; a control character where there is
  /// no telling what a byte is to it, or kUnknown for a character that it has not.
  char32_t shownAs(const Character& character) const {
    if (byte() < 0x80) return byte();
    if (style_.terminal.utf8) {
      return character.base == kNoCodePoint ? systemCodePage()[byte()] : character.base;
    }
    const auto& page = style_.terminal.page;
    if (isByte(character)) {
      const char16_t known = page[byte() - 0x80u];
      return known == 0 ? byte() : known;
    }
    if (isControl(character.base)) return character.base;
    return std::ranges::find(page, character.base) == page.end() ? kUnknown : character.base;
  }

  void appendPlain(std::string& text) const {
    const std::string_view bytes = line_.substr(at_, character_.length);
    if (style_.showWhiteSpace && shown_ == ' ') {
      text += signs_.space;
      text += bytes.substr(1);
    } else if (shown_ == kUnknown) {
      text += '?';
    } else if (style_.terminal.utf8 && character_.base == kNoCodePoint) {
      text += utf8OfCodePoint(shown_);
    } else if (style_.terminal.utf8) {
      if (character_.baseless) text += kDottedCircle;
      text += bytes;
    } else if (byte() < 0x80 || isByte(character_)) {
      text += line_[at_];
    } else {
      const auto& page = style_.terminal.page;
      text += static_cast<char>(0x80 + (std::ranges::find(page, shown_) - page.begin()));
    }
  }

  std::string_view line_;
  RowCharacters characters_;
  std::span<const uint8_t> marks_;
  const CellStyle& style_;
  const Signs& signs_;
  uint32_t at_ = 0;
  uint32_t column_ = 0;
  Character character_ = {};
  char32_t shown_ = 0;
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
  text += style.terminal.utf8 ? kUtf8Signs.cut : kAsciiSigns.cut;
  return width;
}

uint32_t columnsOf(std::string_view line, const CellStyle& style) {
  Characters characters(line, {}, style);
  while (!characters.atEnd()) {
    characters.measure();
    characters.step();
  }
  return characters.column();
}

std::string_view endOf(std::string_view line, const CellStyle& style, uint32_t width) {
  const uint32_t all = columnsOf(line, style);
  Characters characters(line, {}, style);
  while (all - characters.column() > width) {
    characters.measure();
    characters.step();
  }
  return line.substr(characters.at());
}

}  // namespace merivane
