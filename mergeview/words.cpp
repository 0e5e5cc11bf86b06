#include "mergeview/words.h"

#include <algorithm>

#include "engine/compare_options.h"

namespace merivane {
namespace {

enum class Kind { blank, sign, word };

Kind kindOf(char c) {
  if (isBlank(c)) return Kind::blank;
  return isWordCharacter(c) || static_cast<uint8_t>(c) > 127 ? Kind::word : Kind::sign;
}

uint32_t runEnd(std::string_view line, uint32_t at, Kind kind) {
  while (at < line.size() && kindOf(line[at]) == kind) ++at;
  return at;
}

uint32_t runBegin(std::string_view line, uint32_t at, Kind kind) {
  while (at > 0 && kindOf(line[at - 1]) == kind) --at;
  return at;
}

}  // namespace

uint32_t nextWordStart(std::string_view line, uint32_t at) {
  if (at < line.size()) at = runEnd(line, at, kindOf(line[at]));
  return runEnd(line, at, Kind::blank);
}

uint32_t previousWordStart(std::string_view line, uint32_t at) {
  at = runBegin(line, at, Kind::blank);
  return at > 0 ? runBegin(line, at, kindOf(line[at - 1])) : 0;
}

CharacterRun wordAround(std::string_view line, uint32_t at) {
  if (line.empty()) return {};
  const auto inside = std::min(at, static_cast<uint32_t>(line.size()) - 1);
  const Kind kind = kindOf(line[inside]);
  return {runBegin(line, inside, kind), runEnd(line, inside, kind)};
}

}  // namespace merivane
