#include "folders/wildcard.h"

#include <cstddef>
#include <cstdint>

#include "base/names.h"

namespace merivane {
namespace {

bool isContinuation(char c) { return (static_cast<uint8_t>(c) & 0xC0) == 0x80; }

/// How many bytes the character at `at` takes. The few sequences that only seem well-formed count as one
/// character as well; no name is matched the worse for it.
size_t characterLength(std::string_view text, size_t at) {
  const uint8_t lead = static_cast<uint8_t>(text[at]);
  const size_t length = lead < 0xC2 || lead > 0xF4 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() - at < length) return 1;
  for (size_t i = 1; i < length; ++i) {
    if (!isContinuation(text[at + i])) return 1;
  }
  return length;
}

}  // namespace

bool matchesWildcard(std::string_view pattern, std::string_view name, bool caseSensitive) {
  if (pattern.size() >= 3 && pattern.ends_with("*.*")) pattern.remove_suffix(2);
  constexpr size_t none = std::string_view::npos;
  size_t inPattern = 0, inName = 0;
  // The place after the last "*", and where in the name what follows it was last tried: the "*" is given one
  // character more when that does not match.
  size_t afterStar = none, triedAt = 0;
  while (inName < name.size()) {
    const char wanted = inPattern < pattern.size() ? pattern[inPattern] : '\0';
    if (inPattern < pattern.size() && wanted == '*') {
      afterStar = ++inPattern;
      triedAt = inName;
    } else if (inPattern < pattern.size() && wanted == '?') {
      ++inPattern;
      inName += characterLength(name, inName);
    } else if (inPattern < pattern.size() &&
               (wanted == name[inName] || (!caseSensitive && lowerCase(wanted) == lowerCase(name[inName])))) {
      ++inPattern;
      ++inName;
    } else if (afterStar != none) {
      triedAt += characterLength(name, triedAt);
      inName = triedAt;
      inPattern = afterStar;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', inPattern) == none;
}

}  // namespace merivane
