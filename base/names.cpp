#include "base/names.h"

#include <algorithm>

namespace merivane {

bool equalNames(std::string_view a, std::string_view b, bool caseSensitive) {
  if (caseSensitive) return a == b;
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowerCase(x) == lowerCase(y); });
}

}  // namespace merivane
