#include <cstdio>
#include <cstdlib>

#include "tests/support/edit_run.h"

static void require(const std::string& fault) {
  if (fault.empty()) return;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}

/// A byte of options, two of lengths, the left text and the right; the rest chooses what the user does to
/// them.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace merivane;
  if (size < 3) return 0;
  const CompareOptions options{(data[0] & 16) != 0, data[0] & 15u, (data[0] & 32) == 0};
  std::string_view bytes(reinterpret_cast<const char*>(data + 3), size - 3);
  const auto take = [&bytes](size_t length) {
    const std::string_view taken = bytes.substr(0, length);
    bytes.remove_prefix(taken.size());
    return taken;
  };
  const auto below = [&take](uint32_t bound) {
    const std::string_view byte = take(1);
    return byte.empty() ? 0u : static_cast<uint8_t>(byte.front()) % bound;
  };
  const std::string_view left = take(data[1]), right = take(data[2]);
  EditRun run(left, right, options);
  require(run.fault());
  // No more steps than the history holds, of two characters each.
  for (int step = 0; step < 120 && !bytes.empty(); ++step) {
    run.step(below);
    require(run.fault());
  }
  require(run.undoAndRedoAll());
  return 0;
}
