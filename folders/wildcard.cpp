#include "folders/wildcard.h"

#include <cstddef>

#include "base/names.h"
#include "base/utf8.h"

namespace merivane {
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
      inName += utf8Length(name.substr(inName));
    } else if (inPattern < pattern.size() &&
               (wanted == name[inName] || (!caseSensitive && lowerCase(wanted) == lowerCase(name[inName])))) {
      ++inPattern;
      ++inName;
    } else if (afterStar != none) {
      triedAt += utf8Length(name.substr(triedAt));
      inName = triedAt;
      inPattern = afterStar;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', inPattern) == none;
}

}  // namespace merivane
