#include <cstdio>
#include <cstdlib>

#include "engine/edit_script.h"
#include "tests/support/comparison_oracle.h"
#include "tests/support/edit_run.h"
#include "tests/support/memory_files.h"
#include "tests/support/reference_diff.h"

namespace merivane {
namespace {

void require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what.c_str());
  std::abort();
}

void requireNone(const std::string& fault) { require(fault.empty(), fault); }

void compare(std::string_view left, std::string_view right, const CompareOptions& options) {
  const std::span<const char> a(left), b(right);
  EditScript script;
  require(findEditScript(a, b, nullptr, script), "a search that was not to be aborted");
  const ReferenceDiff<char> reference(a, b);
  for (const int side : {0, 1})
    require(script.changed[side] == reference.changed[side], "not the reference script");

  MemoryFiles files;
  files.files = {{"left", {std::string(left)}}, {"right", {std::string(right)}}};
  FileComparison comparison;
  const Outcome outcome = compareFiles(files, {"left", "right"}, options, nullptr, comparison);
  require(outcome.succeeded() == (!isBinary(left) && !isBinary(right)), "files not compared");
  requireNone(comparisonFault(comparison.model, comparison.documents[0].text.view(),
                              comparison.documents[1].text.view(), options));
}

}  // namespace
}  // namespace merivane

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
  compare(left, right, options);
  EditRun run(left, right, options);
  // No more steps than the history holds, of two characters each.
  for (int step = 0; step < 120 && !bytes.empty(); ++step) {
    run.step(below);
    requireNone(run.fault());
  }
  requireNone(run.undoAndRedoAll());
  return 0;
}
