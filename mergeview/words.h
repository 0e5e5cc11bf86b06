#pragma once

#include <cstdint>

#include "display/characters.h"

namespace merivane {

/// A half-open run of characters of a line.
struct CharacterRun {
  uint32_t begin = 0;
  uint32_t end = 0;
};

/// Where a step over a word leads from a boundary in a line without its line end: to the start of the next
/// word, or the line's end, and to the start of this or the previous word, or the line's start. Of single
/// bytes those above 127 make words here; signs between words are stepped over like words.
uint32_t nextWordStart(const RowCharacters& line, uint32_t at);
uint32_t previousWordStart(const RowCharacters& line, uint32_t at);

/// The word, blanks or signs that the character at an index belongs to; the last ones after the end.
CharacterRun wordAround(const RowCharacters& line, uint32_t at);

/// Whether the text of [begin, end) touches no word around it: letters of all scripts, their marks, digits
/// and
/// "_"; of single bytes those above 127 are none.
bool standsAlone(const RowCharacters& line, CharacterRun text);

}  // namespace merivane
