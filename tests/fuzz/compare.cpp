#include <cstdio>
#include <cstdlib>

#include "engine/comparison.h"
#include "engine/edit_script.h"
#include "output/html_export.h"
#include "tests/support/comparison_oracle.h"
#include "tests/support/memory_files.h"
#include "tests/support/reference_diff.h"

namespace merivane {
namespace {

void require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what.c_str());
  std::abort();
}

void checkScript(std::span<const char> left, std::span<const char> right) {
  EditScript script;
  require(findEditScript(left, right, nullptr, script), "a search that was not to be aborted");
  const ReferenceDiff<char> reference(left, right);
  for (const int side : {0, 1})
    require(script.changed[side] == reference.changed[side], "not the reference script");
}

void checkPage(const FileComparison& comparison, const HtmlOptions& options) {
  struct Page final : ByteSink {
    void write(std::string_view bytes) override { html += bytes; }
    std::string html;
  } page;
  const HtmlSide sides[2] = {{"left", comparison.documents[0].text.view()},
                             {"right", comparison.documents[1].text.view()}};
  writeHtml(comparison.model, sides, options, "now", page);
  for (size_t at = 0; (at = page.html.find("<CODE>", at)) != page.html.npos;) {
    const size_t end = page.html.find('<', at + 1);
    require(page.html.compare(end, 7, "</CODE>") == 0, "markup from a text");
    for (; at < end; ++at)
      require(static_cast<unsigned char>(page.html[at]) >= ' ', "a control byte in a page");
  }
}

}  // namespace
}  // namespace merivane

/// A byte of options, two that say where the left file ends (and vary the page), the left file and the right.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace merivane;
  if (size < 3) return 0;
  const CompareOptions options{(data[0] & 16) != 0, data[0] & 15u, (data[0] & 32) == 0};
  const std::string_view bytes(reinterpret_cast<const char*>(data + 3), size - 3);
  const size_t split = (data[1] + data[2] * 256u) % (bytes.size() + 1);
  const std::string_view left = bytes.substr(0, split), right = bytes.substr(split);
  checkScript(left, right);
  // What is binary to a file comparison is still text to the engine.
  FileComparison comparison;
  require(compareTexts(left, right, options, nullptr, comparison.model) == Result::success, "not compared");
  const std::string fault = comparisonFault(comparison.model, left, right, options);
  require(fault.empty(), fault);

  MemoryFiles files;
  files.files = {{"left", {std::string(left)}}, {"right", {std::string(right)}}};
  const Outcome outcome = compareFiles(files, {"left", "right"}, options, nullptr, comparison);
  require(outcome.succeeded() == (!isBinary(left) && !isBinary(right)), "files not compared");
  HtmlOptions html;
  html.scope = static_cast<ExportScope>(data[1] % 3);
  html.lineNumbers = static_cast<LineNumbers>(data[2] % 3);
  html.showWhiteSpace = (data[0] & 64) != 0;
  html.tabStop = 1 + data[1] % 16;
  checkPage(comparison, html);
  return 0;
}
