#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "folders/name_filter.h"
#include "folders/wildcard.h"
#include "tests/support/reference_folders.h"

/// A byte of options and one of lengths, a filter, and a name.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace merivane;
  if (size < 2 || size > 300) return 0;
  std::string bytes(reinterpret_cast<const char*>(data + 2), size - 2);
  const bool isAscii = (data[0] & 1) == 0;
  if (isAscii) {
    for (char& c : bytes) c &= 0x7F;
  }
  FolderOptions options;
  options.ignoreNameCase = (data[0] & 2) != 0;
  options.hasIncludeFilter = (data[0] & 4) != 0;
  options.hasExcludeFilter = true;
  options.includeFilter = options.excludeFilter = bytes.substr(0, data[1]);
  const std::string name = bytes.substr(options.includeFilter.size());
  bool matches = false, expected = false;
  for (const std::string& pattern : parseFilter(options.includeFilter)) {
    matches = matches || matchesWildcard(pattern, name, !options.ignoreNameCase);
    expected = expected || referenceMatch(pattern, name, !options.ignoreNameCase);
  }
  const bool keeps = NameFilter(options).keeps(name);
  if (keeps != (matches == options.hasIncludeFilter) || (isAscii && matches != expected)) {
    std::fprintf(stderr, "filter '%s', name '%s'\n", options.includeFilter.c_str(), name.c_str());
    std::abort();
  }
  return 0;
}
