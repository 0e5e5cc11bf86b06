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

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

void checkScript(std::string_view left, std::string_view right) {
  const std::span<const char> a(left), b(right);
  EditScript script;
  require(findEditScript(a, b, nullptr, script), "a search that was not to be aborted");
  const ReferenceDiff<char> reference(a, b);
  for (const int side : {0, 1})
    require(script.changed[side] == reference.changed[side], "not the reference script");
}

void checkRoundTrip(const TextDocument& document) {
  ByteArray bytes;
  require(convertToFile(document.text.view(), document.lineEndKind, false, bytes), "no conversion");
  convertFromFile(bytes, document.lineEndKind);
  require(bytes.view() == document.text.view(), "a text that does not come back from its file");
}

void check(const DiffModel& model, std::string_view left, std::string_view right,
           const CompareOptions& options) {
  const std::string fault = comparisonFault(model, left, right, options);
  require(fault.empty(), fault.c_str());
}

class Page final : public ByteSink {
 public:
  void write(std::string_view bytes) override { html += bytes; }
  std::string html;
};

void checkPage(const FileComparison& comparison, const HtmlOptions& options) {
  const HtmlSide sides[2] = {{"left", comparison.documents[0].text.view()},
                             {"right", comparison.documents[1].text.view()}};
  Page page;
  writeHtml(comparison.model, sides, options, "now", page);
  constexpr std::string_view cellStart = "<CODE>", cellEnd = "</CODE>";
  uint32_t cells = 0;
  for (size_t at = 0; (at = page.html.find(cellStart, at)) != page.html.npos; ++cells) {
    at += cellStart.size();
    const size_t end = page.html.find('<', at);
    require(page.html.compare(end, cellEnd.size(), cellEnd) == 0, "markup from a text");
    for (; at < end; ++at)
      require(static_cast<unsigned char>(page.html[at]) >= ' ', "a control byte in a page");
  }
  const uint32_t all = 2 * comparison.model.rowCount(), differing = 2 * comparison.model.differingRows();
  require(cells <= all && cells >= differing, "rows left out or twice");
  if (options.scope == ExportScope::everything) require(cells == all, "not all rows");
  if (options.scope == ExportScope::differences) require(cells == differing, "not the differing rows");
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
  DiffModel model;
  require(compareTexts(left, right, options, nullptr, model) == Result::success, "texts not compared");
  check(model, left, right, options);

  MemoryFiles files;
  files.files["left"] = {std::string(left)};
  files.files["right"] = {std::string(right)};
  FileComparison comparison;
  const Outcome outcome = compareFiles(files, {"left", "right"}, options, nullptr, comparison);
  require(outcome.succeeded() == (!isBinary(left) && !isBinary(right)), "files not compared");
  check(comparison.model, comparison.documents[0].text.view(), comparison.documents[1].text.view(), options);
  for (const TextDocument& document : comparison.documents) checkRoundTrip(document);

  HtmlOptions html;
  html.scope = static_cast<ExportScope>(data[1] % 3);
  html.lineNumbers = static_cast<LineNumbers>(data[2] % 3);
  html.showWhiteSpace = (data[0] & 64) != 0;
  html.tabStop = 1 + data[1] % 16;
  checkPage(comparison, html);
  return 0;
}
