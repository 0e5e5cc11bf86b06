#include "mergeview/words.h"

#include <algorithm>

#include "display/code_points.h"
#include "engine/compare_options.h"

namespace merivane {
namespace {

enum class Kind { blank, sign, word };

Kind kindAt(const RowCharacters& line, uint32_t at) {
  const char first = line.bytes()[at];
  if (isBlank(first)) return Kind::blank;
  if (!line.isUtf8() && static_cast<uint8_t>(first) > 127) return Kind::word;
  const CodePointProperties properties = propertiesOf(line.at(at).base);
  return properties.isWord() ? Kind::word : properties.isBlank() ? Kind::blank : Kind::sign;
}

uint32_t runEnd(const RowCharacters& line, uint32_t at, Kind kind) {
  while (at < line.size() && kindAt(line, at) == kind) at = line.next(at);
  return at;
}

uint32_t runBegin(const RowCharacters& line, uint32_t at, Kind kind) {
  while (at > 0) {
    const uint32_t before = line.previous(at);
    if (kindAt(line, before) != kind) break;
    at = before;
  }
  return at;
}

bool isWord(const RowCharacters& line, uint32_t at) {
  const bool letters = line.isUtf8() || static_cast<uint8_t>(line.bytes()[at]) < 128;
  return letters && kindAt(line, at) == Kind::word;
}

}  // namespace

uint32_t nextWordStart(const RowCharacters& line, uint32_t at) {
  if (at < line.size()) at = runEnd(line, at, kindAt(line, at));
  return runEnd(line, at, Kind::blank);
}

uint32_t previousWordStart(const RowCharacters& line, uint32_t at) {
  at = runBegin(line, at, Kind::blank);
  return at > 0 ? runBegin(line, at, kindAt(line, line.previous(at))) : 0;
}

CharacterRun wordAround(const RowCharacters& line, uint32_t at) {
  if (line.size() == 0) return {};
  const uint32_t inside = line.begin(std::min(at, line.size() - 1));
  const Kind kind = kindAt(line, inside);
  return {runBegin(line, inside, kind), runEnd(line, inside, kind)};
}

bool standsAlone(const RowCharacters& line, CharacterRun text) {
  if (text.begin > 0 && isWord(line, line.previous(text.begin))) return false;
  return text.end == line.size() || !isWord(line, text.end);
}

}  // namespace merivane
