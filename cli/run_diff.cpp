#include "cli/run_diff.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "base/message_format.h"
#include "base/texts.h"
#include "cli/compared_files.h"
#include "cli/diff_options.h"
#include "cli/messages.h"
#include "cli/run_folders.h"
#include "engine/comparison.h"
#include "output/file_bytes.h"
#include "output/writers.h"

namespace merivane {
namespace {

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
    if (options_.help) return show(kUsageText);
    if (options_.version) return show(kVersionText);
    const bool areFolders[] = {isFolder(0), isFolder(1)};
    if (!areFolders[0] && !areFolders[1]) return compare();
    if (areFolders[0] != areFolders[1]) return failToPairUp();
    prepareWriting();
    return runFolders(options_, environment_);
  }

 private:
  int compare() {
    const OutputFormat& format = *options_.format;
    // A patch has no use for changed lines, and they can take long to find.
    if (format.ofFileBytes) options_.compare.compareChanges = false;
    ComparedFiles files(environment_.files, environment_.standardInput, format.ofFileBytes);
    FileComparison comparison;
    const Outcome outcome = compareFiles(files, options_.paths, options_.compare, nullptr, comparison);
    if (!outcome.succeeded()) return fail(outcomeMessage(outcome));
    const bool differ = comparison.model.differingRows() > 0;
    if (format.ofFileBytes) {
      reportDifferenceBesidesText(comparison, files.lineEnds());
      const TextDocument(&documents)[2] = comparison.documents;
      if (isUtf16(documents[0].encoding) || isUtf16(documents[1].encoding)) {
        return differ ? fail("a patch cannot hold UTF-16" + formsOf(documents)) : kExitNoDifference;
      }
      const Result result = compareFileBytes(files.lineEnds(), options_.compare, comparison);
      if (result != Result::success) return fail(outcomeMessage({result}));
    }
    prepareWriting();
    const WrittenComparison written = writtenComparison(comparison, options_.paths, options_.compare);
    const SystemError error =
        options_.output.empty()
            ? writeToFile(environment_.standardOutput, *format.write, written, options_.writing)
            : exportComparison(environment_.files, options_.output, *format.write, written, options_.writing);
    if (error != 0) return failToWrite(error);
    return differ ? kExitDifferences : kExitNoDifference;
  }

  /// Completes the writer's options by what the terminal and the clock say.
  void prepareWriting() {
    WriterOptions& writing = options_.writing;
    const TerminalFacts terminal = environment_.terminal();
    const bool toTerminal = terminal.isTerminal && options_.output.empty();
    const bool noColour = environment_.noColour != nullptr && *environment_.noColour != '\0';
    writing.terminal = terminal.bytes;
    writing.coloured = options_.colour == ColourUse::automatic
                           ? toTerminal && terminal.showsColours && !noColour
                           : options_.colour == ColourUse::always;
    if (writing.width == 0) {
      uint32_t columns = toTerminal && terminal.width > 0 ? terminal.width : WriterOptions().width;
      if (environment_.columns != nullptr) parseNumber(environment_.columns, 1, kMaxWidth, columns);
      writing.width = std::max(columns, kMinWidth);
    }
    writing.time = environment_.time();
  }

  int show(std::string_view text) {
    OutputFile& output = environment_.standardOutput;
    SystemError error = output.write(text);
    if (error == 0) error = output.commit();
    return error == 0 ? kExitNoDifference : failToWrite(error);
  }

  bool isFolder(int side) const {
    const std::string& path = options_.paths[side];
    return path != "-" && environment_.files.kind(path) == FileKind::folder;
  }

  /// What is not there is told of as such, whatever the other one is.
  int failToPairUp() {
    for (const std::string& path : options_.paths) {
      const bool isThere = path == "-" || environment_.files.kind(path) != FileKind::none;
      if (!isThere) return fail(formatMessage(TextId::pathNotFound, {path}));
    }
    return fail(formatMessage(TextId::fileAndFolder, {options_.paths[0], options_.paths[1]}));
  }

  int fail(const std::string& message) {
    report(message);
    return kExitTrouble;
  }

  int failToWrite(SystemError error) {
    if (error == environment_.brokenPipe) return kExitTrouble;
    return fail(formatMessage(TextId::couldNotExport, {systemErrorText(error)}));
  }

  void reportDifferenceBesidesText(const FileComparison& comparison, const LineEndRecord (&lineEnds)[2]) {
    const std::string difference = differenceBesidesText(comparison, lineEnds);
    if (difference.empty()) return;
    report("the files differ only in their " + difference + formsOf(comparison.documents));
  }

  static std::string formsOf(const TextDocument (&documents)[2]) {
    const auto form = [](const TextDocument& document) {
      return withEncoding(lineEndKindName(document.lineEndKind), document.encoding);
    };
    return " (" + form(documents[0]) + ", " + form(documents[1]) + ")";
  }

  void report(std::string_view message) {
    merivane::report(environment_.standardError, message, environment_.terminal().bytes);
  }

  const DiffEnvironment& environment_;
  DiffOptions options_;
};

/// Needs no memory itself.
int reportOutOfMemory(ByteSink& standardError) {
  for (const std::string_view part :
       {kMessagePrefix, std::string_view(text(TextId::outOfMemory)), std::string_view("\n")})
    standardError.write(part);
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
