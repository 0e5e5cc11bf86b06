#include <cstdio>
#include <cstdlib>

#include "tests/support/character_walk.h"

/// A byte for where the row is split, and its bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace merivane;
  if (size == 0) return 0;
  const std::string_view row(reinterpret_cast<const char*>(data + 1), size - 1);
  for (const bool utf8 : {false, true}) {
    const std::string fault = characterFault(row, data[0] % size, utf8);
    if (fault.empty()) continue;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
  }
  return 0;
}
