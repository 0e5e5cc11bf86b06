#pragma once

#include <cstdint>
#include <string_view>

namespace merivane {

/// A letter, a digit or "_"; of the characters above 127 none.
constexpr bool isWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// A half-open run of characters of a line.
struct CharacterRun {
  uint32_t begin = 0;
  uint32_t end = 0;
};

/// Where a step over a word leads from an index in a line without its line end: to the start of the next
/// word, or the line's end, and to the start of this or the previous word, or the line's start. Characters
/// above 127 make words here; signs between words are stepped over like words.
uint32_t nextWordStart(std::string_view line, uint32_t at);
uint32_t previousWordStart(std::string_view line, uint32_t at);

/// The word, blanks or signs that the character at an index belongs to; the last ones after the end.
CharacterRun wordAround(std::string_view line, uint32_t at);

}  // namespace merivane
