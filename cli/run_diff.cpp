#include "cli/run_diff.h"

#include <algorithm>
#include <memory>
#include <new>
#include <stdexcept>

#include "base/buffered_sink.h"
#include "base/message_format.h"
#include "base/texts.h"
#include "cli/compared_files.h"
#include "cli/diff_options.h"
#include "cli/usage.h"
#include "engine/comparison.h"
#include "output/html_export.h"
#include "output/json_format.h"
#include "output/patch_model.h"
#include "output/text_format.h"
#include "output/unified_format.h"

namespace merivane {
namespace {

constexpr const char* kMessagePrefix = "merivane-diff: ";
constexpr uint32_t kWidthElsewhere = 130;  // where there is no terminal to ask

class DiffRun {
 public:
  explicit DiffRun(const DiffEnvironment& environment) : environment_(environment) {}

  int run(std::span<const std::string_view> arguments) {
    const std::string complaint = parseOptions(arguments, options_);
    if (!complaint.empty()) {
      report(complaint);
      environment_.standardError.write(kUsageHint);
      return kExitTrouble;
    }
    if (options_.help || options_.version) {
      options_.output.clear();
      const char* const text = options_.help ? kUsageText : kVersionText;
      return deliver([text](ByteSink& sink) { sink.write(text); }) ? kExitNoDifference : kExitTrouble;
    }
    return compare();
  }

 private:
  int compare() {
    const bool unified = options_.format == DiffFormat::unified;
    // A patch has no use for changed lines, and they can take long to find.
    if (unified) options_.compare.compareChanges = false;
    ComparedFiles files(environment_.files, environment_.standardInput, unified);
    FileComparison comparison;
    const Outcome outcome = compareFiles(files, options_.paths, options_.compare, nullptr, comparison);
    if (!outcome.succeeded()) {
      report(outcomeMessage(outcome));
      return kExitTrouble;
    }
    const bool differ = comparison.model.differingRows() > 0;
    const bool delivered = unified ? deliverPatch({files.bytes(0), files.bytes(1)}, comparison)
                                   : deliver([&](ByteSink& sink) { write(comparison, sink); });
    if (!delivered) return kExitTrouble;
    return differ ? kExitDifferences : kExitNoDifference;
  }

  /// Writes every format but the patch, which deliverPatch() does.
  void write(const FileComparison& comparison, ByteSink& sink) {
    switch (options_.format) {
      case DiffFormat::text:
        return writeText(comparison, options_.paths, textOptions(), sink);
      case DiffFormat::json:
        return writeJson(comparison, options_.paths, sink);
      case DiffFormat::html:
        return writePage(comparison, sink);
      case DiffFormat::summary:
        return sink.write(summaryText(comparison.model) + "\n");
      case DiffFormat::unified:
        return;
    }
  }

  TextOptions textOptions() const {
    const TerminalFacts terminal = environment_.terminal();
    const bool toTerminal = terminal.isTerminal && options_.output.empty();
    TextOptions options;
    options.scope = options_.scope;
    options.lineNumbers = options_.lineNumbers;
    options.tabStop = options_.tabStop;
    options.showWhiteSpace = options_.showWhiteSpace;
    options.utf8 = terminal.utf8;
    const bool noColour = environment_.noColour != nullptr && *environment_.noColour != '\0';
    options.coloured = options_.colour == ColourUse::automatic
                           ? toTerminal && terminal.showsColours && !noColour
                           : options_.colour == ColourUse::always;
    options.width = options_.width;
    if (options.width == 0) {
      uint32_t columns = toTerminal && terminal.width > 0 ? terminal.width : kWidthElsewhere;
      if (environment_.columns != nullptr) parseNumber(environment_.columns, 1, kMaximumWidth, columns);
      options.width = std::max(columns, kMinimumWidth);
    }
    return options;
  }

  void writePage(const FileComparison& comparison, ByteSink& sink) const {
    HtmlSide sides[2];
    for (const int side : {0, 1}) {
      const TextDocument& document = comparison.documents[side];
      sides[side] = {options_.paths[side], document.text.view(), document.lineEndKind};
    }
    HtmlOptions options;
    options.scope = options_.scope;
    options.lineNumbers = options_.lineNumbers;
    options.tabStop = options_.tabStop;
    options.showWhiteSpace = options_.showWhiteSpace;
    writeHtml(comparison.model, sides, options, environment_.time(), sink);
  }

  bool deliverPatch(const std::string_view (&files)[2], FileComparison& comparison) {
    const PatchContents contents = patchContents(comparison, files, options_.compare);
    if (contents == PatchContents::onlyLineEnds) {
      report(std::string("the files differ only in their line ends (") +
             lineEndKindName(comparison.documents[0].lineEndKind) + ", " +
             lineEndKindName(comparison.documents[1].lineEndKind) + ")");
    }
    const bool patch = contents == PatchContents::differences;
    if (patch) {
      const Result result = compareForPatch(files, options_.compare, comparison);
      if (result != Result::success) {
        report(outcomeMessage({result}));
        return false;
      }
    }
    return deliver([&](ByteSink& sink) {
      const UnifiedOptions options = {options_.contextLines, !options_.compare.comparesBytes()};
      if (patch) writeUnified(comparison.model, files, options_.paths, options, sink);
    });
  }

  /// Has `write` write to where the output goes. False, and the user told, when it does not get there.
  template <typename Write>
  bool deliver(Write write) {
    std::unique_ptr<OutputFile> file;
    SystemError error = options_.output.empty() ? 0 : environment_.files.create(options_.output, file);
    if (error == 0) {
      OutputFile& output = file ? *file : environment_.standardOutput;
      BufferedSink sink(output);
      write(sink);
      error = sink.finish();
      if (error == 0) error = output.commit();
    }
    if (error != 0 && error != environment_.brokenPipe) {
      report(formatMessage(TextId::couldNotExport, {systemErrorText(error)}));
    }
    return error == 0;
  }

  void report(const std::string& message) {
    environment_.standardError.write(kMessagePrefix + message + "\n");
  }

  const DiffEnvironment& environment_;
  DiffOptions options_;
};

/// Needs no memory itself.
int reportOutOfMemory(ByteSink& standardError) {
  for (const char* const part : {kMessagePrefix, text(TextId::outOfMemory), "\n"}) standardError.write(part);
  return kExitTrouble;
}

}  // namespace

int runDiff(std::span<const std::string_view> arguments, const DiffEnvironment& environment) {
  try {
    return DiffRun(environment).run(arguments);
  } catch (const std::bad_alloc&) {
    return reportOutOfMemory(environment.standardError);
  } catch (const std::length_error&) {
    return reportOutOfMemory(environment.standardError);
  }
}

}  // namespace merivane
